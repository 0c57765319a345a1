#include "app/tappora/setup_texts.h"

#include <fmt/format.h>

#include "app/tappora/setup_world.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

/// A text between quotes, each of `special` with `before` in front of it.
std::string quoted(std::string_view text, std::string_view special, char before) {
    std::string all = "\"";
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos) all += before;
        all += c;
    }
    return all + '"';
}

std::string doubled(std::string_view text, char which) {
    std::string all;
    for (const char c : text) all += std::string(c == which ? 2 : 1, c);
    return all;
}

/// As a word in a unit of systemd (systemd.syntax(7)).
std::string unitWord(std::string_view text) { return quoted(doubled(text, '%'), "\"\\", '\\'); }

/// The same in a command line, where $ is special too.
std::string unitCommand(const fs::path& path) { return unitWord(doubled(path.native(), '$')); }

/// As a word of Exec in a desktop entry, which unescapes it twice.
std::string entryWord(const fs::path& path) {
    return doubled(doubled(quoted(path.native(), "\"`$\\", '\\'), '\\'), '%');
}

constexpr std::string_view limits =
    "UMask=0077\n"
    "NoNewPrivileges=yes\n"
    "LockPersonality=yes\n"
    "MemoryDenyWriteExecute=yes\n"
    "RestrictAddressFamilies=AF_UNIX AF_NETLINK\n"
    "RestrictNamespaces=yes\n"
    "RestrictRealtime=yes\n"
    "RestrictSUIDSGID=yes\n"
    "SystemCallArchitectures=native\n"
    "SystemCallFilter=@system-service\n"
    "SystemCallErrorNumber=EPERM\n";

}  // namespace

std::string serviceFolders(const SetupWorld& world) {
    std::string text(setupMark);
    text += "[Unit]\n";
    text += fmt::format("RequiresMountsFor={}\n\n", unitWord(world.folder.native()));
    text += "[Service]\nExecStart=\n";
    text += fmt::format("ExecStart={}\n", unitCommand(world.recorder));
    text += fmt::format("Environment={}\n", unitWord("TAPPORA_FOLDER=" + world.folder.string()));
    text += fmt::format("Environment={}\n", unitWord("XDG_CONFIG_HOME=" + world.config.string()));
    text += fmt::format("Environment={}\n", unitWord("XDG_DATA_HOME=" + world.shared.parent_path().string()));
    text += fmt::format("Environment={}\n", unitWord("XDG_STATE_HOME=" + world.state.parent_path().string()));
    for (const fs::path& folder : {world.folder, world.settings, world.shared, world.state})
        text += fmt::format("BindPaths={}\n", unitWord(folder.native()));
    return text;
}

std::string userService(const SetupWorld& world, bool addsGroup) {
    std::string text(setupMark);
    if (addsGroup) text += groupMark;
    text += "[Unit]\nDescription=Tappora counts keys, never text\nDocumentation=man:tappora-record(1)\n\n";
    text += fmt::format("[Service]\nExecStart={}\n", unitCommand(world.recorder));
    text += fmt::format("Environment={}\n", unitWord("TAPPORA_FOLDER=" + world.folder.string()));
    text += "Restart=on-failure\nRestartSec=30\n";
    text += limits;
    return text + "\n[Install]\nWantedBy=default.target\n";
}

std::string autostartEntry(const SetupWorld& world, std::string_view name, std::string_view command) {
    std::string text(setupMark);
    text += fmt::format("[Desktop Entry]\nType=Application\nName={}\n", name);
    text += fmt::format("Exec={} {}\n", entryWord(world.tappora), command);
    text += fmt::format("TryExec={}\n", doubled(world.tappora.native(), '\\'));
    return text + "Icon=org.tappora.Tappora\nTerminal=false\n";
}

}  // namespace tappora
