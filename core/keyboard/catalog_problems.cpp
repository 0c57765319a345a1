// What is wrong with boards and layouts: Catalog::problems.

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "core/keyboard/catalog.h"
#include "core/keyboard/layout_index.h"

namespace tapcore {
namespace {

using Problems = std::vector<std::string>;

template <class Item>
void addDuplicateIDs(Problems& problems, std::string_view kind, const std::vector<Item>& items) {
    std::unordered_map<std::string_view, std::size_t> uses;
    for (const Item& item : items) ++uses[item.id];
    for (const Item& item : items) {
        std::size_t& count = uses[item.id];
        if (count > 1) problems.push_back(std::string(kind) + " id " + item.id + " is used twice");
        count = 0;
    }
}

void addBaseProblem(Problems& problems, const LayoutIndex& index, const Layout& layout) {
    std::unordered_set<std::string_view> visited{layout.id};
    for (const Layout* at = &layout; at->base;) {
        const std::string& base = *at->base;
        at = index.find(base);
        if (!at) return problems.push_back(layout.id + ": base " + base + " is not a layout");
        if (!visited.insert(base).second)
            return problems.push_back(layout.id + ": its bases lead back to " + base);
    }
}

/// "[7, 12]"
std::string listed(const std::vector<KeyCode>& codes) {
    std::string text;
    for (const KeyCode code : codes) text += (text.empty() ? "[" : ", ") + std::to_string(code);
    return text + "]";
}

std::vector<KeyCode> codesWithout(const Legends& legends, const std::set<KeyCode>& codes) {
    std::vector<KeyCode> without;
    std::copy_if(codes.begin(), codes.end(), std::back_inserter(without),
                 [&](KeyCode code) { return !legends.contains(code); });
    return without;
}

void addMissingLegends(Problems& problems, const std::string& layoutID, const Legends& legends,
                       const std::string& boardID, const std::set<KeyCode>& codes) {
    const auto without = codesWithout(legends, codes);
    if (!without.empty())
        problems.push_back(layoutID + ": no legend for " + boardID + "'s key codes " + listed(without));
}

void addMiscounted(Problems& problems, const std::string& layoutID, const Legends& legends) {
    for (const auto& [code, legend] : legends)
        if (legend.empty() || legend.size() > 2)
            problems.push_back(layoutID + ": key code " + std::to_string(code) +
                               " needs one or two legends, has " + std::to_string(legend.size()));
}

}  // namespace

std::vector<std::string> Catalog::problems() const {
    Problems problems;
    std::vector<std::set<KeyCode>> codes;
    for (const Board& board : boards) {
        auto own = board.problems();
        std::move(own.begin(), own.end(), std::back_inserter(problems));
        codes.push_back(board.keyCodes());
    }
    addDuplicateIDs(problems, "board", boards);
    addDuplicateIDs(problems, "layout", layouts);

    const LayoutIndex index(layouts);
    for (const Layout& layout : layouts) addBaseProblem(problems, index, layout);
    Problems miscounted;  // told after all that is missing
    for (const Layout& layout : layouts) {
        const Legends legends = index.legends(layout.id);
        for (std::size_t i = 0; i < boards.size(); ++i)
            addMissingLegends(problems, layout.id, legends, boards[i].id, codes[i]);
        addMiscounted(miscounted, layout.id, legends);
    }
    std::move(miscounted.begin(), miscounted.end(), std::back_inserter(problems));
    return problems;
}

}  // namespace tapcore
