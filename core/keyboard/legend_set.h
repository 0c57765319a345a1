#pragma once

#include <string>

#include "core/counting/key_face.h"

namespace tapcore {

/// A layout with all it prints.
struct LegendSet {
    std::string id;
    std::string name;
    Legends legends;   ///< those of its bases included
    Legends own = {};  ///< the user's own words for keys of the board, one each

    /// What its keys are called: by the user's own words, else by what they print.
    Legends names() const {
        Legends all = own;
        all.insert(legends.begin(), legends.end());
        return all;
    }
};

}  // namespace tapcore
