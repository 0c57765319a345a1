#include "app/common/folder/language.h"

#include <algorithm>
#include <filesystem>

#include "app/common/folder/settings.h"
#include "app/common/program.h"
#include "app/common/system/environment.h"
#include "app/common/system/resources.h"
#include "core/foundation/text_pieces.h"
#include "core/words/preferred_language.h"

namespace tappora {
namespace {

using tapcore::Words;

constexpr std::string_view system = "system";

std::filesystem::path folder(const Environment& environment) { return resourceFolder(environment) / "Words"; }

/// Without a locale, or in that of machines, LANGUAGE has no say.
bool isOfMachines(std::string_view locale) {
    return locale.empty() || locale == "POSIX" || locale == "C" || locale.starts_with("C.");
}

/// What the locale is in a respect, as the C library has it.
std::string localeOf(const char* category, const Environment& environment) {
    for (const char* name : {"LC_ALL", category, "LANG"})
        if (const auto value = environment.variable(name); value && !value->empty()) return *value;
    return "";
}

std::vector<std::string> wishes(const Environment& environment) {
    const std::string locale = messageLocale(environment);
    if (isOfMachines(locale)) return {};
    std::vector<std::string> names;
    const std::string list = environment.variable("LANGUAGE").value_or("");
    for (std::string_view rest = list; !rest.empty();) names.emplace_back(tapcore::takePiece(rest, ':'));
    names.push_back(locale);
    return names;
}

}  // namespace

std::string messageLocale(const Environment& environment) { return localeOf("LC_MESSAGES", environment); }

std::string paperLocale(const Environment& environment) {
    const std::string locale = localeOf("LC_PAPER", environment);
    return locale.substr(0, locale.find_first_of(".@"));
}

std::string dateLocale(const Words& words, const Environment& environment) {
    const std::string own = messageLocale(environment);
    const std::string locale = own.substr(0, own.find_first_of(".@"));
    const std::string& language = words.language();
    const bool isOfIt = locale == language || locale.starts_with(language + "_");
    return isOfIt ? locale : language;
}

std::string systemLanguage(const Environment& environment, const std::vector<std::string>& available) {
    return tapcore::preferredLanguage(wishes(environment), available);
}

std::string chosenLanguage(const Environment& environment) {
    auto available = Words::languages(folder(environment));
    const Settings settings = Settings::read(environment);
    const std::string set = settings.text(languageKey).value_or(std::string(system));
    if (std::find(available.begin(), available.end(), set) != available.end()) return set;
    std::string language = systemLanguage(environment, available);
    available.insert(available.begin(), std::string(system));
    if (set != system) settings.warnOf(languageKey, noSuch("language", set, available));
    return language;
}

Words chosenWords(const Environment& environment) {
    return wordsIn(chosenLanguage(environment), environment);
}

Words systemWords(const Environment& environment) {
    return wordsIn(systemLanguage(environment, Words::languages(folder(environment))), environment);
}

Words wordsIn(std::string_view language, const Environment& environment) try {
    return Words::load(folder(environment), language);
} catch (const Words::FileError& error) {
    throw Failure("texts", error.what());
}

}  // namespace tappora
