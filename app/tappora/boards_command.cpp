#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/common/command_line/command_line.h"
#include "app/common/command_line/records_json.h"
#include "app/common/folder/tell.h"
#include "app/common/harmless_text.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/resources.h"
#include "app/tappora/catalog_tasks.h"
#include "app/tappora/commands.h"
#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/catalog.h"
#include "core/keyboard/import/board/board_import.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using tapcore::Board;
using tapcore::Catalog;

/// What the subcommands are asked for.
struct Asked {
    bool json = false;
    std::string id;
    std::vector<std::string> files;
    std::string file;
    std::string output;
    std::optional<std::string> keymap;
    tapcore::BoardImportOptions import;
};

Catalog bundled(const Environment& environment) { return Catalog::bundled(resourceFolder(environment)); }

void list(const Asked& asked, const Environment& environment) {
    const Catalog catalog = bundled(environment);
    json records = json::array();
    for (const Board& board : catalog.boards) {
        if (!asked.json) print(fmt::format("{:<27} {}, {}\n", board.id, board.name, board.maker));
        json record = board.encoded();
        record["keys"] = board.keys.size();
        records.push_back(std::move(record));
    }
    if (asked.json) print(jsonText(records));
}

std::string keyLine(const Board::Key& key) {
    const std::string code = key.keyCode ? std::to_string(*key.keyCode) : "-";
    const std::string turn = key.isTurned() ? fmt::format("{:g}°", key.r) : "";
    return fmt::format("{:<19} {:>4}  {:>6g} {:>6g}  {:>4g} x {:<4g} {:<5}  {}\n", key.id, code, key.x, key.y,
                       key.w, key.h, turn,
                       fmt::format("{} {}, {}{}", Board::hands.of(key.hand), Board::fingers.of(key.finger),
                                   Board::rows.of(key.row), key.home ? ", rests" : ""));
}

void show(const Asked& asked, const Environment& environment) {
    const Catalog catalog = bundled(environment);
    const Board* board = catalog.board(asked.id);
    if (!board) throw UsageError(fmt::format("ID: no such board: {}; see tappora boards", asked.id));
    if (asked.json) return print(board->text());
    const Board::Rect bounds = board->bounds();
    print(fmt::format("{} ({}), {}\n", board->name, board->id, board->maker));
    print(fmt::format("{} keys, {:.4g} x {:.4g} units, positions {}\n", board->keys.size(), bounds.w,
                      bounds.h, Board::geometries.of(board->geometry)));
    for (const auto& remark : {board->source, board->notes})
        if (remark) print(*remark + "\n");
    print(fmt::format("\n{:<19} {:>4}  {:>6} {:>6}  {}\n", "key", "code", "x", "y", "size"));
    for (const Board::Key& key : board->keys) print(keyLine(key));
}

std::vector<std::string> problemsOf(const std::vector<std::string>& files, const Catalog& catalog) {
    std::vector<std::string> problems;
    std::vector<Board> boards = readFiles(files, Catalog::readBoard, problems);
    boards.insert(boards.begin(), catalog.boards.begin(), catalog.boards.end());
    for (std::string& problem : newProblems(Catalog(std::move(boards), catalog.layouts), catalog))
        problems.push_back(std::move(problem));
    return problems;
}

void check(const Asked& asked, const Environment& environment) {
    const Catalog catalog = bundled(environment);
    reportProblems("boards", asked.files.empty() ? catalog.problems() : problemsOf(asked.files, catalog),
                   asked.json);
}

tapcore::Keymap keymapIn(const std::string& file) {
    const std::string text = textToImport(file);
    try {
        return tapcore::readKeymap(text);
    } catch (const tapcore::KeymapError& error) {
        throw Failure(file, error.what());
    }
}

tapcore::BoardImport imported(const Asked& asked, const Catalog& catalog) {
    tapcore::BoardImportOptions options = asked.import;
    options.file = fs::path(asked.file).filename().string();
    if (asked.keymap) options.keymap = keymapIn(*asked.keymap);
    const std::string text = textToImport(asked.file);
    try {
        return tapcore::importBoard(text, catalog.boards, options);
    } catch (const tapcore::JsonError& error) {
        throw Failure(asked.file, error.what());
    } catch (const tapcore::KeymapError& error) {
        throw Failure(*asked.keymap, error.what());
    }
}

/// What to do about codes that are guessed or missing.
std::string advice(const tapcore::BoardImport& imported, const Asked& asked) {
    if (imported.takesKeymap)
        return "\nFor certain key codes, give the keymap with --keymap FILE: QMK's keymap.json or keymap.c, "
               "or the one that VIA or Vial saved.\n";
    if (asked.keymap)
        return fmt::format("\nKeys for layers, macros or nothing need no key code. Add others in {}.\n",
                           asked.output);
    return fmt::format("\nCorrect or add key codes in {}.\n", asked.output);
}

void tellOf(const tapcore::BoardImport& imported, const Asked& asked, const Catalog& catalog) {
    const Board& board = imported.board;
    print(harmless(fmt::format("{}: {} keys, {} of them with a key code, as board {}\n", asked.output,
                               board.keys.size(), board.keyCodes().size(), board.id)));
    if (catalog.board(board.id))
        print(fmt::format(
            "A board of the program has the id {}: name yours by its file, or choose another with --id.\n",
            board.id));
    printList("Left out of it", imported.dropped);
    printList("Guessed key codes", imported.guessed);
    printList("Keys without a key code", imported.withoutCode);
    if (!imported.guessed.empty() || !imported.withoutCode.empty()) print(harmless(advice(imported, asked)));
}

void import(const Asked& asked, const Environment& environment) {
    requireSafeID(asked.import.id);
    const Catalog catalog = bundled(environment);
    const tapcore::BoardImport result = imported(asked, catalog);
    complainOf(tapcore::writeFile(asked.output, result.board.text()));
    if (!asked.json) return tellOf(result, asked, catalog);
    json record = {{"board", result.board.encoded()},
                   {"dropped", result.dropped},
                   {"guessed", result.guessed},
                   {"withoutCode", result.withoutCode}};
    if (catalog.board(result.board.id)) record["takenID"] = result.board.id;
    print(jsonText(record));
}

void withJson(CommandSyntax& command, Asked& asked, const char* does) {
    command.flag("--json", asked.json, does);
}

void declareShow(CommandSyntax& task, Asked& asked) {
    task.option("ID", asked.id, "The board").required();
    withJson(task, asked, "Print the board's file");
}

void declareCheck(CommandSyntax& task, Asked& asked) {
    task.option("FILE", asked.files, "Board files");
    withJson(task, asked, "Print the problems as JSON");
}

void declareImport(CommandSyntax& task, Asked& asked) {
    task.option("FILE", asked.file, "Rows of Keyboard Layout Editor, a VIA definition, or QMK's info.json")
        .required();
    task.option("-o,--output", asked.output, "The board file to write").required().type("FILE");
    task.option("--layout", asked.import.layout, "The layout to take from a QMK file that has several")
        .type("NAME");
    task.option("--keymap", asked.keymap,
                "What the keys send: QMK's keymap.json or keymap.c, or what VIA or Vial saved")
        .type("FILE");
    task.option("--id", asked.import.id, "The board's id; made from its name when not given").type("ID");
    task.option("--name", asked.import.name, "Its name; the file's own when not given").type("NAME");
    task.option("--maker", asked.import.maker, "Its maker; the file's own when not given").type("NAME");
    withJson(task, asked, "Print the board and what is left out as JSON");
}

}  // namespace

void boardsCommand(CommandLine& line, const Environment& environment) {
    Asked asked;
    const auto listAll = [&] { list(asked, environment); };
    line.describe("List, show, check and import boards, the keyboards that heat maps are drawn on",
                  "tappora boards import keymap.json -o mine.json");
    withJson(line, asked, "Print the list as JSON");
    line.task(
        "list", "List the boards by name (the default)", "tappora boards list",
        [&](auto& task) {
            withJson(task, asked, "Print the records as JSON, with the number of their keys");
        },
        listAll);
    line.task(
        "show", "Show a board's keys: what they send, where they are, which finger presses them",
        "tappora boards show planck", [&](auto& task) { declareShow(task, asked); },
        [&] { show(asked, environment); });
    line.task(
        "check", "Check the given board files, or all boards", "tappora boards check mine.json",
        [&](auto& task) { declareCheck(task, asked); }, [&] { check(asked, environment); });
    line.task(
        "import", "Make a board from a keyboard file, and list what is left out",
        "tappora boards import info.json -o mine.json --layout LAYOUT_60_ansi",
        [&](auto& task) { declareImport(task, asked); }, [&] { import(asked, environment); });
    line.perform(listAll);
}

}  // namespace tappora
