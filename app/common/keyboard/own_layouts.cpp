#include "app/common/keyboard/own_layouts.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>

#include "core/keyboard/catalog.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;
using tapcore::Layout;

/// The base of the layout that an id stands for, when it has one.
std::optional<std::string> baseOf(const std::string& id, const std::vector<Layout>& own,
                                  const fs::path& resources) {
    const auto at =
        std::find_if(own.begin(), own.end(), [&](const Layout& layout) { return layout.id == id; });
    if (at != own.end()) return at->base;
    const auto bundled = tapcore::Catalog::bundledLayout(resources, id);
    return bundled ? bundled->base : std::nullopt;
}

bool leadsBack(const Layout& layout, const std::vector<Layout>& own, const fs::path& resources) {
    std::set<std::string> visited;
    for (auto base = layout.base; base && visited.insert(*base).second; base = baseOf(*base, own, resources))
        if (*base == layout.id) return true;
    return false;
}

}  // namespace

std::vector<Layout> ownLayouts(const tapcore::Store& store, const fs::path& resources,
                               tapcore::FileProblems& problems) {
    const std::vector<Layout> own = store.ownLayouts(&problems);
    std::vector<Layout> sound;
    for (const Layout& layout : own)
        if (!leadsBack(layout, own, resources)) sound.push_back(layout);
        else problems.push_back({"layout " + layout.id, 0, "its bases lead back to it"});
    return sound;
}

}  // namespace tappora
