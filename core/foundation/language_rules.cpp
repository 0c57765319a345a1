#include "core/foundation/language_rules.h"

#include <unicode/uloc.h>
#include <unicode/unumberformatter.h>
#include <unicode/upluralrules.h>
#include <unicode/ustring.h>

#include "core/foundation/fatal.h"

namespace tapcore {
namespace {

struct Close {
    void operator()(UNumberFormatter* numbers) const { unumf_close(numbers); }
    void operator()(UFormattedNumber* number) const { unumf_closeResult(number); }
    void operator()(UPluralRules* plurals) const { uplrules_close(plurals); }
};

void require(UErrorCode status) {
    if (U_FAILURE(status)) fatal(std::string("a language's rules failed: ") + u_errorName(status));
}

/// What `write(buffer, capacity, status)` writes, as UTF-8. Numbers, categories and names of languages are
/// short.
template <class Write>
std::string textOf(Write write) {
    UChar buffer[256];
    char text[3 * 256];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t size = write(buffer, 256, &status);
    std::int32_t length = 0;
    require(status);
    u_strToUTF8(text, sizeof text, &length, buffer, size, &status);
    require(status);
    return {text, static_cast<std::size_t>(length)};
}

}  // namespace

struct LanguageRules::Implementation {
    std::unique_ptr<UNumberFormatter, Close> numbers;
    std::unique_ptr<UPluralRules, Close> plurals;

    explicit Implementation(const std::string& language) {
        UErrorCode status = U_ZERO_ERROR;
        numbers.reset(unumf_openForSkeletonAndLocale(u"", 0, language.c_str(), &status));
        plurals.reset(uplrules_open(language.c_str(), &status));
        require(status);
    }

    std::unique_ptr<UFormattedNumber, Close> format(std::int64_t value) const {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UFormattedNumber, Close> number(unumf_openResult(&status));
        unumf_formatInt(numbers.get(), value, number.get(), &status);
        require(status);
        return number;
    }
};

LanguageRules::LanguageRules(std::string_view language)
    : implementation_(std::make_shared<const Implementation>(std::string(language))) {}

std::string LanguageRules::number(std::int64_t value) const {
    const auto number = implementation_->format(value);
    return textOf([&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return unumf_resultToString(number.get(), buffer, capacity, status);
    });
}

std::string LanguageRules::pluralCategory(std::int64_t count) const {
    const auto number = implementation_->format(count);
    return textOf([&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return uplrules_selectFormatted(implementation_->plurals.get(), number.get(), buffer, capacity,
                                        status);
    });
}

std::string englishName(std::string_view language) {
    const std::string code(language);
    return textOf([&](UChar* buffer, std::int32_t capacity, UErrorCode* status) {
        return uloc_getDisplayLanguage(code.c_str(), "en", buffer, capacity, status);
    });
}

}  // namespace tapcore
