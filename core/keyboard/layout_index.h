#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/keyboard/layout.h"

namespace tapcore {

/// Layouts by id, and what each extends. It refers to the layouts, which must outlive it. Of two with one id,
/// the first counts.
class LayoutIndex {
  public:
    explicit LayoutIndex(const std::vector<Layout>& layouts);

    /// The layout of an id, or null.
    const Layout* find(std::string_view id) const;

    /// A layout's legends, those of its bases included: of two for one key code, the nearer layout's. Empty
    /// for an unknown id. Bases that are missing or lead back end the walk.
    Legends legends(std::string_view id) const;

  private:
    std::unordered_map<std::string_view, const Layout*> layouts_;
};

}  // namespace tapcore
