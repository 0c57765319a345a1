#pragma once

#include <string>

namespace tappora {

struct SetupWorld;

// The scripts for `sh` that set up the system service as root, and remove it. A script that fails takes back
// what it did.

/// Where the folders of this user's recorder are named.
std::string serviceFoldersFile(const SetupWorld& world);
/// Where the system service is, when no package brings it.
inline constexpr const char* ownServiceFile = "/etc/systemd/system/tappora-record@.service";

/// The name of the service of this user.
std::string serviceName(const SetupWorld& world);

/// `needsService`: no package has installed it.
std::string scriptToStartService(const SetupWorld& world, bool needsService);
std::string scriptToRemoveService(const SetupWorld& world);

}  // namespace tappora
