#include "core/files/row_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "core/foundation/json_fields.h"

namespace tapcore {
namespace {

/// A field of RFC 4180: in quotes where it has to be.
std::string quoted(std::string_view field) {
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(field);
    std::string result = "\"";
    for (const char c : field) result += c == '"' ? "\"\"" : std::string(1, c);
    return result + "\"";
}

/// The end of a row, which is short and written most often.
class RowEnd {
  public:
    RowEnd& operator<<(std::string_view text) {
        at_ = std::copy(text.begin(), text.end(), at_);
        return *this;
    }
    RowEnd& operator<<(std::int64_t number) {
        at_ = std::to_chars(at_, characters_ + sizeof characters_, number).ptr;
        return *this;
    }
    std::string_view text() const { return {characters_, static_cast<std::size_t>(at_ - characters_)}; }

  private:
    char characters_[128];  ///< a number has at most 20, all modifiers 22, and names 36
    char* at_ = characters_;
};

void putCsv(RowEnd& end, const CountRow& row) {
    if (row.keyCode) end << std::int64_t{*row.keyCode};
    end << ",";
    if (!row.modifiers.isEmpty()) end << row.modifiers.name();
    end << "," << row.count << "\n";
}

void putJson(RowEnd& end, const CountRow& row) {
    if (row.keyCode) end << R"(,"keycode":)" << std::int64_t{*row.keyCode};
    if (!row.modifiers.isEmpty()) end << R"(,"modifiers":")" << row.modifiers.name() << R"(")";
    end << R"(,"count":)" << row.count << "}\n";
}

}  // namespace

RowText::RowText(RowForm form) : form_(form) {
    if (form_ == RowForm::json) return;
    for (const std::string_view column : rowColumns.words) text_.append(column).append(",");
    text_.back() = '\n';
}

void RowText::begin(std::string_view machine, const Day& day) {
    const std::string date = day.description();
    start_.clear();
    ofDay_ = form_ == RowForm::json ? "{\"machine\":" + jsonLine(machine) + ",\"day\":\"" + date + "\""
                                    : quoted(machine) + "," + date + ",";
}

std::string RowText::startOf(const CountRow& row) const {
    const std::string hour = row.hour ? std::to_string(*row.hour) : "";
    const std::string kind(CountRow::kinds.of(row.kind));
    if (form_ == RowForm::csv) return ofDay_ + hour + "," + kind + ",";
    return ofDay_ + (hour.empty() ? "" : R"(,"hour":)" + hour) + R"(,"kind":")" + kind + "\"";
}

void RowText::add(const CountRow& row) {
    if (start_.empty() || row.hour != last_.hour || row.kind != last_.kind) start_ = startOf(row);
    last_ = row;
    RowEnd end;
    form_ == RowForm::json ? putJson(end, row) : putCsv(end, row);
    text_.append(start_).append(end.text());
}

}  // namespace tapcore
