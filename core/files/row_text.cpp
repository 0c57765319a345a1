#include "core/files/row_text.h"

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

void append(std::string& text, std::int64_t number) {
    char digits[20];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

}  // namespace

RowText::RowText(RowForm form) : form_(form) {
    if (form_ == RowForm::json) return;
    for (const std::string_view column : rowColumns.words) text_.append(column).append(",");
    text_.back() = '\n';
}

void RowText::begin(std::string_view machine, const Day& day) {
    const std::string date = day.description();
    start_ = form_ == RowForm::json ? "{\"machine\":" + jsonLine(machine) + ",\"day\":\"" + date + "\""
                                    : quoted(machine) + "," + date + ",";
}

void RowText::add(const CountRow& row) { form_ == RowForm::json ? addJson(row) : addCsv(row); }

void RowText::addCsv(const CountRow& row) {
    text_ += start_;
    if (row.hour) append(text_, *row.hour);
    text_.append(",").append(CountRow::kinds.of(row.kind)) += ',';
    if (row.keyCode) append(text_, *row.keyCode);
    text_ += ',';
    if (!row.modifiers.isEmpty()) text_ += row.modifiers.name();
    text_ += ',';
    append(text_, row.count);
    text_ += '\n';
}

void RowText::addJson(const CountRow& row) {
    text_ += start_;
    if (row.hour) append(text_ += R"(,"hour":)", *row.hour);
    text_.append(R"(,"kind":")").append(CountRow::kinds.of(row.kind)) += '"';
    if (row.keyCode) append(text_ += R"(,"keycode":)", *row.keyCode);
    if (!row.modifiers.isEmpty()) text_.append(R"(,"modifiers":")").append(row.modifiers.name()) += '"';
    append(text_ += R"(,"count":)", row.count);
    text_ += "}\n";
}

}  // namespace tapcore
