#include "app/recorder/recording_file.h"

#include <linux/input.h>
#include <yaml-cpp/anchor.h>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <sstream>
#include <string>

#include "app/recorder/text_walkers.h"

namespace tappora {
namespace {

constexpr std::size_t nowhere = std::string_view::npos;

/// What a device's description is made of.
constexpr std::array<std::string_view, 6> deviceKeys = {
    "node:", "evdev:", "hid:", "udev:", "quirks:", "events:"};

/// The text from its first character that is not in `passed`; empty when all are.
std::string_view from(std::string_view text, std::string_view passed) {
    return text.substr(std::min(text.find_first_not_of(passed), text.size()));
}

/// "[  0, 100000,   1,  30,       1]"
bool takeList(FieldWalker& fields, RecordedEvent& event) {
    std::uint64_t seconds = 0;
    std::uint32_t fraction = 0;
    const auto take = [&](char before, auto& value) {
        const bool begun = fields.take(before);
        fields.skipBlanks();
        const bool found = begun && fields.take(value);
        fields.skipBlanks();
        return found;
    };
    if (!take('[', seconds) || !take(',', fraction) || !take(',', event.type) || !take(',', event.code) ||
        !take(',', event.value) || !fields.take(']'))
        return false;
    const auto time = recordedTime(seconds, fraction);
    event.time = time.value_or(0);
    return time.has_value();
}

/// Whether a text begins as a list of numbers does: "[  0,".
bool beginsList(std::string_view text) {
    FieldWalker fields(text);
    std::uint64_t number = 0;
    if (!fields.take('[')) return false;
    fields.skipBlanks();
    return fields.take(number) && fields.take(',');
}

/// Where a line's list, or its list of lists, begins: behind the dash or "evdev:" at its start, or behind
/// what was typed into the terminal and a dash.
std::optional<std::string_view> listsIn(std::string_view line) {
    const std::string_view content = from(line, " -");
    if (content.starts_with("evdev:")) {
        const std::string_view lists = from(content.substr(6), " ");
        return lists.starts_with('[') ? std::optional(lists) : std::nullopt;
    }
    const std::size_t dash = line.find("- [");
    if (dash == nowhere) return std::nullopt;
    const std::string_view list = line.substr(dash + 2);
    return list.size() == content.size() || beginsList(list) ? std::optional(list) : std::nullopt;
}

/// The lists of events are most of a file, in one shape that needs no YAML parser: they are read line by
/// line, and only the rest is parsed.
class Lists {
  public:
    /// True when the line belongs to a list of events, and false when it is part of the YAML around them.
    bool take(std::string_view line, std::size_t number) {
        if (indent_ && !ends(line)) {
            if (const auto lists = listsIn(line)) read(*lists, number);
            return true;
        }
        indent_.reset();
        begin(line, number);
        return false;
    }

    /// The `device` of each is the number of the line that its list began on.
    std::vector<RecordedEvent> events;
    bool areMasked = false;

  private:
    void begin(std::string_view line, std::size_t number);
    bool ends(std::string_view line) const;
    void read(std::string_view lists, std::size_t number);

    std::optional<std::size_t> indent_;  ///< of the current list: where its "events:" is
    DeviceId list_ = 0;
};

void Lists::begin(std::string_view line, std::size_t number) {
    const std::string_view key = from(line, " -");
    if (!key.starts_with("events:")) return;
    const std::string_view value = from(key.substr(7), " ");
    if (!value.empty() && !value.starts_with('#')) return;
    indent_ = line.size() - key.size();
    list_ = static_cast<DeviceId>(number);
}

/// Whether a line is no item of the list, but the next device or document, or what else its device is said to
/// have.
bool Lists::ends(std::string_view line) const {
    if (line == "---") return true;
    const std::string_view content = from(line, " ");
    const std::size_t indent = line.size() - content.size();
    const bool isItem = content.starts_with("- ");
    if (isItem ? indent >= *indent_ : indent > *indent_) return false;
    const std::string_view key = isItem ? from(content, " -") : content;
    return std::any_of(deviceKeys.begin(), deviceKeys.end(),
                       [&](std::string_view known) { return key.starts_with(known); });
}

void Lists::read(std::string_view lists, std::size_t number) {
    const auto damaged = [&] { return RecordingError(number, "damaged event line"); };
    FieldWalker fields(lists);
    const bool isNested = from(lists.substr(1), " ").starts_with('[');
    if (isNested) fields.take('[');
    do {
        fields.skipBlanks();
        RecordedEvent event{.device = list_};
        if (!takeList(fields, event)) throw damaged();
        events.push_back(event);
        fields.skipBlanks();
    } while (isNested && fields.take(','));
    if (isNested && !fields.take(']')) throw damaged();
    fields.skipBlanks();
    if (!fields.rest().empty() && fields.rest().front() != '#') throw damaged();
    areMasked = areMasked || (events.back().type == EV_KEY && fields.rest().ends_with("(obfuscated)"));
}

void readIds(const YAML::Node& ids, InputDevice& device) {
    if (!ids || !ids.IsSequence() || ids.size() < 3) return;
    device.bus = ids[0].as<std::uint16_t>();
    device.vendor = ids[1].as<std::uint16_t>();
    device.product = ids[2].as<std::uint16_t>();
    device.isVirtual = isVirtualInRecording(device);
}

InputDevice deviceOf(const YAML::Node& node) {
    InputDevice device{.name = "a device without a name"};
    if (const YAML::Node path = node["node"]) device.node = path.as<std::string>();
    const YAML::Node evdev = node["evdev"];
    if (!evdev || !evdev.IsMap()) return device;
    if (const YAML::Node name = evdev["name"]) device.name = name.as<std::string>();
    readIds(evdev["id"], device);
    return device;
}

/// The devices that a document lists, and by the line of its "events:" which one each list of events is of.
void readDevices(const YAML::Node& document, Recording& recording, std::map<DeviceId, DeviceId>& byList) {
    for (const YAML::Node& node : document["devices"]) {
        const auto id = static_cast<DeviceId>(recording.devices.size());
        recording.devices.push_back(deviceOf(node));
        for (const auto& entry : node)
            if (entry.first.as<std::string>("") == "events")
                byList[static_cast<DeviceId>(entry.first.Mark().line + 1)] = id;
    }
}

/// Sees that each document begins behind the one before. Of some damaged texts, such as a single comma, the
/// library makes documents without end, all at one place.
class Progress : public YAML::EventHandler {
  public:
    void OnDocumentStart(const YAML::Mark& mark) override {
        if (mark.pos <= last_) throw YAML::ParserException(mark, "not a list of devices");
        last_ = mark.pos;
    }
    void OnDocumentEnd() override {}
    void OnNull(const YAML::Mark&, YAML::anchor_t) override {}
    void OnAlias(const YAML::Mark&, YAML::anchor_t) override {}
    void OnScalar(const YAML::Mark&, const std::string&, YAML::anchor_t, const std::string&) override {}
    void OnSequenceStart(const YAML::Mark&, const std::string&, YAML::anchor_t,
                         YAML::EmitterStyle::value) override {}
    void OnSequenceEnd() override {}
    void OnMapStart(const YAML::Mark&, const std::string&, YAML::anchor_t,
                    YAML::EmitterStyle::value) override {}
    void OnMapEnd() override {}

  private:
    int last_ = -1;
};

void checkProgress(const std::string& yaml) {
    std::istringstream text(yaml);
    YAML::Parser parser(text);
    Progress progress;
    while (parser.HandleNextDocument(progress)) {
    }
}

/// The devices named in the YAML around the lists of events.
std::map<DeviceId, DeviceId> readAllDevices(const std::string& yaml, Recording& recording) {
    std::map<DeviceId, DeviceId> byList;
    try {
        checkProgress(yaml);
        for (const YAML::Node& document : YAML::LoadAll(yaml)) readDevices(document, recording, byList);
    } catch (const YAML::Exception& error) {
        throw RecordingError(static_cast<std::size_t>(std::max(error.mark.line, 0)) + 1, error.msg);
    }
    return byList;
}

}  // namespace

Recording readLibinputRecord(std::string_view text) {
    Lists lists;
    std::string around;  // line by line the file, without the events
    for (LineWalker lines(text); lines.next(); around += '\n')
        if (!lists.take(lines.line(), lines.number())) around += lines.line();
    Recording recording{.devices = {}, .events = std::move(lists.events), .keysAreMasked = lists.areMasked};
    const auto byList = readAllDevices(around, recording);
    for (RecordedEvent& event : recording.events) {
        const auto found = byList.find(event.device);
        if (found == byList.end()) throw RecordingError(event.device, "events without a device");
        event.device = found->second;
    }
    return recording;
}

}  // namespace tappora
