#pragma once

#include <string>
#include <vector>

#include "drawing/node.h"

namespace tappora {

/// The page that every picture of ours is laid out on: a title and a line about it, the drawing, and remarks
/// below.
struct Sheet {
    std::string title;
    std::string subtitle;
    drawing::Node content;
    drawing::Size size;              ///< of the content
    std::vector<std::string> notes;  ///< a line each
};

/// The sheet on opaque paper, as wide as its content and margins, or wider where the title would have no
/// room.
drawing::Picture pictureOf(Sheet sheet);

}  // namespace tappora
