#include "app/common/folder/practice_language.h"

#include <algorithm>

#include "app/common/folder/language.h"
#include "app/common/program.h"
#include "app/common/system/resources.h"
#include "core/practice/letter_model.h"

namespace tappora {

using tapcore::LetterModel;

std::string practiceLanguage(const Settings& settings, const Environment& environment,
                             const std::vector<std::string>& available) {
    const auto set = settings.text(practiceLanguageKey);
    if (set && std::find(available.begin(), available.end(), *set) != available.end()) return *set;
    if (set) settings.warnOf(practiceLanguageKey, noSuch("language", *set, available));
    return systemLanguage(environment, available);
}

TypedLanguage typedLanguage(const std::optional<std::string>& named, const Environment& environment) {
    const auto folder = resourceFolder(environment) / "Practice";
    const auto available = LetterModel::available(folder);
    if (named && std::find(available.begin(), available.end(), *named) == available.end())
        throw UsageError("--language: " + noSuch("language", *named, available));
    const std::string code =
        named ? *named : practiceLanguage(Settings::read(environment), environment, available);
    const auto model = LetterModel::load(code, folder);
    return {code, model ? model->order : std::vector<std::string>()};
}

}  // namespace tappora
