#pragma once

#include "core/counting/legends.h"

namespace tappora {

/// What the user's layout prints on the keys, for naming them. A key without a legend is "key 105".
tapcore::Legends activeLegends();

}  // namespace tappora
