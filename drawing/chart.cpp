#include "drawing/chart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "drawing/outline.h"
#include "drawing/scale.h"
#include "drawing/smooth.h"

namespace drawing {
namespace {

constexpr Style axisStyle{.role = Style::Role::secondary};
constexpr Style gridStyle{.role = Style::Role::quaternary};
constexpr double labelGap = 4;

Font axisFont() { return Font::caption().withMonospacedDigits(); }

double labelWidth(const std::string& label) { return roughWidth(label, axisFont()); }

Node axisLabel(std::string text, Point at, Alignment alignment, double width = 0, double scale = 1) {
    return {Text{.text = std::move(text),
                 .font = axisFont().withSize(scale * axisFont().size),
                 .style = axisStyle,
                 .at = at,
                 .alignment = alignment,
                 .anchor = Text::Anchor::middle,
                 .width = width,
                 .minimumScale = 0.7},
            {}};
}

std::string toldOf(const ChartPoint& point, const NumberText& number) {
    return point.told.empty() ? number(point.value) : point.told;
}

/// The place nearest to `middle` for something of that width that is to stay on a canvas.
double within(double canvas, double middle, double width) {
    return width < canvas ? std::clamp(middle, width / 2, canvas - width / 2) : canvas / 2;
}

/// The part of an area chart that the axes leave, and its scales.
class Plot {
  public:
    explicit Plot(const AreaChart& chart) : chart_(chart), marks_(roundMarks(largest(chart), 4)) {
        double labels = 0;
        for (const double mark : marks_) labels = std::max(labels, labelWidth(chart.number(mark)));
        const double xAxis = axisFont().lineHeight();
        right_ = std::max(chart.size.width - labels - labelGap, 0.0);
        bottom_ = std::max(chart.size.height - xAxis, 0.0);
        x_ = {.to = std::max(chart.lastX, 1.0), .end = right_};
        y_ = {.to = marks_.back(), .start = bottom_, .end = std::min(axisFont().size / 2, bottom_)};
    }

    Node grid() const {
        Path lines;
        for (const double mark : marks_) lines.append(line({0, y_(mark)}, {right_, y_(mark)}));
        for (const AxisMark& mark : chart_.xMarks)
            lines.append(line({x_(mark.at), y_.end}, {x_(mark.at), bottom_}));
        return stroked(std::move(lines), gridStyle, 1);
    }

    Node labels() const {
        std::vector<Node> texts;
        for (const double mark : marks_)
            texts.push_back(
                axisLabel(chart_.number(mark), {chart_.size.width, y_(mark)}, Alignment::trailing));
        const double middle = (bottom_ + chart_.size.height) / 2;
        for (const AxisMark& mark : chart_.xMarks) {
            const double x = within(chart_.size.width, x_(mark.at), labelWidth(mark.label));
            texts.push_back(mark.at == 0 ? axisLabel(mark.label, {x_(0), middle}, Alignment::leading)
                                         : axisLabel(mark.label, {x, middle}, Alignment::centre));
        }
        return hidden(group(std::move(texts)));
    }

    Node curve() const {
        std::vector<Point> places;
        for (std::size_t i = 0; i < chart_.points.size(); ++i)
            places.push_back({x_(static_cast<double>(i)), y_(amount(chart_.points[i].value))});
        return group(
            {filled(areaUnder(places, bottom_), chart_.style.withOpacity(0.3 * chart_.style.opacity)),
             stroked(smoothLine(places), chart_.style, 2)});
    }

    /// Nothing to see, but there for whoever points at an amount or has it read out.
    std::vector<Node> elements() const {
        std::vector<Node> columns;
        const double wide = x_(1) - x_(0);
        for (std::size_t i = 0; i < chart_.points.size(); ++i) {
            const double middle = x_(static_cast<double>(i));
            const double left = std::max(middle - wide / 2, 0.0);
            const Rect column{left, y_.end, std::min(middle + wide / 2, right_) - left, bottom_ - y_.end};
            const std::string unit = chart_.unit.empty() ? "" : chart_.unit + ": ";
            columns.push_back(labelled(filled(roundedRectangle(column, 0), axisStyle.withOpacity(0)),
                                       chart_.points[i].label,
                                       unit + toldOf(chart_.points[i], chart_.number)));
        }
        return columns;
    }

  private:
    static double largest(const AreaChart& chart) {
        double found = 0;
        for (const ChartPoint& point : chart.points) found = std::max(found, amount(point.value));
        return found;
    }

    const AreaChart& chart_;
    std::vector<double> marks_;
    double right_ = 0;
    double bottom_ = 0;
    Scale x_;
    Scale y_;
};

/// Where a bar chart's bars are.
class Bars {
  public:
    explicit Bars(const BarChart& chart) : chart_(chart) {
        pitch_ = chart.size.width / static_cast<double>(std::max<std::size_t>(chart.bars.size(), 1));
        const double bottom = std::max(chart.size.height - axisFont().lineHeight() - labelGap / 2, 0.0);
        const double top = chart.showsValues ? std::min(axisFont().lineHeight(), bottom) : 0;
        double largest = 0;
        for (const Bar& bar : chart.bars) {
            largest = std::max(largest, amount(bar.amount.value));
            widestLabel_ = std::max(widestLabel_, labelWidth(bar.amount.label));
        }
        y_ = {.to = largest > 0 ? largest : 1, .start = bottom, .end = top};
    }

    Node bar(std::size_t index) const {
        const Bar& bar = chart_.bars[index];
        const double wide = 0.62 * pitch_;
        const double top = y_(amount(bar.amount.value));
        const Rect rect{middle(index) - wide / 2, top, wide, y_.start - top};
        std::vector<Node> parts = {filled(roundedRectangle(rect, std::min(4.0, wide / 4)), bar.style)};
        const Point above{middle(index), top - axisFont().lineHeight() / 2};
        if (chart_.showsValues)
            parts.push_back(axisLabel(chart_.number(bar.amount.value), above, Alignment::centre, pitch_));
        return labelled(group(std::move(parts)), bar.amount.label, toldOf(bar.amount, chart_.number));
    }

    /// Every label, or every second, third … when they would run into each other even if smaller; all of one
    /// size.
    Node labels() const {
        constexpr double smallest = 0.65;
        const auto count = static_cast<double>(chart_.bars.size());
        const double wanted = std::ceil(smallest * widestLabel_ / pitch_);
        const double every = pitch_ > 0 ? std::clamp(wanted, 1.0, std::max(count, 1.0)) : count;
        const double room = std::max(every * pitch_ - labelGap / 2, 0.0);
        const double scale = widestLabel_ > 0.85 * room ? std::max(0.85 * room / widestLabel_, smallest) : 1;
        const double height = chart_.size.height - axisFont().lineHeight() / 2;
        std::vector<Node> texts;
        for (std::size_t i = 0; i < chart_.bars.size(); i += static_cast<std::size_t>(every)) {
            const std::string& label = chart_.bars[i].amount.label;
            const double x = within(chart_.size.width, middle(i), std::min(scale * labelWidth(label), room));
            texts.push_back(axisLabel(label, {x, height}, Alignment::centre, room, scale));
        }
        return hidden(group(std::move(texts)));
    }

  private:
    double middle(std::size_t index) const { return (static_cast<double>(index) + 0.5) * pitch_; }

    const BarChart& chart_;
    double pitch_ = 0;
    double widestLabel_ = 0;
    Scale y_;
};

}  // namespace

Node areaChart(const AreaChart& chart) {
    const Plot plot(chart);
    std::vector<Node> parts = {plot.grid(), plot.labels(), plot.curve()};
    for (Node& element : plot.elements()) parts.push_back(std::move(element));
    Node result = group(std::move(parts));
    result.accessibility.label = chart.label;
    return result;
}

Node barChart(const BarChart& chart) {
    const Bars bars(chart);
    std::vector<Node> parts;
    for (std::size_t i = 0; i < chart.bars.size(); ++i) parts.push_back(bars.bar(i));
    parts.push_back(bars.labels());
    Node result = group(std::move(parts));
    result.accessibility.label = chart.label;
    return result;
}

}  // namespace drawing
