#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "drawing/node.h"
#include "drawing/text.h"

namespace tappora {

/// The size of the paper that people of a locale ("de_AT") print on: Letter where that is usual, else A4; A4
/// for a locale without a country.
drawing::Size paperSize(std::string_view locale);

/// Lays things out one below another on as many pages as they need.
class Paper {
  public:
    static constexpr double margin = 48;

    /// `footer` is printed on each page, beside the number of the page.
    Paper(const drawing::Size& size, drawing::TextWidth width, std::string footer);

    /// The width between the margins.
    double room() const { return size_.width - 2 * margin; }

    /// Whether there is so much room on this page.
    bool has(double height) const { return y_ + height <= bottom(); }
    /// Goes to the next page unless there is so much room on this one.
    void need(double height);
    void space(double height);
    /// A text in as many lines as it takes, so far from the left margin.
    void text(std::string_view text, const drawing::Font& font, const drawing::Style& style,
              double indent = 0);
    /// A drawing as high as that, from its 0.
    void add(drawing::Node node, double height);

    /// A column of a table, by its right edge for numbers, else by its left one.
    struct Column {
        double at = 0;
        double width = 0;
        bool isNumber = false;
    };
    /// The rows of a table under their header, which is printed again on each page.
    void table(const std::vector<Column>& columns, const std::vector<std::string>& header,
               const std::vector<std::vector<std::string>>& rows);

    std::vector<drawing::Picture> pages(const std::string& title) &&;

  private:
    void row(const std::vector<Column>& columns, const std::vector<std::string>& cells,
             const drawing::Style& style);
    double bottom() const { return size_.height - margin - 24; }

    drawing::Size size_;
    drawing::TextWidth width_;
    std::string footer_;
    std::vector<std::vector<drawing::Node>> pages_;
    double y_ = margin;
};

}  // namespace tappora
