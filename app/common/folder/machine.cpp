#include "app/common/folder/machine.h"

#include <unistd.h>

#include <random>

#include "app/common/folder/settings.h"
#include "app/common/system/sha256.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"

namespace tappora {
namespace {

constexpr std::string_view idKey = "machine.id";
constexpr std::size_t idLength = 32;

/// SHA-256 of the system's id together with this program's name: the same for good on one machine, of no use
/// to find the system's id, and unlike what another program makes of it.
std::string hashed(std::string_view systemID) {
    return sha256("tappora machine\n" + std::string(systemID)).substr(0, idLength);
}

std::string byChance() {
    std::random_device device;
    std::string id;
    while (id.size() < idLength) id += "0123456789abcdef"[device() % 16];
    return id;
}

std::string hostName() {
    char name[256] = {};
    return ::gethostname(name, sizeof name - 1) == 0 ? name : "";
}

}  // namespace

Machine Machine::of(Settings& settings, const std::filesystem::path& systemID) {
    auto id = settings.text(idKey);
    if (!id || id->empty()) {
        const std::string text = tapcore::readFile(systemID).text;
        const std::string_view known = tapcore::trimmedWhiteSpace(text);
        id = known.empty() ? byChance() : hashed(known);
        settings.setText(idKey, *id);
    }
    return {*id, settings.text("machine.name").value_or(hostName())};
}

Machine Machine::kept(const Environment& environment, const Tell& tell,
                      const LockForWriting& lockForWriting) {
    Settings settings = Settings::read(environment);
    if (!settings.text(idKey))
        settings = Settings::change(
            environment, [](Settings& all) { of(all); }, tell, lockForWriting);
    return of(settings);
}

}  // namespace tappora
