#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_format.h"
#include "core/foundation/raw_values.h"

namespace tapcore {

/// A conversation with the assistant, as the data folder keeps it: a document to read in any editor, from
/// which the same conversation is read back, whatever its texts hold. docs/assistant.md shows one.
struct ChatFile {
    enum class Role { user, assistant };
    static constexpr RawValues<Role, 2> roles{{"user", "assistant"}};

    /// What one side said.
    struct Turn {
        Role role = Role::user;
        std::string text;
        std::vector<std::string> read;  ///< the data files that were looked at for it

        bool operator==(const Turn&) const = default;
    };

    std::vector<Turn> turns;

    ChatFile() = default;
    /// Reads a document in either format and never fails. A section headed "Answer" is the assistant's, any
    /// other the user's; text before the first is left out.
    explicit ChatFile(std::string_view text);

    /// The document's text.
    std::string text(FileFormat format) const;

    bool operator==(const ChatFile&) const = default;
};

}  // namespace tapcore
