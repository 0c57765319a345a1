#include "app/tappora/setup_changes.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <functional>

#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "app/common/system/child_program.h"
#include "app/common/system/file_text.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

using Undo = std::function<void()>;

std::string indented(std::string_view text) {
    std::string all;
    bool isLineStart = true;
    for (const char c : text) {
        if (isLineStart && c != '\n') all += "    ";
        all += c;
        isLineStart = c == '\n';
    }
    return all;
}

std::string joined(const std::vector<std::string>& commandLine) {
    std::string all;
    for (const std::string& word : commandLine) all += (all.empty() ? "" : " ") + shellWord(word);
    return all;
}

/// Writes a text, or removes the file when there is none.
void put(const fs::path& path, const std::optional<std::string>& text) {
    if (text) complainOf(tapcore::writeFile(path, *text));
    else tapcore::removeFile(path);
}

/// The folders above a file or folder that are not there yet, the lowest first.
std::vector<fs::path> missingFolders(fs::path folder) {
    std::vector<fs::path> missing;
    for (; !tapcore::isThere(folder) && folder.has_relative_path(); folder = folder.parent_path())
        missing.push_back(folder);
    return missing;
}

Undo withoutFolders(const std::vector<fs::path>& folders) {
    return [folders] {
        std::error_code stays;
        for (const fs::path& folder : folders) fs::remove(folder, stays);
    };
}

void run(const std::vector<std::string>& commandLine, const std::string& name) {
    const ProgramEnd end = runProgram(commandLine);
    if (end.status == 127) throw Failure(name, "not found");
    if (!end.isGood()) throw Failure(name, fmt::format("failed with exit status {}", end.status));
}

/// In words, how to do it, and doing it, which gives the way back.
struct Making {
    const std::string& rootBy;

    Undo operator()(const MakeFolder& folder) const {
        const auto missing = missingFolders(folder.path);
        complainOf(tapcore::makeFolders(folder.path));
        return withoutFolders(missing);
    }

    Undo operator()(const WriteFile& file) const {
        const auto before = optionalText(file.path, tapcore::readStoredFile(file.path));
        const auto missing = missingFolders(file.path.parent_path());
        const Undo undo = [path = file.path, before, missing] {
            put(path, before);
            withoutFolders(missing)();
        };
        try {
            put(file.path, file.text);
        } catch (...) {
            withoutFolders(missing)();
            throw;
        }
        return undo;
    }

    Undo operator()(const RemoveFile& file) const {
        const auto before = optionalText(file.path, tapcore::readStoredFile(file.path));
        put(file.path, std::nullopt);
        return [path = file.path, before] { put(path, before); };
    }

    Undo operator()(const RemoveEmptyFolder& folder) const {
        std::error_code stays;
        const bool isGone = fs::remove(folder.path, stays);
        return [path = folder.path, isGone] {
            if (isGone) complainOf(tapcore::makeFolders(path));
        };
    }

    Undo operator()(const RunProgram& program) const {
        run(program.commandLine, joined(program.commandLine));
        return [back = program.takesBack] {
            if (!back.empty()) run(back, joined(back));
        };
    }

    Undo operator()(const RunAsRoot& root) const {
        std::vector<std::string> commandLine = {"sh", "-c", root.script};
        if (!rootBy.empty()) commandLine.insert(commandLine.begin(), rootBy);
        run(commandLine, rootBy.empty() ? "sh, as root" : rootBy);
        return [] {};
    }
};

struct Describing {
    const std::string& rootBy;

    std::string operator()(const MakeFolder& folder) const {
        return "Make the folder " + folder.path.string() + "\n";
    }
    std::string operator()(const WriteFile& file) const {
        return "Write " + file.path.string() + ":\n\n" + indented(file.text) + "\n";
    }
    std::string operator()(const RemoveFile& file) const { return "Remove " + file.path.string() + "\n"; }
    std::string operator()(const RemoveEmptyFolder& folder) const {
        return "Remove the folder " + folder.path.string() + ", if it is empty\n";
    }
    std::string operator()(const RunProgram& program) const {
        return "Run " + joined(program.commandLine) + "\n";
    }
    std::string operator()(const RunAsRoot& root) const {
        const std::string by = rootBy.empty() ? "" : ", by " + rootBy;
        return fmt::format("Run as root{}:\n\n{}\n", by, indented(root.script));
    }
};

/// Takes back what was done, the last first. What cannot be taken back is told.
void takeBack(const std::vector<Undo>& done) {
    for (auto undo = done.rbegin(); undo != done.rend(); ++undo) try {
            (*undo)();
        } catch (const std::exception& error) {
            complain(error.what());
        }
}

}  // namespace

std::string described(const Changes& changes, const std::string& rootBy) {
    std::string text;
    for (const Change& change : changes) text += std::visit(Describing{rootBy}, change);
    return text;
}

void make(const Changes& changes, const std::string& rootBy) {
    std::vector<Undo> done;
    try {
        for (const Change& change : changes) done.push_back(std::visit(Making{rootBy}, change));
    } catch (const std::exception& error) {
        takeBack(done);
        throw Failure(error.what(), "what was begun is taken back");
    }
}

}  // namespace tappora
