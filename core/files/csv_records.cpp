#include "core/files/csv_records.h"

#include <algorithm>

namespace tapcore {

bool CsvRecords::next(std::vector<std::string>& fields) {
    skipEmptyLines();
    if (rest_.empty()) return false;
    line_ = nextLine_;
    fields.clear();
    takeField(fields.emplace_back());
    while (rest_.starts_with(',')) {
        rest_.remove_prefix(1);
        takeField(fields.emplace_back());
    }
    return true;
}

void CsvRecords::skipEmptyLines() {
    while (!rest_.empty() && isAtEnd()) {
        rest_.remove_prefix(rest_.front() == '\r' ? 2 : 1);
        ++nextLine_;
    }
}

void CsvRecords::takeField(std::string& field) {
    if (rest_.starts_with('"')) takeQuoted(field);
    while (!isAtEnd() && rest_.front() != ',') {
        field += rest_.front();
        rest_.remove_prefix(1);
    }
}

void CsvRecords::takeQuoted(std::string& field) {
    for (bool isFirst = true; rest_.starts_with('"'); isFirst = false) {
        if (!isFirst) field += '"';  // two of them stand for one
        rest_.remove_prefix(1);
        const std::string_view quoted = rest_.substr(0, rest_.find('"'));
        field += quoted;
        nextLine_ += static_cast<std::size_t>(std::count(quoted.begin(), quoted.end(), '\n'));
        rest_.remove_prefix(std::min(quoted.size() + 1, rest_.size()));
    }
}

}  // namespace tapcore
