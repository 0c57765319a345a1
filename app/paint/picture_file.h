#pragma once

#include <filesystem>

#include "drawing/node.h"
#include "drawing/style.h"

namespace tappora {

/// Writes a picture as the kind of file that its name ends in: .svg, .pdf, or .png at two pixels to the
/// point. A file of that name is replaced whole. UsageError for another ending; Failure when it cannot be
/// painted, or when what has that name is no file.
void writePicture(const std::filesystem::path& file, const drawing::Picture& picture,
                  const drawing::Appearance& appearance);

}  // namespace tappora
