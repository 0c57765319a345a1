#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/common/report/report_bars.h"
#include "core/reports/report.h"
#include "core/words/words.h"

namespace tappora {

/// One cell of a table. Numbers are to the right.
struct ReportCell {
    std::string text;
    bool isNumber = false;
};

struct ReportTable {
    std::string caption;
    std::vector<ReportCell> header;
    std::vector<std::vector<ReportCell>> rows;  ///< the first cell of each names the row
};

/// A share of 1 as per cent, without the sign.
std::string percentOf(double share, const tapcore::Words& words);

/// What a report says, as texts in a language: the same for the page and for paper. A table without rows says
/// nothing. It refers to what it is made of, which must outlive it.
class ReportTables {
  public:
    /// A figure's name and its value.
    using Figure = std::pair<std::string, std::string>;

    /// `locale` is of dates and of the first day of the week.
    ReportTables(const tapcore::Report& report, const tapcore::ReportKeyboard& keyboard,
                 const tapcore::Words& words, const std::string& locale)
        : report_(report),
          keyboard_(keyboard),
          words_(words),
          locale_(locale),
          bars_(ReportBars::of(report, locale)) {}

    std::string title() const;
    /// Its days, the board and the layout.
    std::string subtitle() const;
    /// What was found, and what could be done.
    std::vector<std::string> findings() const;

    std::vector<Figure> figures() const;
    std::vector<Figure> practice() const;

    ReportTable compared() const;
    /// With the period that --compare asked for; nothing when it did not ask, or for too little typing then.
    std::optional<ReportTable> comparedWith() const;
    /// Says of too little typing then; empty for enough.
    std::string comparedWithTooFew() const;
    ReportTable days() const;
    ReportTable hours() const;
    /// The most pressed keys, at most so many.
    ReportTable keys(std::size_t most) const;
    /// The most pressed shortcuts, at most so many, as "⌘C" or as "cmd+c".
    enum class ShortcutNames { signs, words };
    ReportTable shortcuts(std::size_t most = 20, ShortcutNames names = ShortcutNames::signs) const;
    ReportTable kinds() const;
    ReportTable fingers() const;

    /// The days or months that `days` lists.
    const ReportBars& bars() const { return bars_; }
    /// Of presses that the board has no key for; empty without any.
    std::string offBoard() const;

    std::string word(std::string_view key, tapcore::Words::Values values = {}) const {
        return words_.text(key, values);
    }
    std::string number(std::int64_t value) const { return words_.number(value); }

  private:
    std::string date(const tapcore::Day& day) const;
    std::string titleOf(const tapcore::ReportPeriod& period) const;
    std::string rounded(double value) const;
    std::string shareOf(std::int64_t part, std::int64_t all) const;
    std::string signedText(std::int64_t change, bool isDifference = false) const;
    std::string change(double then) const;
    Figure figure(const std::string& name, std::string value) const;
    void addTotals(ReportTable& table, std::string_view key,
                   const std::optional<tapcore::Report::Totals>& totals) const;

    const tapcore::Report& report_;
    const tapcore::ReportKeyboard& keyboard_;
    const tapcore::Words& words_;
    const std::string& locale_;
    const ReportBars bars_;
};

}  // namespace tappora
