#include "app/paint/paper.h"

#include <fmt/format.h>

#include <utility>

#include "core/foundation/paper_size.h"
#include "drawing/outline.h"

namespace tappora {

namespace {

constexpr double rowHeight = 16;

}  // namespace

using drawing::Alignment;
using drawing::Font;
using drawing::Node;
using drawing::Size;
using drawing::Style;
using drawing::Text;
using drawing::Transform;

Size paperSize(std::string_view locale) {
    if (tapcore::printsOnLetter(locale)) return {612, 792};
    return {595.276, 841.89};
}

Paper::Paper(const Size& size, drawing::TextWidth width, std::string footer)
    : size_(size), width_(std::move(width)), footer_(std::move(footer)), pages_(1) {}

void Paper::need(double height) {
    if (has(height) || pages_.back().empty()) return;
    pages_.emplace_back();
    y_ = margin;
}

void Paper::space(double height) {
    if (!pages_.back().empty()) y_ += height;
}

void Paper::text(std::string_view text, const Font& font, const Style& style, double indent) {
    for (std::string& line : drawing::linesOf(text, font, room() - indent, width_)) {
        need(font.lineHeight());
        pages_.back().push_back({Text{.text = std::move(line),
                                      .font = font,
                                      .style = style,
                                      .at = {margin + indent, y_ + font.ascent()},
                                      .width = room() - indent,
                                      .minimumScale = 0.7},
                                 {}});
        y_ += font.lineHeight();
    }
}

void Paper::add(Node node, double height) {
    need(height);
    std::vector<Node> parts;
    parts.push_back(std::move(node));
    pages_.back().push_back(drawing::group(std::move(parts), Transform::moved(margin, y_)));
    y_ += height;
}

void Paper::table(const std::vector<Column>& columns, const std::vector<std::string>& header,
                  const std::vector<std::vector<std::string>>& rows) {
    need(2 * rowHeight);
    row(columns, header, drawing::secondary);
    for (const auto& cells : rows) {
        if (!has(rowHeight)) {
            need(2 * rowHeight);
            row(columns, header, drawing::secondary);
        }
        row(columns, cells, {});
    }
}

/// With a line below it.
void Paper::row(const std::vector<Column>& columns, const std::vector<std::string>& cells,
                const Style& style) {
    constexpr double height = rowHeight;
    const Font font = Font{.size = 10}.withMonospacedDigits();
    std::vector<Node> parts;
    for (std::size_t i = 0; i < std::min(columns.size(), cells.size()); ++i)
        parts.push_back({Text{.text = cells[i],
                              .font = font,
                              .style = style,
                              .at = {columns[i].at, height / 2},
                              .alignment = columns[i].isNumber ? Alignment::trailing : Alignment::leading,
                              .anchor = Text::Anchor::middle,
                              .width = columns[i].width,
                              .minimumScale = 0.7},
                         {}});
    parts.push_back(drawing::stroked(drawing::line({0, height}, {room(), height}),
                                     {.role = Style::Role::quaternary}, 0.5));
    add(drawing::group(std::move(parts)), height);
}

std::vector<drawing::Picture> Paper::pages(const std::string& title) && {
    const Font font{.size = 9};
    const double y = size_.height - margin;
    std::vector<drawing::Picture> pictures;
    for (std::vector<Node>& nodes : pages_) {
        nodes.push_back({Text{.text = footer_,
                              .font = font,
                              .style = drawing::secondary,
                              .at = {margin, y},
                              .width = room() - 60,
                              .minimumScale = 0.7},
                         {}});
        nodes.push_back({Text{.text = fmt::format("{} / {}", pictures.size() + 1, pages_.size()),
                              .font = font,
                              .style = drawing::secondary,
                              .at = {size_.width - margin, y},
                              .alignment = Alignment::trailing},
                         {}});
        Node page = drawing::group(std::move(nodes));
        page.accessibility.label = title;
        pictures.push_back({size_, std::move(page)});
    }
    return pictures;
}

}  // namespace tappora
