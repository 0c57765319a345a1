#pragma once

#include <string_view>

namespace tappora {

/// Something that the program may not do on a machine as it is.
struct Notice {
    std::string_view what;    ///< what is not possible, or follows from it
    std::string_view remedy;  ///< the command that changes it
};

// All of them. A program that runs on says each once, and again only after it was repaired meanwhile. A
// command that is asked for what is not possible says it each time; other commands do not.

/// Input devices are not for every program.
inline constexpr Notice devicesNotice = {"input devices cannot be read",
                                         "`tappora setup service` lets the recorder alone read them; "
                                         "`tappora setup user-service` lets every program that "
                                         "you start read every key, passwords too"};

/// Nobody says whether the session is locked: no system bus, or no logind on it.
inline constexpr Notice lockNotice = {
    "what is typed while the session is locked counts",
    "`sudo systemctl start dbus systemd-logind` has it known; where that is not possible, `tappora settings "
    "set "
    "record.pauseWhenLocked false` ends this notice, and `tappora pause` pauses"};

/// A server shows a certificate that nothing here vouches for, or there are no certificates to check it with.
inline constexpr Notice certificatesNotice = {
    "nothing here vouches for this server",
    "`sudo apt install ca-certificates` installs what vouches for public ones; for one of your own, put its "
    "certificate into /usr/local/share/ca-certificates, and run `sudo update-ca-certificates`"};

}  // namespace tappora
