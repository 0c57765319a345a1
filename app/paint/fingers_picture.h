#pragma once

#include "app/common/keyboard/fingers_view.h"
#include "drawing/node.h"

namespace tappora {

/// What each finger, hand and row carries as a picture for either theme: a bar for each with its share and
/// travel, and an element for assistive tools. A "what if" has its bar and figures below the real ones.
drawing::Picture fingersPicture(const FingersView& view);

}  // namespace tappora
