#include <fmt/format.h>

#include <filesystem>

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
    std::uint64_t seed = 1;
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

/// The two machines' stores in one shared folder.
tapcore::Store storeOf(const fs::path& root, tapcore::FileFormat format, const std::string& name) {
    return {root, format, tapcore::MacFolder::resolve(root, "demo-" + name, name)};
}

class Writer {
  public:
    Writer(const DemoOptions& options, tapcore::FileFormat format, const MadeUpTyping& typing)
        : desk_(storeOf(options.folder, format, "Desk")),
          laptop_(storeOf(options.folder, format, "Laptop")),
          typing_(typing) {}

    void write(const Day& day) const {
        add(desk_, day, MadeUpTyping::Machine::desk);
        add(laptop_, day, MadeUpTyping::Machine::laptop);
        const tapcore::PracticeDay practice = typing_.practice(day, std::string(layout));
        if (practice.seconds > 0) laptop_.addPractice(practice, day);
    }

    bool sumMonths(const Day& today, const tapcore::Progress& progress) const {
        return desk_.refreshRollups(today, progress) && laptop_.refreshRollups(today, progress);
    }

  private:
    void add(const tapcore::Store& store, const Day& day, MadeUpTyping::Machine machine) const {
        const tapcore::DayFile file = typing_.day(day, machine);
        if (file.tally.isEmpty()) return;
        store.add(file.tally, file.peakPerMinute, 0, std::string(board), std::string(layout), day);
    }

    tapcore::Store desk_;
    tapcore::Store laptop_;
    const MadeUpTyping& typing_;
};

Day firstDay(const Day& last, std::int64_t months) {
    const std::int64_t month = last.year * 12 + last.month - 1 - (months - 1);
    return {month / 12, month % 12 + 1, 1};
}

}  // namespace

void demoCommand(CommandLine& line, const Environment& environment) {
    DemoOptions options;
    line.describe("Write a data folder of made-up typing: two machines, shortcuts, a mouse, practice",
                  "tappora demo ~/demo --months 12");
    line.option("FOLDER", options.folder, "The folder to make; it must be empty if it exists").required();
    line.option("--months", options.months, "How many months, this one included")
        .between(1, 120)
        .showsDefault();
    std::optional<std::uint64_t> seed;
    line.option("--seed", seed, "Another person's typing for each number").type("N");
    line.option("--format", options.format, "The format of the files, org or markdown").type("FORMAT");
    line.option("--today", options.today.today, "The last day; today when not given").type("YYYY-MM-DD");
    line.parse();

    const Day last = today(options.today, environment, environment.calendar);
    const auto format = options.format ? parseFormat("--format", *options.format) : tapcore::FileFormat();
    requireEmpty(options.folder);
    const fs::path resources = resourceFolder(environment);
    const auto model = tapcore::LetterModel::load("en", resources / "Practice");
    if (!model) throw Failure((resources / "Practice" / "en.json").string(), "cannot be read");
    const auto catalog = tapcore::Catalog::bundled(resources);
    const Day first = firstDay(last, options.months);
    const MadeUpTyping typing(*model, catalog.legends(layout), seed.value_or(options.seed), first);

    LongWork work("making up days");
    const tapcore::Progress progress = work.progress();
    const Writer writer(options, format, typing);
    tapcore::FolderConfig config;
    config.format = format;
    config.board = board;
    config.layout = layout;
    (void)config.write(options.folder);
    bool isDone = true;
    const auto days = static_cast<std::size_t>(last.daysSince(first) + 1);
    for (std::size_t i = 0; isDone && i < days; ++i) {
        isDone = progress(i, days);
        writer.write(tapcore::daysLater(first, static_cast<std::int64_t>(i)));
    }
    isDone = isDone && writer.sumMonths(last, progress);
    work.requireDone(isDone, "stopped; remove " + options.folder.string() + " before you run it again");
    print(fmt::format("{}: made-up days from {} to {}\n\n  tappora report month --folder {}\n",
                      options.folder.string(), first.description(), last.description(),
                      options.folder.string()));
}

}  // namespace tappora
