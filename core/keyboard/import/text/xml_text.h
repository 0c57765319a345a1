#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/foundation/text_error.h"

namespace tapcore {

/// XML that is not what was wanted. `what()` says where and why: "line 3, column 7: no attribute \"index\"".
class XmlError : public TextError {
  public:
    using TextError::TextError;
};

/// Throws XmlError about a byte of a text; columns count characters of the line, in scalars.
[[noreturn]] void failAt(std::string_view text, std::size_t offset, std::string_view why);

/// An XML file's text as UTF-8, without a byte-order mark. UTF-8 and UTF-16 of either byte order are read,
/// whichever the bytes show, with a mark or without. XmlError for another encoding that the file declares,
/// for bytes that are not text in its encoding, for NUL characters, and for more than 16 MiB.
std::string xmlText(std::string_view bytes);

}  // namespace tapcore
