#pragma once

#include <filesystem>

#include "core/foundation/descriptor.h"

namespace tappora {

// Sockets of this machine alone (unix(7)), by their path, however long that is.

/// A socket that waits for clients, under a new name, for its user alone (mode 0600). Throws filesystem_error
/// with the path.
tapcore::Descriptor listenAt(const std::filesystem::path& path);

/// A connection, whose waits end after a while. Not open when nobody listens there; errno says why.
tapcore::Descriptor connectTo(const std::filesystem::path& path);

/// The next client of a listening socket, without waiting; not open when there is none.
tapcore::Descriptor nextClient(const tapcore::Descriptor& listening);

/// The user at the other end: of a connection to a listening socket, the one that listens.
unsigned userAt(const tapcore::Descriptor& connection);

}  // namespace tappora
