#include "core/files/file_texts.h"

#include <filesystem>
#include <string>

#include "core/foundation/characters.h"
#include "core/foundation/fatal.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

void report(FileProblems* problems, const fs::path& path, std::string why) {
    if (problems) problems->push_back({path, 0, std::move(why)});
}

bool isUtf8(const FileCopy& copy) { return firstInvalidUtf8(copy.file.text) == std::string_view::npos; }

}  // namespace

void forEachText(const std::vector<FileCopy>& copies, FileProblems* problems,
                 const std::function<void(std::string_view text)>& visit) {
    for (const FileCopy& copy : copies) {
        if (copy.isSuperseded) continue;
        if (copy.file.status == FileRead::Status::unreadable) {
            report(problems, copy.path, copy.file.error.message());
            continue;
        }
        const FatalContext context("adding", copy.path.native());
        if (isUtf8(copy)) {
            visit(copy.file.text);
        } else {
            report(problems, copy.path, "not UTF-8 text; what could be read of it counts");
            visit(repairedUtf8(copy.file.text));
        }
    }
}

void requireWhole(const std::vector<FileCopy>& copies) {
    for (const FileCopy& copy : copies) {
        const auto refuse = [&](const std::error_code& error) {
            throw fs::filesystem_error("cannot add to it", copy.path, error);
        };
        if (copy.file.status == FileRead::Status::unreadable) refuse(copy.file.error);
        if (!isUtf8(copy)) refuse(std::make_error_code(std::errc::illegal_byte_sequence));
    }
}

}  // namespace tapcore
