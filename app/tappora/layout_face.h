#pragma once

#include <string>

#include "core/counting/key_face.h"

namespace tappora {

/// The keys that type, as they are on an ISO board, with the lines printed on each.
std::string typingRows(const tapcore::Legends& legends);

/// The other keys that a layout names, each with its code before its legends, in columns; "" for none.
std::string otherKeys(const tapcore::Legends& legends);

}  // namespace tappora
