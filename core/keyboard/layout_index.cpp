#include "core/keyboard/layout_index.h"

#include <unordered_set>

namespace tapcore {

LayoutIndex::LayoutIndex(const std::vector<Layout>& layouts) {
    for (const Layout& layout : layouts) layouts_.emplace(layout.id, &layout);
}

const Layout* LayoutIndex::find(std::string_view id) const {
    const auto found = layouts_.find(id);
    return found == layouts_.end() ? nullptr : found->second;
}

Legends LayoutIndex::legends(std::string_view id) const {
    Legends legends;
    std::unordered_set<std::string_view> visited;
    const Layout* layout = find(id);
    while (layout && visited.insert(layout->id).second) {
        legends.insert(layout->legends.begin(), layout->legends.end());  // keeps what a nearer layout named
        layout = layout->base ? find(*layout->base) : nullptr;
    }
    return legends;
}

}  // namespace tapcore
