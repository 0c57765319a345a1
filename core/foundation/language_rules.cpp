#include "core/foundation/language_rules.h"

#include <unicode/uloc.h>
#include <unicode/unumberformatter.h>
#include <unicode/upluralrules.h>

#include "core/foundation/icu.h"

namespace tapcore {
namespace {

struct Close {
    void operator()(UNumberFormatter* numbers) const { unumf_close(numbers); }
    void operator()(UFormattedNumber* number) const { unumf_closeResult(number); }
    void operator()(UPluralRules* plurals) const { uplrules_close(plurals); }
};

constexpr std::string_view what = "a language's rules failed";

}  // namespace

struct LanguageRules::Implementation {
    std::unique_ptr<UNumberFormatter, Close> numbers;
    std::unique_ptr<UPluralRules, Close> plurals;

    explicit Implementation(const std::string& language) {
        UErrorCode status = U_ZERO_ERROR;
        numbers.reset(unumf_openForSkeletonAndLocale(u"", 0, language.c_str(), &status));
        plurals.reset(uplrules_open(language.c_str(), &status));
        requireIcu(status, what);
    }

    std::unique_ptr<UFormattedNumber, Close> format(std::int64_t value) const {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UFormattedNumber, Close> number(unumf_openResult(&status));
        unumf_formatInt(numbers.get(), value, number.get(), &status);
        requireIcu(status, what);
        return number;
    }
};

LanguageRules::LanguageRules(std::string_view language)
    : implementation_(std::make_shared<const Implementation>(std::string(language))) {}

std::string LanguageRules::number(std::int64_t value) const {
    const auto number = implementation_->format(value);
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return unumf_resultToString(number.get(), buffer, capacity, status);
    });
}

std::string LanguageRules::pluralCategory(std::int64_t count) const {
    const auto number = implementation_->format(count);
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return uplrules_selectFormatted(implementation_->plurals.get(), number.get(), buffer, capacity,
                                        status);
    });
}

std::string englishName(std::string_view language) {
    const std::string code(language);
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return uloc_getDisplayLanguage(code.c_str(), "en", buffer, capacity, status);
    });
}

}  // namespace tapcore
