#include "app/common/system/zone_rules.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "core/foundation/ascii.h"

namespace tappora {
namespace {

using tapcore::isAsciiLetter;

bool isQuotable(char c) { return isAsciiLetter(c) || tapcore::isDigit(c) || c == '+' || c == '-'; }

/// Goes through a text. Each function passes over its part of the rules, and says whether it is there.
class Rules {
  public:
    explicit Rules(std::string_view text) : rest_(text) {}

    bool zone() { return name() && time(24) && (isAtEnd() || (summer() && isAtEnd())); }

  private:
    bool summer() {
        if (!name()) return false;
        if (!isAtEnd() && rest_.front() != ',' && !time(24)) return false;
        return isAtEnd() || (character(',') && change() && character(',') && change());
    }

    bool name() {
        const bool isQuoted = character('<');
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), isQuoted ? isQuotable : isAsciiLetter);
        const auto size = static_cast<std::size_t>(end - rest_.begin());
        rest_.remove_prefix(size);
        return size >= 3 && (!isQuoted || character('>'));
    }

    bool change() {
        const bool isDay =
            character('M') ? number(1, 12) && character('.') && number(1, 5) && character('.') && number(0, 6)
            : character('J') ? number(1, 365)
                             : number(0, 365);
        return isDay && (!character('/') || time(167));
    }

    bool time(unsigned mostHours) {
        (void)(character('+') || character('-'));
        if (!number(0, mostHours)) return false;
        return !character(':') || (number(0, 59) && (!character(':') || number(0, 59)));
    }

    bool number(unsigned least, unsigned most) {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return error == std::errc() && least <= value && value <= most;
    }

    bool character(char wanted) {
        if (!rest_.starts_with(wanted)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool isAtEnd() const { return rest_.empty(); }

    std::string_view rest_;
};

}  // namespace

bool isZoneRules(std::string_view text) { return Rules(text).zone(); }

}  // namespace tappora
