#include "core/assistant/tool_text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/foundation/characters.h"
#include "core/foundation/utf8.h"

namespace tapcore {

std::optional<std::string> argument(const nlohmann::json& arguments, std::string_view name) {
    if (!arguments.is_object()) return std::nullopt;
    const auto found = arguments.find(name);
    if (found == arguments.end() || !found->is_string()) return std::nullopt;
    return found->get<std::string>();
}

std::string_view bounded(std::string_view text, std::size_t limit) {
    const auto isInsideCodePoint = [](char byte) { return (byte & 0xC0) == 0x80; };
    const std::string_view first = firstCharacters(text, limit);
    std::size_t size = std::min(first.size(), limit * bytesOfCharacter);
    while (size > 0 && size < first.size() && isInsideCodePoint(first[size])) --size;
    return first.substr(0, size);
}

std::string shortened(std::string_view text) {
    const std::string_view shown = bounded(text, quoteLimit);
    return std::string(shown) + (shown.size() < text.size() ? "…" : "");
}

DataFileReader::DataFileReader(std::filesystem::path root) : root_(std::move(root)), held_(root_) {}

FileRead DataFileReader::read(const std::filesystem::path& file) const {
    FileRead read = held_.read(file.lexically_relative(root_));
    std::error_code ignored;
    const bool isText = firstInvalidUtf8(read.text) == std::string_view::npos;
    if (!isText ||
        (read.status != FileRead::Status::read && !std::filesystem::is_regular_file(file, ignored)))
        return {};
    return read;
}

}  // namespace tapcore
