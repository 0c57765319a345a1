#include "app/tappora/setup_root.h"

#include <algorithm>

#include "app/common/program.h"
#include "app/common/system/child_program.h"
#include "app/tappora/setup_texts.h"
#include "app/tappora/setup_world.h"

namespace tappora {
namespace {

constexpr std::string_view functions = R"(set -eu
# put FILE: writes the text it is given into the file, whole, and keeps what was there until all is done.
put() {
    rm -f "$1.before"
    if [ -e "$1" ]; then cp -p "$1" "$1.before"; fi
    cat >"$1.new"
    chmod 644 "$1.new"
    mv -f "$1.new" "$1"
}
takeBack() {
    rm -f "$1.new"
    if [ -e "$1.before" ]; then mv -f "$1.before" "$1"; else rm -f "$1"; fi
}
)";

/// A text as what a command reads.
std::string readBy(const std::string& command, const std::string& text) {
    return command + " <<'END OF FILE'\n" + text + "END OF FILE\n";
}

std::string folderOf(const std::string& file) { return file.substr(0, file.rfind('/')); }

/// What undoes the lines below it, when one of them fails.
std::string undoing(const std::string& service, const std::string& folders, bool needsService) {
    std::string script = "undo() {\n    set +e\n";
    script += "    [ -e " + folders + ".before ] || systemctl disable --now " + service + "\n";
    script += "    takeBack " + folders + "\n";
    script += "    rmdir " + folderOf(folders) + " 2>/dev/null\n";
    if (needsService) script += std::string("    takeBack ") + ownServiceFile + "\n";
    script += "    systemctl daemon-reload\n";
    script += "    [ ! -e " + folders + " ] || systemctl restart " + service + "\n";
    return script + "}\ntrap undo EXIT\n";
}

}  // namespace

std::string serviceName(const SetupWorld& world) {
    const bool isPlain = std::all_of(world.user.begin(), world.user.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '_' || c == '-' || c == '.' || c == '@';
    });
    if (!isPlain)
        throw Failure(world.user, "this name cannot be in the name of a service: use user-service instead");
    return "tappora-record@" + world.user + ".service";
}

std::string serviceFoldersFile(const SetupWorld& world) {
    return "/etc/systemd/system/" + serviceName(world) + ".d/tappora.conf";
}

std::string scriptToStartService(const SetupWorld& world, bool needsService) {
    const std::string service = serviceName(world);
    const std::string folders = serviceFoldersFile(world);
    std::string script(functions);
    script += undoing(service, folders, needsService);
    script += "mkdir -p -m 755 " + folderOf(folders) + "\n";
    if (needsService)
        script += readBy(std::string("put ") + ownServiceFile, std::string(setupMark) + world.serviceText);
    script += readBy("put " + folders, serviceFolders(world));
    script += "systemctl daemon-reload\n";
    script += "systemctl enable " + service + "\n";
    script += "systemctl restart " + service + "\n";
    script += "trap - EXIT\n";
    script += "rm -f " + folders + ".before";
    if (needsService) script += std::string(" ") + ownServiceFile + ".before";
    return script + "\n";
}

std::string scriptToRemoveService(const SetupWorld& world) {
    const std::string folders = serviceFoldersFile(world);
    std::string script = "set -eu\nsystemctl disable --now " + serviceName(world) + "\n";
    script += "rm -f " + folders + "\nrmdir " + folderOf(folders) + " 2>/dev/null || true\n";
    script += "# The service itself, when setup wrote it and no other user has it.\n";
    script += std::string("if grep -qsF '") + std::string(setupMark.substr(0, setupMark.size() - 1)) + "' " +
              ownServiceFile + " &&\n    ! ls /etc/systemd/system/tappora-record@*.service.d/tappora.conf " +
              ">/dev/null 2>&1; then\n    rm -f " + ownServiceFile + "\nfi\n";
    return script + "systemctl daemon-reload\n";
}

}  // namespace tappora
