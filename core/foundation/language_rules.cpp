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

std::string textOf(const UFormattedNumber* number) {
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return unumf_resultToString(number, buffer, capacity, status);
    });
}

}  // namespace

struct LanguageRules::Implementation {
    std::string language;
    std::unique_ptr<UNumberFormatter, Close> numbers;
    std::unique_ptr<UPluralRules, Close> plurals;

    explicit Implementation(std::string ofLanguage) : language(std::move(ofLanguage)) {
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
    return textOf(number.get());
}

std::string LanguageRules::number(double value, int decimals) const {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string skeleton =
        decimals > 0 ? u"." + std::u16string(static_cast<std::size_t>(decimals), u'0') : u"precision-integer";
    const std::unique_ptr<UNumberFormatter, Close> numbers(
        unumf_openForSkeletonAndLocale(skeleton.c_str(), static_cast<std::int32_t>(skeleton.size()),
                                       implementation_->language.c_str(), &status));
    const std::unique_ptr<UFormattedNumber, Close> number(unumf_openResult(&status));
    unumf_formatDouble(numbers.get(), value, number.get(), &status);
    requireIcu(status, what);
    return textOf(number.get());
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
