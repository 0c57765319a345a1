#pragma once

#include <filesystem>
#include <vector>

#include "drawing/node.h"
#include "drawing/style.h"

namespace tappora {

enum class PictureKind { svg, png, pdf };

/// The kind of file that a name ends in. UsageError for another ending.
PictureKind pictureKind(const std::filesystem::path& file);

/// Writes a picture, a PNG at `scale` pixels to the point. A file of that name is replaced whole. Failure
/// when it cannot be painted, or when what has that name is no file.
void writePicture(const std::filesystem::path& file, const drawing::Picture& picture,
                  const drawing::Appearance& appearance, double scale = 2);

/// Writes pictures as the pages of a PDF, in the same way.
void writePages(const std::filesystem::path& file, const std::vector<drawing::Picture>& pages,
                const drawing::Appearance& appearance);

}  // namespace tappora
