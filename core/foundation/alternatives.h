#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tapcore {

/// "A, B or C"; there must be one.
inline std::string alternatives(const std::vector<std::string>& names) {
    std::string list = names.front();
    for (std::size_t at = 1; at < names.size(); ++at)
        list.append(at + 1 == names.size() ? " or " : ", ").append(names[at]);
    return list;
}

}  // namespace tapcore
