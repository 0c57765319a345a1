#include "core/keyboard/catalog.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "core/files/store.h"
#include "core/foundation/fatal.h"
#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"
#include "core/foundation/json_fields.h"
#include "core/keyboard/layout_index.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".json";
// The folders that come with the program.
constexpr const char* boardsFolder = "Boards";
constexpr const char* layoutsFolder = "Layouts";

/// The file of an id, when there is one; "" and "../x" are none.
std::optional<fs::path> fileOf(const fs::path& folder, const std::string& id) {
    if (!Store::isSafeLayoutID(id)) return std::nullopt;
    const fs::path file = folder / std::string(id).append(ending);
    std::error_code none;
    return fs::is_regular_file(file, none) ? std::optional(file) : std::nullopt;
}

template <class Item>
void sortByName(std::vector<Item>& items) {
    std::stable_sort(items.begin(), items.end(),
                     [](const Item& a, const Item& b) { return a.name < b.name; });
}

template <class Item, class... How>
Item readItem(const fs::path& path, How... how) {
    const FatalContext context("reading", path.native());
    try {
        return Item::parse(Catalog::readText(path), how...);
    } catch (const JsonError& error) {
        throw Catalog::FileError(path.filename().string(), error.what());
    }
}

template <class Item>
std::vector<Item> readFolder(const fs::path& folder) {
    std::vector<Item> items;
    for (const std::string& name : namesWithEnding(ending, folder))
        items.push_back(readItem<Item>(folder / (name + std::string(ending))));
    return items;
}

template <class Item>
const Item* withID(const std::vector<Item>& items, std::string_view id) {
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.id == id; });
    return found == items.end() ? nullptr : &*found;
}

}  // namespace

Catalog::Catalog(std::vector<Board> someBoards, std::vector<Layout> someLayouts)
    : boards(std::move(someBoards)), layouts(std::move(someLayouts)) {
    sortByName(boards);
    sortByName(layouts);
}

Catalog::Catalog(const fs::path& boardsAt, const fs::path& layoutsAt)
    : Catalog(readFolder<Board>(boardsAt), readFolder<Layout>(layoutsAt)) {}

Catalog Catalog::bundled(const fs::path& resources) {
    return Catalog(resources / boardsFolder, resources / layoutsFolder);
}

Catalog Catalog::bundledLayouts(const fs::path& resources) { return Catalog({}, resources / layoutsFolder); }

std::optional<Board> Catalog::bundledBoard(const fs::path& resources, const std::string& id) {
    const auto file = fileOf(resources / boardsFolder, id);
    return file ? std::optional(readBoard(*file)) : std::nullopt;
}

std::optional<Layout> Catalog::bundledLayout(const fs::path& resources, const std::string& id) {
    const auto file = fileOf(resources / layoutsFolder, id);
    return file ? std::optional(readLayout(*file)) : std::nullopt;
}

std::string Catalog::readText(const fs::path& path) {
    FileRead file = readFile(path, largestFile);
    if (const auto why = file.failure()) throw FileError(path.filename().string(), why.message());
    return std::move(file.text);
}

Board Catalog::readBoard(const fs::path& file) { return readItem<Board>(file); }
Layout Catalog::readLayout(const fs::path& file) { return readItem<Layout>(file, Layout::Repeats::refused); }

Catalog Catalog::adding(std::vector<Layout> added) const {
    std::unordered_set<std::string_view> replaced;
    for (const Layout& layout : added) replaced.insert(layout.id);
    std::vector<Layout> all = layouts;
    std::erase_if(all, [&](const Layout& layout) { return replaced.contains(layout.id); });
    std::move(added.begin(), added.end(), std::back_inserter(all));
    return {boards, std::move(all)};
}

const Board* Catalog::board(std::string_view id) const { return withID(boards, id); }
const Layout* Catalog::layout(std::string_view id) const { return withID(layouts, id); }

Legends Catalog::legends(std::string_view id) const { return LayoutIndex(layouts).legends(id); }

}  // namespace tapcore
