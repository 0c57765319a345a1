#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/data_folder.h"
#include "app/common/folder/tell.h"
#include "app/common/harmless_text.h"
#include "app/common/keyboard/own_layouts.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/resources.h"
#include "app/tappora/catalog_tasks.h"
#include "app/tappora/commands.h"
#include "app/tappora/layout_face.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/catalog.h"
#include "core/keyboard/import/keylayout/keylayout_import.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using tapcore::Catalog;
using tapcore::Layout;

/// What the subcommands are asked for.
struct Asked {
    FolderOptions folder;
    bool json = false;
    std::string id;
    std::vector<std::string> files;
    std::string file;
    std::string output;
    tapcore::KeylayoutImportOptions import;
};

/// The layouts that come with the program and the user's own.
struct Known {
    Catalog catalog;
    std::set<std::string> own;
};

/// `tell` hears of each own layout that is left out.
Known knownLayouts(const Asked& asked, const Environment& environment, const Tell& tell = complain) {
    tapcore::FileProblems problems;
    const fs::path resources = resourceFolder(environment);
    std::vector<Layout> own = ownLayouts(openStore(asked.folder, environment), resources, problems);
    complainOf(problems, tell);
    std::set<std::string> ids;
    for (const Layout& layout : own) ids.insert(layout.id);
    return {Catalog::bundled(resources).adding(std::move(own)), std::move(ids)};
}

const Layout& requireLayout(const Known& known, std::string_view argument, const std::string& id) {
    const Layout* layout = known.catalog.layout(id);
    if (!layout) throw UsageError(fmt::format("{}: no such layout: {}; see tappora layouts", argument, id));
    return *layout;
}

void list(const Asked& asked, const Environment& environment) {
    const Known known = knownLayouts(asked, environment);
    json records = json::array();
    for (const Layout& layout : known.catalog.layouts) {
        if (!asked.json)
            print(harmless(fmt::format("{:<18} {}{}\n", layout.id, layout.name,
                                       known.own.contains(layout.id) ? " (your own)" : "")));
        json record = layout.encoded();
        record.erase("legends");
        records.push_back(std::move(record));
    }
    if (asked.json) print(jsonText(records));
}

void show(const Asked& asked, const Environment& environment) {
    const Known known = knownLayouts(asked, environment);
    const Layout& layout = requireLayout(known, "ID", asked.id);
    if (asked.json) return print(layout.text());
    const std::string base = layout.base ? fmt::format(", on {}", *layout.base) : "";
    std::string text = fmt::format("{} ({}{})\n", layout.name, layout.id, base);
    if (layout.notes) text += *layout.notes + "\n";
    text += "\n" + typingRows(known.catalog.legends(layout.id));
    const std::string others = otherKeys(layout.legends);
    if (!others.empty()) text += "\nOther keys it names:\n" + others;
    print(harmless(text));
}

std::vector<std::string> problemsOf(const std::vector<std::string>& files, const Catalog& catalog) {
    std::vector<std::string> problems;
    const auto read = [&](const std::string& file) {
        Layout layout = Catalog::readLayout(file);
        if (!tapcore::Store::isSafeLayoutID(layout.id))
            problems.push_back(file + ": not an id for a layout: " + layout.id);
        return layout;
    };
    std::vector<Layout> layouts = readFiles(files, read, problems);
    for (std::string& problem : newProblems(catalog.adding(std::move(layouts)), catalog))
        problems.push_back(std::move(problem));
    return problems;
}

void check(const Asked& asked, const Environment& environment) {
    if (!asked.files.empty())
        return reportProblems("layouts", problemsOf(asked.files, knownLayouts(asked, environment).catalog),
                              asked.json);
    std::vector<std::string> problems;
    const Tell find = [&](const std::string& problem) { problems.push_back(problem); };
    for (std::string& problem : knownLayouts(asked, environment, find).catalog.problems())
        problems.push_back(std::move(problem));
    reportProblems("layouts", problems, asked.json);
}

tapcore::KeylayoutImport imported(const std::string& file, tapcore::KeylayoutImportOptions options) {
    options.file = fs::path(file).filename().string();
    const std::string text = textToImport(file);
    try {
        return tapcore::importKeylayout(text, options);
    } catch (const tapcore::XmlError& error) {
        throw Failure(file, error.what());
    }
}

void checkIDs(const tapcore::KeylayoutImportOptions& options) {
    requireSafeID(options.id, ", but not auto or system");
    if (options.id == options.base)
        throw UsageError(fmt::format("--id: {} is the base of the layout; choose another", *options.id));
}

std::set<std::string> bundledIDs(const Environment& environment) {
    std::set<std::string> ids;
    for (const Layout& layout : Catalog::bundledLayouts(resourceFolder(environment)).layouts)
        ids.insert(layout.id);
    return ids;
}

void tellOf(const tapcore::KeylayoutImport& result, const Asked& asked,
            const std::set<std::string>& bundled) {
    const Layout& layout = result.layout;
    print(harmless(fmt::format("{}: the legends of {} keys, as layout {}\n", asked.output,
                               layout.legends.size(), layout.id)));
    if (result.takenID)
        print(fmt::format(
            "The id {} is taken, by a layout of the program or by the base; choose another with --id.\n",
            *result.takenID));
    else if (bundled.contains(layout.id))
        print(fmt::format("Among your own layouts it takes the place of the program's {}.\n", layout.id));
    printList("Left out of it", result.dropped);
}

void import(const Asked& asked, const Environment& environment) {
    requireLayout(knownLayouts(asked, environment), "--base", asked.import.base);
    checkIDs(asked.import);
    tapcore::KeylayoutImportOptions options = asked.import;
    options.taken = bundledIDs(environment);
    const tapcore::KeylayoutImport result = imported(asked.file, options);
    complainOf(tapcore::writeFile(asked.output, result.layout.text()));
    if (!asked.json) return tellOf(result, asked, options.taken);
    json record = {{"layout", result.layout.encoded()}, {"dropped", result.dropped}};
    if (result.takenID) record["takenID"] = *result.takenID;
    else if (options.taken.contains(result.layout.id)) record["replacesID"] = result.layout.id;
    print(jsonText(record));
}

void declareCommon(CommandSyntax& command, Asked& asked, const char* does) {
    command.flag("--json", asked.json, does);
    addFolderOptions(command, asked.folder);
}

void declareList(CommandSyntax& command, Asked& asked) {
    declareCommon(command, asked, "Print the records as JSON, without their legends");
}

void declareShow(CommandSyntax& task, Asked& asked) {
    task.option("ID", asked.id, "The layout").required();
    declareCommon(task, asked, "Print the layout's file");
}

void declareCheck(CommandSyntax& task, Asked& asked) {
    task.option("FILE", asked.files, "Layout files");
    declareCommon(task, asked, "Print the problems as JSON");
}

void declareImport(CommandSyntax& task, Asked& asked) {
    task.option("FILE", asked.file, "The .keylayout file").required();
    task.option("-o,--output", asked.output, "The layout file to write").required().type("FILE");
    task.option("--id", asked.import.id, "The layout's id; made from its name when not given").type("ID");
    task.option("--name", asked.import.name, "Its name; the file's own when not given").type("NAME");
    task.option("--base", asked.import.base, "The layout whose legends stay on keys that are not in the file")
        .type("ID")
        .showsDefault();
    declareCommon(task, asked, "Print the layout and what is left out as JSON");
}

}  // namespace

void layoutsCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    const auto listAll = [&] { list(asked, environment); };
    line.describe("List, show, check and import layouts, which put legends on keys",
                  "tappora layouts show qwertz");
    declareList(line, asked);
    line.task(
        "list", "List the layouts by name (the default)", "tappora layouts list",
        [&](auto& task) { declareList(task, asked); }, listAll);
    line.task(
        "show", "Show what a layout prints on the keys", "tappora layouts show bepo",
        [&](auto& task) { declareShow(task, asked); }, [&] { show(asked, environment); });
    line.task(
        "check", "Check the given layout files, or all layouts", "tappora layouts check my-layout.json",
        [&](auto& task) { declareCheck(task, asked); }, [&] { check(asked, environment); });
    line.task(
        "import", "Make a layout from a macOS .keylayout file, and list what is left out",
        "tappora layouts import Mine.keylayout -o mine.json --id mine",
        [&](auto& task) { declareImport(task, asked); }, [&] { import(asked, environment); });
    line.perform(listAll);
}

}  // namespace tappora
