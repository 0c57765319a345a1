#include "app/paint/picture_file.h"

#include <functional>
#include <string>

#include "app/common/folder/tell.h"
#include "app/common/program.h"
#include "core/foundation/characters.h"
#include "core/foundation/file_io.h"
#include "drawing/painter.h"

namespace tappora {
namespace {

namespace fs = std::filesystem;

std::string painted(PictureKind kind, const drawing::Picture& picture, const drawing::Appearance& appearance,
                    double scale) {
    switch (kind) {
        case PictureKind::svg:
            return drawing::svg(picture, appearance, drawing::systemTextWidth());
        case PictureKind::png:
            return drawing::png(picture, appearance, scale);
        case PictureKind::pdf:
            return drawing::pdf(picture, appearance);
    }
    return "";
}

/// A device or a folder is never replaced.
void requireFile(const fs::path& path) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) throw Failure(path.string(), "not a file");
}

/// Writes what `bytes` paints.
void write(const fs::path& file, const std::function<std::string()>& bytes) {
    requireFile(file);
    try {
        complainOf(tapcore::writeFile(file, bytes()));
    } catch (const drawing::PaintError& error) {
        throw Failure(file.string(), error.what());
    }
}

}  // namespace

PictureKind pictureKind(const fs::path& file) {
    const std::string ending = tapcore::lowercased(file.extension().string());
    if (ending == ".svg") return PictureKind::svg;
    if (ending == ".png") return PictureKind::png;
    if (ending == ".pdf") return PictureKind::pdf;
    throw UsageError("--output: " + file.string() + ": not a picture's name; end it in .svg, .png or .pdf");
}

void writePicture(const fs::path& file, const drawing::Picture& picture,
                  const drawing::Appearance& appearance, double scale) {
    write(file, [&] { return painted(pictureKind(file), picture, appearance, scale); });
}

void writePages(const fs::path& file, const std::vector<drawing::Picture>& pages,
                const drawing::Appearance& appearance) {
    write(file, [&] { return drawing::pdf(pages, appearance); });
}

}  // namespace tappora
