// The methods of resources: the data files, each at an address like tappora:///days/2026-09-17.org.

#include <algorithm>
#include <array>
#include <charconv>

#include "core/assistant/mcp_methods.h"
#include "core/assistant/tool_text.h"
#include "core/foundation/ascii.h"
#include "core/foundation/utf8.h"

namespace tapcore::mcp {
namespace {

using nlohmann::json;

constexpr std::string_view scheme = "tappora:///";
constexpr std::array<std::string_view, 3> listedFolders = {daysFolder, monthsFolder, practiceFolder};
constexpr std::size_t pageSize = 500;
constexpr std::size_t largestFile = std::size_t{4} << 20;  // clients close on lines of 10 MiB

bool isUnreserved(char c) {
    return isAsciiLetter(c) || isDigit(c) || std::string_view("-._~/").find(c) != std::string_view::npos;
}

/// A path as the end of an address (RFC 3986).
std::string encoded(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char c : path) {
        const std::size_t byte = static_cast<unsigned char>(c);
        if (isUnreserved(c)) text += c;
        else text.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return text;
}

/// The path in an address, decoded once; nothing for what is no address of ours.
std::optional<std::string> pathOf(std::string_view uri) {
    if (!uri.starts_with(scheme)) return std::nullopt;
    std::string path;
    for (uri.remove_prefix(scheme.size()); !uri.empty();) {
        unsigned byte = static_cast<unsigned char>(uri[0]);
        std::size_t size = 1;
        if (uri[0] == '%') {
            const std::string_view digits = uri.substr(1, 2);
            const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
            if (error != std::errc() || end != digits.data() + 2) return std::nullopt;
            size = 3;
        }
        path += static_cast<char>(byte);
        uri.remove_prefix(size);
    }
    return path;
}

std::string_view mimeType(std::string_view name) {
    return name.ends_with(".md") ? "text/markdown" : "text/org";
}

json resource(const std::string& name) {
    return {{"uri", std::string(scheme) + encoded(name)},
            {"name", repairedUtf8(name)},
            {"mimeType", mimeType(name)}};
}

/// Where the page of a cursor begins. Cursors are made by `listResources` alone.
std::size_t pageStart(const json& params, std::size_t size) {
    if (!params.contains("cursor")) return 0;
    const std::string cursor = stringParam(params, "cursor");
    std::size_t start = 0;
    const auto [end, error] = std::from_chars(cursor.data(), cursor.data() + cursor.size(), start);
    const bool isOurs = error == std::errc() && end == cursor.data() + cursor.size() && start > 0;
    if (!isOurs || start % pageSize != 0 || start >= size) refuseCursor(params);
    return start;
}

json addressTemplate(std::string_view address, std::string_view name, std::string_view title,
                     Revision revision) {
    json declared = {{"uriTemplate", std::string(scheme).append(address)},
                     {"name", name},
                     {"description", "A data file. Folders: days, months, reports, practice."}};
    if (revision >= Revision::r2025_06_18) declared["title"] = title;
    return declared;
}

}  // namespace

Result listResources(const Offer& offer, Revision, const json& params) {
    const AssistantTools tools = offer.tools();
    std::vector<std::string> names;
    FileProblems problems;
    for (const std::string_view folder : listedFolders)
        for (std::string& name : tools.names(folder, "", problems)) names.push_back(std::move(name));
    if (!problems.empty())
        throw Error(internalError, repairedUtf8(problems[0].path.string()) + ": " + problems[0].why);
    const std::size_t start = pageStart(params, names.size());
    const std::size_t end = std::min(start + pageSize, names.size());
    json list = json::array();
    for (std::size_t i = start; i < end; ++i) list.push_back(resource(names[i]));
    json result = {{"resources", list}};
    if (end < names.size()) result["nextCursor"] = std::to_string(end);
    return {result, Caching::personal};
}

Result listTemplates(Revision revision) {
    return {{{"resourceTemplates",
              json::array({addressTemplate("{folder}/{name}", "file", "A data file", revision),
                           addressTemplate("{mac}/{folder}/{name}", "mac-file", "A data file of one Mac",
                                           revision)})}},
            Caching::builtIn};
}

Result readResource(const Offer& offer, Revision revision, const json& params) {
    const std::string uri = stringParam(params, "uri");
    const auto path = pathOf(uri);
    const AssistantTools tools = offer.tools();
    const auto file = path ? tools.resolve(*path) : std::nullopt;
    const FileRead read = file ? DataFileReader(AssistantTools::rootOf(tools.base)).read(*file) : FileRead();
    if (read.status == FileRead::Status::unreadable)
        throw Error(internalError, shortened(uri) + ": " + read.error.message());
    if (read.status == FileRead::Status::missing)
        throw Error(revision == Revision::r2026_07_28 ? invalidParams : resourceNotFound,
                    "Resource not found", {{"uri", uri}});
    if (read.text.size() > largestFile)
        throw Error(internalError, "The file is too large to send: " + shortened(uri));
    return {{{"contents", json::array({{{"uri", uri}, {"mimeType", mimeType(*path)}, {"text", read.text}}})}},
            Caching::personal};
}

}  // namespace tapcore::mcp
