#include "core/foundation/language_rules.h"

#include <unicode/uloc.h>
#include <unicode/unumberformatter.h>

#include "core/foundation/icu.h"
#include "core/foundation/owned.h"

namespace tapcore {
namespace {

using Formatter = Owned<UNumberFormatter, unumf_close>;
using Formatted = Owned<UFormattedNumber, unumf_closeResult>;

constexpr std::string_view what = "a language's rules failed";

std::string textOf(const UFormattedNumber* number) {
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return unumf_resultToString(number, buffer, capacity, status);
    });
}

}  // namespace

struct LanguageRules::Implementation {
    std::string language;
    Formatter numbers;

    explicit Implementation(std::string ofLanguage)
        : language(isKnownLocale(ofLanguage.c_str()) ? std::move(ofLanguage) : "en_US_POSIX") {
        UErrorCode status = U_ZERO_ERROR;
        numbers.reset(unumf_openForSkeletonAndLocale(u"", 0, language.c_str(), &status));
        requireIcu(status, what);
    }
};

LanguageRules::LanguageRules(std::string_view language)
    : implementation_(std::make_shared<const Implementation>(std::string(language))) {}

std::string LanguageRules::number(std::int64_t value) const {
    UErrorCode status = U_ZERO_ERROR;
    const Formatted number(unumf_openResult(&status));
    unumf_formatInt(implementation_->numbers.get(), value, number.get(), &status);
    requireIcu(status, what);
    return textOf(number.get());
}

std::string LanguageRules::number(double value, int decimals) const {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string skeleton =
        decimals > 0 ? u"." + std::u16string(static_cast<std::size_t>(decimals), u'0') : u"precision-integer";
    const Formatter numbers(unumf_openForSkeletonAndLocale(skeleton.c_str(),
                                                           static_cast<std::int32_t>(skeleton.size()),
                                                           implementation_->language.c_str(), &status));
    const Formatted number(unumf_openResult(&status));
    unumf_formatDouble(numbers.get(), value, number.get(), &status);
    requireIcu(status, what);
    return textOf(number.get());
}

std::string englishName(std::string_view language) {
    const std::string code(language);
    return icuText(what, [&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return uloc_getDisplayLanguage(code.c_str(), "en", buffer, capacity, status);
    });
}

}  // namespace tapcore
