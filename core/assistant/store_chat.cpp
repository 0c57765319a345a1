// The conversations of a store.

#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <cstdio>

#include "core/assistant/chat_file.h"
#include "core/files/data_listing.h"
#include "core/files/file_copies.h"
#include "core/files/folder_error.h"
#include "core/files/folder_names.h"
#include "core/files/store.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view chatName = "chat";

std::string nameOf(const LocalTime& time) {
    char name[160];
    std::snprintf(name, sizeof name,
                  "%04" PRId64 "-%02" PRId64 "-%02" PRId64 " %02" PRId64 "%02" PRId64 "%02" PRId64, time.year,
                  time.month, time.day, time.hour, time.minute, time.second);
    return name;
}

bool isConversation(const fs::path& file) {
    const std::string ending = file.extension().string();
    return !file.filename().string().starts_with('.') &&
           std::any_of(FileFormat::allCases.begin(), FileFormat::allCases.end(), [&](FileFormat format) {
               return ending == "." + std::string(format.fileExtension());
           });
}

/// The first name from a moment on that no conversation has in any format. Where the folder cannot be listed,
/// every name may be taken.
std::string freeName(const fs::path& history, Instant at, const Calendar& calendar, FileFormat format) {
    if (const std::error_code why = whyUnlisted(history)) refuse(history, why);
    while (!readCopies(history, nameOf(calendar.local(at)), format).empty()) at += std::chrono::seconds(1);
    return nameOf(calendar.local(at));
}

}  // namespace

fs::path Store::chatURL() const {
    return base() / assistantFolder / std::string(chatName).append(".").append(format.fileExtension());
}

ChatFile Store::readChat() const {
    const auto copies = readWholeCopies(base() / assistantFolder, chatName, format, fetch_);
    return copies.empty() ? ChatFile() : ChatFile(copies.front().file.text);
}

void Store::writeChat(const ChatFile& chat) const {
    const fs::path folder = base() / assistantFolder;
    auto replaced = readWholeCopies(folder, chatName, format, fetch_);
    if (replaced.size() > 1) replaced.resize(1);  // the one that is read; another stays
    warnUnlessSafe(replaceCopies(folder, chatName, format, chat.text(format), replaced));
}

std::optional<fs::path> Store::shelveChat(Instant at, const Calendar& calendar) const {
    const fs::path history = base() / assistantFolder / historyFolder;
    std::optional<fs::path> shelved;
    for (const FileCopy& copy : readCopies(base() / assistantFolder, chatName, format)) {
        if (copy.file.status != FileRead::Status::read)
            throw fs::filesystem_error("cannot archive the conversation", copy.path, copy.file.error);
        fs::path target =
            history / (freeName(history, at, calendar, format) + copy.path.extension().string());
        warnUnlessSafe(renameFile(copy.path, target));
        if (!shelved) shelved = std::move(target);
    }
    return shelved;
}

std::vector<fs::path> Store::chatHistory(FileProblems* problems) const {
    const fs::path history = base() / assistantFolder / historyFolder;
    std::vector<fs::path> files;
    for (const std::string& name : namesIn(history, problems))
        if (isConversation(name)) files.push_back(history / name);
    std::reverse(files.begin(), files.end());
    return files;
}

}  // namespace tapcore
