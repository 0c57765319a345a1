#include "app/paint/report_paper.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "app/common/folder/language.h"
#include "app/common/program.h"
#include "app/common/report/report_options.h"
#include "app/common/report/report_tables.h"
#include "app/paint/paper.h"
#include "app/paint/picture_file.h"
#include "app/paint/report_drawings.h"
#include "drawing/painter.h"

namespace tappora {
namespace {

using drawing::Font;
using drawing::Style;
using drawing::Weight;
using tapcore::Report;

const Font headingFont{.size = 13, .weight = Weight::semibold};
const Font bodyFont{.size = 10.5};

/// Puts a report on paper, section by section.
class ReportPaper {
  public:
    ReportPaper(const Report& report, const AskedReport& asked, const drawing::Size& size)
        : report_(report),
          tables_(report, asked.question.keyboard, asked.words, asked.locale),
          paper_(size, drawing::systemTextWidth(), tables_.title()),
          drawings_{report, asked.question.keyboard, asked.words, asked.locale, asked.color, paper_.room()} {}

    std::vector<drawing::Picture> pages() && {
        paper_.text(tables_.title(), Font{.size = 18, .weight = Weight::semibold}, {});
        paper_.space(2);
        paper_.text(tables_.subtitle(), bodyFont, drawing::secondary);
        findings();
        figures("figures", tables_.figures());
        compared();
        if (report_.days.size() > 1) days();
        if (!tables_.hours().rows.empty()) pictured("hours", drawings_.hours());
        keys();
        table("shortcuts", tables_.shortcuts());
        table("kinds", tables_.kinds());
        fingers();
        practice();
        appendix();
        paper_.space(10);
        paper_.text(tables_.word("report.page.footer"), Font{.size = 9}, drawing::secondary);
        return std::move(paper_).pages(tables_.title());
    }

  private:
    /// With so much of what follows on the same page.
    void heading(const std::string& text, double follows) {
        paper_.need(18 + headingFont.lineHeight() + follows);
        paper_.space(18);
        paper_.text(text, headingFont, {});
        paper_.space(4);
    }
    std::string named(const std::string& section) const { return tables_.word("report.section." + section); }

    void findings() {
        const auto texts = tables_.findings();
        if (texts.empty()) return;
        heading(named("findings"), 30);
        for (const std::string& text : texts) {
            paper_.need(bodyFont.lineHeight());
            paper_.add(drawing::hidden({drawing::Text{.text = "•",
                                                      .font = bodyFont,
                                                      .style = drawing::secondary,
                                                      .at = {0, bodyFont.ascent()}},
                                        {}}),
                       0);
            paper_.text(text, bodyFont, {}, 12);
            paper_.space(2);
        }
    }

    void practice() {
        auto all = tables_.practice();
        std::string letters;  // of which there may be many: they have a line of their own
        if (!all.empty() && !report_.practice.newLetters.empty()) {
            letters = all.back().first + ": " + all.back().second;
            all.pop_back();
        }
        figures("practice", all);
        paper_.text(letters, bodyFont, {});
    }

    void figures(const std::string& section, const std::vector<ReportTables::Figure>& figures) {
        constexpr std::size_t inRow = 4;
        constexpr double height = 38;
        if (figures.empty()) return;
        heading(named(section), height);
        const double pitch = paper_.room() / inRow;
        for (std::size_t i = 0; i < figures.size(); i += inRow) {
            std::vector<drawing::Node> parts;
            for (std::size_t j = i; j < std::min(i + inRow, figures.size()); ++j) {
                const double x = pitch * static_cast<double>(j - i);
                parts.push_back(
                    line(figures[j].second, x, 15, Font{.size = 15, .weight = Weight::semibold}, {}, pitch));
                parts.push_back(line(figures[j].first, x, 27, Font{.size = 8.5}, drawing::secondary, pitch));
            }
            paper_.add(drawing::group(std::move(parts)), height);
        }
    }

    static drawing::Node line(const std::string& text, double x, double y, const Font& font,
                              const Style& style, double pitch) {
        return {drawing::Text{.text = text,
                              .font = Font(font).withMonospacedDigits(),
                              .style = style,
                              .at = {x, y},
                              .width = pitch - 8,
                              .minimumScale = 0.6},
                {}};
    }

    void pictured(const std::string& section, Drawn drawn) {
        heading(named(section), drawn.height);
        paper_.add(drawing::hidden(std::move(drawn.node)), drawn.height);
    }

    void table(const std::string& section, const ReportTable& table) {
        if (table.rows.empty()) return;
        heading(named(section), 48);
        rows(table);
    }

    void rows(const ReportTable& table) {
        const auto columns = columnsOf(table);
        const auto texts = [](const std::vector<ReportCell>& cells) {
            std::vector<std::string> all;
            for (const ReportCell& cell : cells) all.push_back(cell.text);
            return all;
        };
        std::vector<std::vector<std::string>> lines;
        for (const auto& row : table.rows) lines.push_back(texts(row));
        paper_.table(columns, texts(table.header), lines);
    }

    /// The first column has what the others leave.
    std::vector<Paper::Column> columnsOf(const ReportTable& table) const {
        const auto others = static_cast<double>(table.header.size() - 1);
        const double first = others > 4 ? 40 : paper_.room() * 0.46;
        const double pitch = (paper_.room() - first) / std::max(others, 1.0);
        std::vector<Paper::Column> columns = {{0, first - 8, false}};
        for (std::size_t i = 1; i < table.header.size(); ++i)
            columns.push_back({first + pitch * static_cast<double>(i), pitch - 6, true});
        return columns;
    }

    void compared() {
        table("compared", tables_.compared());
        if (const std::string tooFew = tables_.comparedWithTooFew(); !tooFew.empty())
            paper_.text(tooFew, bodyFont, drawing::secondary);
        if (const auto with = tables_.comparedWith()) {
            heading(with->caption, 48);
            rows(*with);
        }
    }

    void days() {
        const ReportBars& bars = tables_.bars();
        pictured(std::string(bars.section()), bars.kind == ReportBars::Kind::calendar
                                                  ? drawings_.calendarOf(bars)
                                                  : drawings_.barsOf(bars));
    }

    void keys() {
        Drawn drawn = drawings_.keys();
        if (drawn.height == 0 || report_.figures.summary.byKey.empty()) return;
        pictured("keyboard", std::move(drawn));
        paper_.text(tables_.offBoard(), bodyFont, drawing::secondary);
        rows(tables_.keys(20));
    }

    void fingers() {
        const ReportTable shares = tables_.fingers();
        if (shares.rows.empty()) return;
        pictured("fingers", drawings_.hands());
        rows(shares);
    }

    /// What the pictures show, in figures.
    void appendix() {
        const ReportBars& bars = tables_.bars();
        if (report_.days.size() > 1 && bars.kind != ReportBars::Kind::calendar)
            table(std::string(bars.section()), tables_.days());
        table("hours", tables_.hours());
    }

    const Report& report_;
    const ReportTables tables_;
    Paper paper_;
    const ReportDrawings drawings_;
};

Report read(const AskedReport& asked) {
    tapcore::FileProblems problems;
    Report report = reportOf(asked.store, asked.question, &problems);
    requireAnswer(problems, report.isEmpty());
    return report;
}

}  // namespace

void paintReport(CommandLine& line, const Environment& environment) {
    ReportOptions options;
    addReportOptions(line, options);
    line.declared("--output").required();
    line.parse();
    const AskedReport asked = askedReport(options, environment);
    const Report report = read(asked);
    if (report.isEmpty()) return sayNothingCounted(asked, options);
    const auto size = paperSize(paperLocale(environment));
    writePages(*options.output, ReportPaper(report, asked, size).pages(), {});
}

}  // namespace tappora
