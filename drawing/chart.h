#pragma once

#include <functional>
#include <string>
#include <vector>

#include "drawing/node.h"

namespace drawing {

/// How an amount is written.
using NumberText = std::function<std::string(double value)>;

/// A mark on an axis, with a grid line.
struct AxisMark {
    double at = 0;
    std::string label;
};

// Sizes are points; a chart is drawn from the origin of its node to its size. Amounts may be any numbers:
// those below 0 or not finite are drawn as 0. Time and memory grow with the number of amounts.

/// An amount of a chart and how assistive tools are told of it.
struct ChartPoint {
    std::string label;  ///< what it is the amount of
    double value = 0;
    std::string told = {};  ///< the amount to its last digit; where none is given, the text of `value`
};

/// A smooth line over the area below it: points at 0, 1, 2, … from left to right, amounts upwards from 0.
struct AreaChart {
    Size size;
    std::string label;  ///< of the whole, for assistive tools
    std::vector<ChartPoint> points;
    double lastX = 1;  ///< where the x axis ends, however many points there are
    std::vector<AxisMark> xMarks;
    NumberText number;
    std::string unit = "";  ///< what is counted, for assistive tools: said before each amount
    Style style;            ///< of the line; the area has it at an opacity of 0.3
};

/// With a y axis on the right.
Node areaChart(const AreaChart& chart);

/// A bar and what it is painted with.
struct Bar {
    ChartPoint amount;
    Style style;
};

/// Bars from left to right.
struct BarChart {
    Size size;
    std::string label;  ///< of the whole, for assistive tools
    std::vector<Bar> bars;
    NumberText number;
    bool showsValues = false;  ///< writes each amount above its bar
};

/// Bars side by side, each as wide as the next, with their labels below where there is room for them. No y
/// axis.
Node barChart(const BarChart& chart);

}  // namespace drawing
