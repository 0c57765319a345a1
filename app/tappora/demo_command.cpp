#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/common/command_line/command_line.h"
#include "app/common/folder/data_folder.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/resources.h"
#include "app/common/terminal/long_work.h"
#include "app/tappora/commands.h"
#include "core/demo/made_up_typing.h"
#include "core/files/folder_config.h"
#include "core/files/mac_folder.h"
#include "core/files/store.h"
#include "core/foundation/integers.h"
#include "core/keyboard/catalog.h"
#include "core/practice/letter_model.h"
#include "core/reports/report_period.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Day;
using tapcore::MadeUpTyping;

constexpr std::string_view board = "magic-keyboard-ansi";
constexpr std::string_view layout = "qwerty";

struct DemoOptions {
    fs::path folder;
    std::int64_t months = 12;
    std::int64_t machines = 2;
    std::optional<std::uint64_t> seed;
    FolderOptions today;
    std::optional<std::string> format;
};

/// A folder for made-up days must hold nothing: nobody wants them among their own.
void requireEmpty(const fs::path& folder) {
    std::error_code error;
    const bool isThere = fs::exists(folder, error);
    if (!isThere && !error) return;
    if (!fs::is_directory(folder, error)) throw Failure(folder.string(), "not a folder");
    const bool isEmpty = fs::is_empty(folder, error);
    if (error) throw Failure(folder.string(), error.message());
    if (!isEmpty)
        throw Failure(folder.string(), "not empty; made-up days go only into a folder of their own");
}

/// What a machine of the folder is called, and its sub-folder.
std::string nameOf(std::size_t machine) {
    return machine == 0 ? "Desk" : machine == 1 ? "Laptop" : "Machine " + std::to_string(machine + 1);
}

/// Writes days into one shared folder, each machine's into its own part.
class Writer {
  public:
    Writer(const DemoOptions& options, tapcore::FileFormat format, const MadeUpTyping& typing)
        : typing_(typing) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(options.machines); ++i)
            machines_.emplace_back(
                options.folder, format,
                tapcore::MacFolder::resolve(options.folder, "demo-" + nameOf(i), nameOf(i)));
    }

    void write(const Day& day) const {
        for (std::size_t machine = 0; machine < machines_.size(); ++machine) {
            const tapcore::DayFile file = typing_.day(day, machine);
            if (file.tally.isEmpty()) continue;
            machines_[machine].add(file.tally, file.peakPerMinute, 0, std::string(board), std::string(layout),
                                   day);
        }
        const tapcore::PracticeDay practice = typing_.practice(day, std::string(layout));
        const std::size_t atHome = std::min<std::size_t>(1, machines_.size() - 1);
        if (practice.seconds > 0) machines_[atHome].addPractice(practice, day);
    }

    bool sumMonths(const Day& today, const tapcore::Progress& progress) const {
        return std::all_of(machines_.begin(), machines_.end(), [&](const tapcore::Store& machine) {
            return machine.refreshRollups(today, progress);
        });
    }

  private:
    std::vector<tapcore::Store> machines_;
    const MadeUpTyping& typing_;
};

Day firstDay(const Day& last, std::int64_t months) {
    const std::int64_t month = last.year * 12 + last.month - 1 - (months - 1);
    return {month / 12, month % 12 + 1, 1};
}

void writeSettings(const fs::path& folder, tapcore::FileFormat format) {
    tapcore::FolderConfig config;
    config.format = format;
    config.board = board;
    config.layout = layout;
    (void)config.write(folder);
}

/// Writes the days from first to last; says what is left in the folder when it is stopped.
void writeDays(const Writer& writer, const Day& first, const Day& last, const fs::path& folder) {
    LongWork work("making up days");
    const tapcore::Progress progress = work.progress();
    const auto days = static_cast<std::size_t>(last.daysSince(first) + 1);
    std::size_t written = 0;
    while (written < days && progress(written, days))
        writer.write(tapcore::daysLater(first, static_cast<std::int64_t>(written++)));
    const bool isDone = written == days && writer.sumMonths(last, progress);
    work.requireDone(isDone, fmt::format("stopped; {} holds {} of {} days: remove it before you run it again",
                                         folder.string(), written, days));
}

MadeUpTyping typingFor(const DemoOptions& options, const Day& first, const Environment& environment) {
    const fs::path resources = resourceFolder(environment);
    const auto model = tapcore::LetterModel::load("en", resources / "Practice");
    if (!model) throw Failure((resources / "Practice" / "en.json").string(), "cannot be read");
    return {*model, tapcore::Catalog::bundled(resources).legends(layout), options.seed.value_or(1), first,
            static_cast<std::size_t>(options.machines)};
}

}  // namespace

void demoCommand(CommandLine& line, const Environment& environment) {
    DemoOptions options;
    line.describe("Write a data folder of made-up typing: several machines, shortcuts, a mouse, practice",
                  "tappora demo ~/demo --months 12");
    line.option("FOLDER", options.folder, "The folder to make; it must be empty if it exists").required();
    line.option("--months", options.months, "How many months, this one included")
        .between(1, 360)
        .showsDefault();
    line.option("--machines", options.machines, "How many machines share the folder")
        .between(1, 10)
        .showsDefault();
    line.option("--seed", options.seed, "Another person's typing for each number").type("N");
    line.option("--format", options.format, "The format of the files, org or markdown").type("FORMAT");
    line.option("--today", options.today.today, "The last day; today when not given").type("YYYY-MM-DD");
    line.parse();

    const Day last = today(options.today, environment, environment.calendar);
    const auto format = options.format ? parseFormat("--format", *options.format) : tapcore::FileFormat();
    requireEmpty(options.folder);
    const Day first = firstDay(last, options.months);
    const MadeUpTyping typing = typingFor(options, first, environment);
    const Writer writer(options, format, typing);
    writeSettings(options.folder, format);
    writeDays(writer, first, last, options.folder);
    print(fmt::format("{}: made-up days from {} to {}\n\n  tappora report month --folder {}\n",
                      options.folder.string(), first.description(), last.description(),
                      options.folder.string()));
}

}  // namespace tappora
