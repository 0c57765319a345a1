#pragma once

#include <filesystem>
#include <functional>
#include <system_error>

namespace tapcore {

/// The outcome of a write that took effect. A write that did not take effect throws filesystem_error with the
/// path instead: the old file is then as it was, and the write may be tried again. A write that took effect
/// is never tried again, since what it added would count twice.
struct [[nodiscard]] Written {
    enum class Status {
        done,        ///< and on disk
        notYetSafe,  ///< done, but a power cut may undo it; what remains to tidy up is left to the next
                     ///< writer
    };

    Status status = Status::done;
    std::filesystem::path path;  ///< what could not be flushed or tidied up
    std::error_code error;       ///< why

    static Written butNotYetSafe(std::filesystem::path path, std::error_code why);

    bool isSafe() const { return status == Status::done; }

    /// Tidies up behind a write, when that is safe. A filesystem_error in it makes the outcome `notYetSafe`.
    Written then(const std::function<void()>& tidyUp) const;

    /// For a step that the next one relies on: throws filesystem_error unless it is safe.
    void requireSafe() const;
};

/// Told of what was written and is not yet safe.
using WriteTold = std::function<void(const Written& unsafe)>;

/// Calls `told` with a write that is not yet safe, when it is given.
void tellUnlessSafe(const Written& written, const WriteTold& told);

}  // namespace tapcore
