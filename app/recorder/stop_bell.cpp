#include "app/recorder/stop_bell.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <system_error>

namespace tappora {

StopBell::StopBell(const std::stop_token& stop)
    : file_(::eventfd(0, EFD_CLOEXEC)), onStop_(stop, Ring{file_.get()}) {
    if (!file_.isOpen()) throw std::system_error(errno, std::generic_category(), "stop");
}

void StopBell::Ring::operator()() const { ::eventfd_write(file, 1); }

}  // namespace tappora
