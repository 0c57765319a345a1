// `tappora setup`: has the counting started by the machine, and shows first what that changes.

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/confirm.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/tappora/commands.h"
#include "app/tappora/setup_steps.h"
#include "app/tappora/setup_world.h"

namespace tappora {
namespace {

struct Asked {
    std::vector<std::string> names;
    std::optional<std::string> rootBy;
    bool print = false;
    bool remove = false;
    bool yes = false;
};

using Steps = std::vector<const SetupStep*>;

bool isNamed(const Asked& asked, const SetupStep& step) {
    return std::find(asked.names.begin(), asked.names.end(), step.name) != asked.names.end();
}

/// Whether the programs for it are installed.
bool isThere(const SetupStep& step, const SetupWorld& world) {
    return (step.name != "widgets" || world.widgets) && (step.name != "tray" || world.tray);
}

void requireKnown(const Asked& asked) {
    std::vector<std::string> known;
    for (const SetupStep& step : setupSteps()) known.emplace_back(step.name);
    for (const std::string& name : asked.names)
        if (std::find(known.begin(), known.end(), name) == known.end())
            throw UsageError("setup: " + noSuch("part", name, known));
    const auto names = [&](const char* name) {
        return std::find(asked.names.begin(), asked.names.end(), name) != asked.names.end();
    };
    if (!asked.remove && names("service") && names("user-service"))
        throw UsageError("setup: service or user-service, not both: one recorder counts into a folder");
}

std::string explained(const SetupStep& step, const SetupWorld& world) {
    return fmt::format("{}: {}\n\n{}\n", step.name, step.title, step.grants(world));
}

/// Explains each step that could be taken, and asks for it.
Steps agreedSteps(const SetupWorld& world) {
    Steps chosen;
    for (const SetupStep& step : setupSteps()) {
        const bool counts = !chosen.empty() && chosen.front()->name == "service";
        if (!isThere(step, world) || (counts && step.name == "user-service")) continue;
        print(harmless(explained(step, world)));
        if (step.toSetUp(world).empty()) print("Set up already.\n\n");
        else if (agrees("Set this up?")) chosen.push_back(&step);
    }
    return chosen;
}

Steps chosenSteps(const Asked& asked, const SetupWorld& world) {
    Steps chosen;
    const bool isUsual = asked.names.empty();
    for (const SetupStep& step : setupSteps())
        if (isNamed(asked, step) || (isUsual && (asked.remove || (step.isUsual && isThere(step, world)))))
            chosen.push_back(&step);
    return chosen;
}

void printChanges(const SetupStep& step, const Changes& changes, const SetupWorld& world, bool removes) {
    if (removes) print(harmless(fmt::format("Remove {}\n\n", step.name)));
    else print(harmless(explained(step, world)));
    print(changes.empty() ? (removes ? "Not set up.\n\n" : "Set up already.\n\n")
                          : harmless(described(changes, world.rootBy)));
}

/// Whether it works already.
bool setUp(const SetupStep& step, const SetupWorld& world, const Environment& environment) {
    const Changes changes = step.toSetUp(world);
    if (changes.empty()) {
        print(fmt::format("{}: set up already\n", step.name));
        return true;
    }
    try {
        make(changes, world.rootBy);
    } catch (const Failure& failure) {
        throw Failure(step.name, fmt::format("not set up: {}", failure.what()));
    }
    print(fmt::format("{}: set up\n", step.name));
    const Afterwards now = step.afterwards(world, environment);
    print(harmless(now.text));
    return now.works;
}

/// All that can be known before is checked before anything is done.
void setUp(const Steps& steps, const SetupWorld& world, const Environment& environment) {
    for (const SetupStep* step : steps)
        if (!step->toSetUp(world).empty()) step->require(world);
    bool works = true;
    for (const SetupStep* step : steps) works = setUp(*step, world, environment) && works;
    if (!works) throw NotCounting();
}

void remove(const Steps& steps, const Asked& asked, const SetupWorld& world) {
    std::string what;
    std::vector<Changes> all;
    for (const SetupStep* step : steps) {
        all.push_back(step->toRemove(world));
        if (!all.back().empty())
            what += fmt::format("{}:\n{}\n", step->name, described(all.back(), world.rootBy));
    }
    if (what.empty()) return print("Nothing that tappora setup set up is there.\n");
    if (what.find("as root") != std::string::npos) requireRoot(world);
    confirm(harmless(what) + "This will be done. The data folder stays.", asked.yes || !asked.names.empty());
    for (const Changes& changes : all) make(changes, world.rootBy);
    print(harmless(fmt::format("Removed. Your counts stay in {}.\n", world.folder.string())));
}

void requireSomebodyToAsk(const Asked& asked) {
    if (!asked.yes && asked.names.empty() && ::isatty(STDIN_FILENO) == 0)
        throw Failure("nothing done", "not a terminal: use --yes, or name what to set up");
}

void setup(const Asked& asked, const Environment& environment) {
    requireKnown(asked);
    if (!asked.print && !asked.remove) requireSomebodyToAsk(asked);
    const SetupWorld world = setupWorld(asked.rootBy, environment);
    const bool asks = !asked.print && !asked.remove && !asked.yes && asked.names.empty();
    const Steps steps = asks ? agreedSteps(world) : chosenSteps(asked, world);
    if (asked.print)
        for (const SetupStep* step : steps)
            printChanges(*step, asked.remove ? step->toRemove(world) : step->toSetUp(world), world,
                         asked.remove);
    else if (asked.remove) remove(steps, asked, world);
    else setUp(steps, world, environment);
}

}  // namespace

void setupCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    line.describe(
        "Have keys counted from now on, and the widgets and the tray shown: ask for each, and say what it "
        "grants",
        "tappora setup --print");
    line.option("WHAT", asked.names,
                "What to set up or remove, without asking; all that is usual when not given")
        .type("service|user-service|widgets|tray");
    line.flag("--print", asked.print, "Print what would be done, with all files, and do nothing");
    line.flag("--remove", asked.remove, "Remove what was set up; the data folder stays");
    line.flag("--yes", asked.yes, "Do not ask: set up what is usual");
    line.option("--root-by", asked.rootBy,
                "The program that gets root's rights; sudo or pkexec when not given")
        .type("PROGRAM");
    line.parse();
    setup(asked, environment);
}

}  // namespace tappora
