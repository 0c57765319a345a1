#pragma once

#include <string>

#include "core/counting/key_face.h"

namespace tapcore {

/// A layout with all it prints.
struct LegendSet {
    std::string id;
    std::string name;
    Legends legends;  ///< those of its bases included
};

}  // namespace tapcore
