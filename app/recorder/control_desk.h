#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "app/common/control/control_server.h"
#include "app/common/control/protocol.h"
#include "app/common/folder/tell.h"
#include "app/common/system/alarm.h"
#include "app/common/system/environment.h"
#include "app/recorder/pause_keeper.h"
#include "app/recorder/pause_switch.h"

namespace tappora {

/// What a live recorder does beside storing: answers its socket, and follows the pause.
class ControlDesk {
  public:
    /// `status` gives that of the recorder, without the folder.
    ControlDesk(std::filesystem::path folder, const Environment& environment, PauseSwitch& pauses,
                PauseKeeper& keeper, std::function<RecorderStatus()> status, const Tell& tell);

    /// Sees that the socket is there: its directory may have gone with the user's session. What fails is told
    /// once, and tried again the next time.
    void lookAgain();
    /// Until this file is readable.
    void serveUntil(int file);

  private:
    std::string answer(std::string_view line);
    ControlAnswer answerTo(const ControlQuestion& question);
    bool setAlarm() const;

    std::filesystem::path folder_;
    Environment environment_;
    PauseSwitch& pauses_;
    PauseKeeper& keeper_;
    std::function<RecorderStatus()> status_;
    ControlServer server_;
    Attempt listening_;
    Alarm pauseEnd_;
};

}  // namespace tappora
