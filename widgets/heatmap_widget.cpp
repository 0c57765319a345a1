#include "widgets/views.h"

#include <utility>
#include <vector>

#include "widgets/heat_board.h"
#include "widgets/view_parts.h"

namespace tapwidgets {

using drawing::Node;

std::optional<Node> HeatmapWidget::drawing() const {
    if (!snapshot.bounds || !(snapshot.bounds->w > 0 && snapshot.bounds->h > 0)) return std::nullopt;
    const HeatBoard board{.keys = snapshot.heat,
                          .bounds = *snapshot.bounds,
                          .label = canvas.words.text("heatmap.title"),
                          .color = snapshot.mapColor.value_or(tapcore::MapColor::usual)};
    std::vector<Node> parts;
    if (snapshot.boardName) parts.push_back(caption(*snapshot.boardName, canvas.size.width));
    parts.push_back(board.drawing(snapshot.boardName
                                      ? belowCaption(canvas.size)
                                      : drawing::Rect{0, 0, canvas.size.width, canvas.size.height}));
    return drawing::group(std::move(parts));
}

}  // namespace tapwidgets
