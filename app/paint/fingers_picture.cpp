#include "app/paint/fingers_picture.h"

#include <algorithm>
#include <utility>

#include "app/paint/sheet.h"
#include "core/foundation/integers.h"
#include "drawing/outline.h"
#include "widgets/heat_board.h"

namespace tappora {
namespace {

using drawing::Alignment;
using drawing::Font;
using drawing::Node;
using drawing::secondary;
using drawing::Style;
using drawing::Text;
using drawing::Weight;
using tapcore::Load;

// The columns of a row, in points from its left.
constexpr double nameRoom = 150;
constexpr double barLeft = 160;
constexpr double barRoom = 260;
constexpr double pressesRight = 520;
constexpr double shareRight = 590;
constexpr double travelRight = 670;

constexpr double barHeight = 12;
constexpr double lineHeight = 17;
constexpr double rowGap = 5;
constexpr double sectionGap = 18;

Node text(std::string text, double x, double y, const Style& style, Alignment alignment,
          Font font = Font{.size = 12}.withMonospacedDigits(), double width = 0) {
    return {Text{.text = std::move(text),
                 .font = std::move(font),
                 .style = style,
                 .at = {x, y},
                 .alignment = alignment,
                 .anchor = Text::Anchor::middle,
                 .width = width,
                 .minimumScale = 0.8},
            {}};
}

/// Puts rows of bars below each other.
class LoadPainter {
  public:
    explicit LoadPainter(const FingersView& view) : view_(view) {
        if (view_.whatIf) key();
        for (const LoadSection& section : sections(view_)) add(section);
    }

    std::vector<Node> nodes() && { return std::move(nodes_); }
    double bottom() const { return y_; }

  private:
    Style real() const { return tapwidgets::heatStyle(view_.whatIf ? 2 : 4, view_.color); }
    Style asked() const { return tapwidgets::heatStyle(5, view_.color); }

    /// Which bar is of which layout.
    void key() {
        constexpr double room = 150;
        double x = barLeft;
        for (const auto& [style, name] :
             {std::pair(real(), view_.layout.name), std::pair(asked(), view_.whatIf->layout.name)}) {
            nodes_.push_back(bar(x, y_, 24, style));
            nodes_.push_back(text(name, x + 32, y_ + barHeight / 2, secondary, Alignment::leading,
                                  Font{.size = 12}, room - 44));
            x += room;
        }
        y_ += lineHeight + sectionGap;
    }

    void add(const LoadSection& section) {
        nodes_.push_back(text(section.heading, 0, y_ + lineHeight / 2, {}, Alignment::leading,
                              Font{.size = 13, .weight = Weight::semibold}));
        y_ += lineHeight + rowGap;
        const double most = static_cast<double>(mostPresses(section));
        for (const LoadRow& row : section.rows) nodes_.push_back(rowNode(row, most));
        y_ += sectionGap - rowGap;
    }

    Node rowNode(const LoadRow& row, double most) {
        std::vector<Node> parts = {
            text(row.name, 0, y_ + lineHeight / 2, {}, Alignment::leading, Font{.size = 12}, nameRoom)};
        std::string value = addLine(parts, row, row.part, view_.load, most, real());
        if (row.other)
            value += "; on " + view_.whatIf->layout.name + ": " +
                     addLine(parts, row, *row.other, view_.whatIf->load, most, asked());
        y_ += rowGap;
        return drawing::labelled(drawing::group(std::move(parts)), row.name, std::move(value));
    }

    /// A bar with its figures, which are returned in words.
    std::string addLine(std::vector<Node>& parts, const LoadRow& row, const Load::Part& part,
                        const Load& load, double most, const Style& style) {
        const std::string share = percentText(part.presses, load.all.presses);
        const std::string travel = row.hasTravel ? travelText(part.metres) : "–";
        const double middle = y_ + lineHeight / 2;
        const double length = barRoom * static_cast<double>(part.presses) / most;
        if (part.presses > 0)
            parts.push_back(bar(barLeft, middle - barHeight / 2, std::max(length, 2.0), style));
        parts.push_back(
            text(tapcore::grouped(part.presses), pressesRight, middle, secondary, Alignment::trailing));
        parts.push_back(text(share, shareRight, middle, {}, Alignment::trailing));
        parts.push_back(text(travel, travelRight, middle, secondary, Alignment::trailing));
        y_ += lineHeight;
        return pressesText(part.presses) + ", " + share + (row.hasTravel ? ", " + travel : "");
    }

    static Node bar(double x, double y, double length, const Style& style) {
        const double radius = std::min(3.0, length / 2);
        return drawing::filled(drawing::roundedRectangle({x, y, length, barHeight}, radius), style);
    }

    const FingersView& view_;
    std::vector<Node> nodes_;
    double y_ = 0;
};

}  // namespace

drawing::Picture fingersPicture(const FingersView& view) {
    LoadPainter painter(view);
    const double height = painter.bottom() - sectionGap;
    return pictureOf({.title = title(view.board),
                      .subtitle = subtitle(view, view.load.all.presses),
                      .content = drawing::group(std::move(painter).nodes()),
                      .size = {travelRight, height},
                      .notes = notes(view)});
}

}  // namespace tappora
