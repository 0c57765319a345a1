#include "app/tappora/report_page.h"

#include <algorithm>

#include "app/common/report/report_tables.h"
#include "app/tappora/page_parts.h"
#include "app/tappora/page_pictures.h"

namespace tappora {
namespace {

using tapcore::Report;

/// What all sections are made from.
class Page {
  public:
    Page(const Report& report, const tapcore::ReportKeyboard& keyboard, const tapcore::Words& words,
         const PageStyle& style)
        : report_(report),
          keyboard_(keyboard),
          words_(words),
          style_(style),
          tables_(report, keyboard, words, style.locale) {}

    std::string text() const {
        const std::string title = escaped(tables_.title());
        return "<!doctype html>\n<html lang=\"" + escaped(words_.language()) +
               "\">\n<head>\n<meta charset=\"utf-8\">\n"
               "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
               "'unsafe-inline'\">\n"
               "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
               title + "</title>\n<style>" + styleSheet(heatStyles(style_.color)) +
               "</style>\n</head>\n<body>\n<header><h1>" + title + "</h1>\n<p>" +
               escaped(tables_.subtitle()) + "</p></header>\n<main>\n" + sections() + "</main>\n<footer><p>" +
               escaped(tables_.word("report.page.footer")) + "</p></footer>\n</body>\n</html>\n";
    }

  private:
    std::string sections() const {
        return titled("findings", findings()) + titled("figures", figures(tables_.figures())) +
               titled("compared", compared()) + titled(std::string(tables_.bars().section()), days()) +
               titled("hours", hours()) + titled("keyboard", withLink(keys(), heatmapLink())) +
               "<div class=\"two\">" + titled("shortcuts", shown(tables_.shortcuts())) +
               titled("kinds", shown(tables_.kinds())) + "</div>" + titled("fingers", fingers()) +
               titled("practice", withLink(figures(tables_.practice()), practiceLink()));
    }

    /// With what opens a program's command of that name, where there is anything.
    static std::string withLink(const std::string& content, const std::string& link) {
        if (content.empty() || link.empty()) return content;
        const std::string command = link.substr(0, link.find('?'));
        return content + "<p class=\"hint\"><a href=\"tappora://" + escaped(link) + "\">tappora " + command +
               "</a></p>\n";
    }

    std::string heatmapLink() const {
        return "heatmap?from=" + report_.period.first.description() +
               "&to=" + report_.period.last.description();
    }

    /// With the letters that are most worth it.
    std::string practiceLink() const {
        constexpr std::size_t most = 5;
        std::string letters;
        for (std::size_t i = 0; i < std::min(most, report_.gains.size()); ++i)
            letters += (i == 0 ? "practice?letters=" : ",") + report_.gains[i].letter;
        return letters;
    }

    std::string titled(const std::string& name, const std::string& content) const {
        return section(name, tables_.word("report.section." + name), content);
    }

    static std::string shown(const PageTable& table) { return table.rows.empty() ? "" : html(table); }

    std::string findings() const {
        std::string items;
        for (const std::string& finding : tables_.findings()) items += "<li>" + escaped(finding) + "</li>\n";
        return items.empty() ? "" : "<ol class=\"findings\">\n" + items + "</ol>\n";
    }

    static std::string figures(const std::vector<ReportTables::Figure>& figures) {
        std::string items;
        for (const auto& [name, value] : figures)
            items += "<div><dt>" + escaped(name) + "</dt><dd>" + escaped(value) + "</dd></div>\n";
        return items.empty() ? "" : "<dl class=\"figures\">\n" + items + "</dl>\n";
    }

    std::string compared() const {
        std::string text = shown(tables_.compared());
        if (const std::string tooFew = tables_.comparedWithTooFew(); !tooFew.empty())
            text += "<p>" + escaped(tooFew) + "</p>\n";
        if (const auto with = tables_.comparedWith())
            text += "<h3>" + escaped(with->caption) + "</h3>\n" + html(*with);
        return text;
    }

    std::string days() const {
        if (report_.days.size() < 2) return "";
        const ReportBars& bars = tables_.bars();
        const std::string picture = bars.kind == ReportBars::Kind::calendar
                                        ? yearPicture(bars, words_, style_.locale)
                                        : barsPicture(bars, words_);
        return picture + behindButton(tables_.days(), words_);
    }

    std::string hours() const {
        const PageTable table = tables_.hours();
        if (table.rows.empty()) return "";
        return hoursPicture(report_, words_, style_.locale) + behindButton(table, words_);
    }

    std::string keys() const {
        const std::string picture = keyboardPicture(report_, keyboard_, words_);
        if (picture.empty()) return "";
        std::string text = hint(tables_.word("report.page.hint")) + picture;
        if (const std::string offBoard = tables_.offBoard(); !offBoard.empty()) text += hint(offBoard);
        return text + behindButton(tables_.keys(report_.figures.summary.byKey.size()), words_);
    }

    static std::string hint(const std::string& text) {
        return "<p class=\"hint\">" + escaped(text) + "</p>\n";
    }

    std::string fingers() const {
        const PageTable table = tables_.fingers();
        return table.rows.empty() ? "" : handsPicture(report_, words_) + behindButton(table, words_);
    }

    const Report& report_;
    const tapcore::ReportKeyboard& keyboard_;
    const tapcore::Words& words_;
    const PageStyle& style_;
    const ReportTables tables_;
};

}  // namespace

std::string reportPage(const Report& report, const tapcore::ReportKeyboard& keyboard,
                       const tapcore::Words& words, const PageStyle& style) {
    return Page(report, keyboard, words, style).text();
}

}  // namespace tappora
