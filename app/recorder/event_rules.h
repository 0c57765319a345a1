#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/recorder/held_modifiers.h"
#include "app/recorder/input_device.h"
#include "app/recorder/input_event.h"
#include "app/recorder/key_codes.h"
#include "core/counting/counter.h"
#include "core/counting/event_watch.h"

namespace tappora {

/// Decides what each event adds to the counts. Tells the event watch, for each press and click, whether it
/// was counted. The rules are in docs/recording.md.
class EventRules {
  public:
    struct Options {
        bool countsMouse = true;
        BoardShape board = BoardShape::ansi;
        std::vector<std::string> remappers{};  ///< parts of device names, in addition to the known ones
        /// Whether the keys struck now are practice, which is not counted; asked at each press.
        std::function<bool()> isPractising{};
        /// Asks what a device holds; without it, `take` must get every release of a key.
        HeldModifiers::Ask heldOn{};
    };

    /// Called with each line of the event watch.
    using Watch = std::function<void(const std::string& line)>;

    EventRules(Options options, tapcore::Counter& counter, Watch watch)
        : options_(std::move(options)), counter_(counter), watch_(std::move(watch)) {}

    /// A device's events come after it was plugged.
    void plug(DeviceId id, const InputDevice& device);
    /// What the device held is released.
    void unplug(DeviceId id);
    void take(DeviceId id, const InputEvent& event);

    /// While paused nothing is counted or shown; which modifiers are held is still followed.
    void setPaused(bool paused) { paused_ = paused; }

  private:
    struct Source {
        DeviceId id = 0;
        InputDevice device;
        std::array<double, 2> turned{};  ///< of each wheel, less than a step
    };

    void take(Source& source, const KeyEvent& event);
    void take(Source& source, const WheelEvent& event);
    void take(Source& source, const MotionEvent& event);
    void take(Source& source, LostEvents);

    void followModifier(const Source& source, const KeyEvent& event);
    void press(const Source& source, const KeyEvent& event);
    void click(const Source& source, const KeyEvent& event);
    /// Why a press or click does not count, whatever key it is of.
    std::optional<tapcore::EventWatch::Verdict> objection(const Source& source, const KeyEvent& event) const;
    void tell(tapcore::EventWatch::Kind kind, const tapcore::EventWatch::Verdict& verdict) const;
    void tellPractice(tapcore::EventWatch::Kind kind) const;
    bool countsPointer(const Source& source) const;
    tapcore::Modifiers heldAtPressOn(const Source& source);
    /// Whether a device is a program's: its events are not the user's.
    bool isPosting(const Source& source) const;

    Options options_;
    tapcore::Counter& counter_;
    Watch watch_;
    std::map<DeviceId, Source> sources_;
    std::multiset<DeviceIdentity> realDevices_;
    HeldModifiers held_;
    bool paused_ = false;
};

}  // namespace tappora
