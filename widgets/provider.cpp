#include "widgets/provider.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

#include "core/counting/day.h"
#include "core/foundation/file_io.h"

namespace tapwidgets {
namespace {

using tapcore::Instant;
using tapcore::WidgetSnapshot;

/// A hundred times what the largest board needs. Past it, the file is not one of ours.
constexpr std::uintmax_t largestFile = 16 << 20;

/// The text of a file, when there is one of a size that can be.
std::optional<std::string> textOf(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) || error) return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > largestFile) return std::nullopt;
    tapcore::FileRead file = tapcore::readBytes(path);
    if (file.status != tapcore::FileRead::Status::read) return std::nullopt;
    return std::move(file.text);
}

}  // namespace

std::optional<std::string> Provider::groupID(const nlohmann::json& information) {
    if (!information.is_object()) return std::nullopt;
    const auto found = information.find("PellotGroupID");
    if (found == information.end() || !found->is_string()) return std::nullopt;
    return found->get<std::string>();
}

Provider::Provider(const std::optional<std::string>& groupID, const WidgetSnapshot::SharedFolders& folders,
                   std::function<Instant()> clock, tapcore::Calendar calendar)
    : url_(WidgetSnapshot::url(groupID, folders)), clock_(std::move(clock)), calendar_(std::move(calendar)) {}

Entry Provider::placeholder() const { return {clock_(), std::nullopt}; }

Entry Provider::getSnapshot() const {
    const Instant now = clock_();
    return {now, read(now)};
}

Timeline Provider::getTimeline() const {
    const Entry entry = getSnapshot();
    return {{entry}, {entry.date + refresh}};
}

std::optional<WidgetSnapshot> Provider::read() const { return read(clock_()); }

std::optional<WidgetSnapshot> Provider::read(Instant now) const {
    const auto text = url_ ? textOf(*url_) : std::nullopt;
    auto snapshot = text ? WidgetSnapshot::decode(*text) : std::nullopt;
    // Yesterday's counts are never shown as today's.
    if (snapshot && snapshot->day != tapcore::Day(now, calendar_).description()) return std::nullopt;
    return snapshot;
}

}  // namespace tapwidgets
