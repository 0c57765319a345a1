#include "app/tappora/setup_counting.h"

#include <fmt/format.h>

#include <chrono>
#include <optional>
#include <thread>
#include <vector>

#include "app/common/system/child_program.h"
#include "app/tappora/recorder_facts.h"
#include "app/tappora/setup_world.h"

namespace tappora {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds patience{10};
constexpr std::chrono::milliseconds betweenLooks{200};

bool isActive(const Service& service) {
    std::vector<std::string> commandLine = {"systemctl", "is-active", service.name};
    if (service.isUsers) commandLine.insert(commandLine.begin() + 1, "--user");
    return outputOf(commandLine).isGood();
}

/// Nothing when it ended, or did not answer in time.
std::optional<RecorderStatus> awaitStatus(const Service& service, const SetupWorld& world,
                                          const Environment& environment) {
    const auto deadline = Clock::now() + patience;
    while (isActive(service) && Clock::now() < deadline) {
        const Asking asking{.folder = world.folder, .patience = std::chrono::seconds(1)};
        const auto answers = answersOf(askStatus(asking, environment));
        if (!answers.empty()) return answers.front();
        std::this_thread::sleep_for(betweenLooks);
    }
    return std::nullopt;
}

}  // namespace

Afterwards awaitCounting(const Service& service, const SetupWorld& world, const Environment& environment) {
    const auto status = awaitStatus(service, world, environment);
    const std::string log =
        fmt::format("Its log: journalctl {}-u {}\n", service.isUsers ? "--user " : "", service.name);
    if (!status) {
        const char* why = isActive(service) ? "the recorder does not answer" : "the recorder has ended";
        return {fmt::format("It does not count: {}.\n{}", why, log), false};
    }
    if (!status->isCounting()) return {factsOf(*status, environment) + log, false};
    return {
        fmt::format("It counts into {}.\nWhat it counts: tappora status. {}", world.folder.string(), log)};
}

}  // namespace tappora
