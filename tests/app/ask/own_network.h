#pragma once

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace tappora {

/// Moves this test program, for the rest of its life, into a network that holds nothing but a loopback
/// device, so that no other program has its ports. Where the system does not allow that, it stays in the
/// machine's, whose ports must then be free.
inline void enterOwnNetwork() {
    if (::unshare(CLONE_NEWNET) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return;
    const int any = ::socket(AF_INET, SOCK_DGRAM, 0);
    ifreq loopback{};
    std::strcpy(loopback.ifr_name, "lo");
    loopback.ifr_flags = IFF_UP;
    ::ioctl(any, SIOCSIFFLAGS, &loopback);
    ::close(any);
}

}  // namespace tappora
