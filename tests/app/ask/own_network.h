#pragma once

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace tappora {

/// Moves this test program, for the rest of its life, into a network that holds nothing but a loopback
/// device, so that no other program has its ports. False where the system does not allow that.
inline bool enterOwnNetwork() {
    if (::unshare(CLONE_NEWNET) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return false;
    const int any = ::socket(AF_INET, SOCK_DGRAM, 0);
    ifreq loopback{};
    std::strcpy(loopback.ifr_name, "lo");
    loopback.ifr_flags = IFF_UP;
    const bool isUp = ::ioctl(any, SIOCSIFFLAGS, &loopback) == 0;
    ::close(any);
    return isUp;
}

}  // namespace tappora
