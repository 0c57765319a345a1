#include "core/words/words.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "core/foundation/file_io.h"
#include "core/foundation/json_fields.h"
#include "core/words/preferred_language.h"
#include "tests/support/message_of.h"
#include "tests/support/temporary_folder.h"

namespace tapcore {
namespace {

const std::filesystem::path bundled = std::filesystem::path(RESOURCES) / "Words";

std::string textOf(const std::string& language) { return readFile(bundled / (language + ".json")).text; }

/// The names in braces, each once.
std::set<std::string> namesIn(const std::string& text) {
    std::set<std::string> names;
    for (auto open = text.find('{'); open != text.npos; open = text.find('{', open + 1))
        names.insert(text.substr(open, text.find('}', open) + 1 - open));
    return names;
}

/// All that a language's numbers of things ask for: ICU's own categories, found by counting.
std::set<std::string> categoriesOf(const std::string& language) {
    const LanguageRules rules(language);
    std::set<std::string> found = {"other"};
    for (std::int64_t count = 0; count < 200; ++count) found.insert(rules.pluralCategory(count));
    found.insert(rules.pluralCategory(1'000'000));
    return found;
}

/// What is wrong with a text beside the English one.
std::string problemOf(const nlohmann::json& text, const nlohmann::json& english,
                      const std::string& language) {
    if (text.type() != english.type()) return "is no text of the same kind";
    if (text.is_string()) return namesIn(text) == namesIn(english) ? "" : "names other values";
    std::set<std::string> categories;
    for (const auto& [category, form] : text.items()) {
        categories.insert(category);
        if (namesIn(form) != namesIn(english["other"])) return category + " names other values";
    }
    return categories == categoriesOf(language) ? "" : "has not its language's plural forms";
}

TEST(BundledWords, AreWholeInEveryLanguageAndSorted) {
    EXPECT_EQ(Words::languages(bundled), (std::vector<std::string>{"de", "en", "es", "fr", "ru", "uk"}));
    const nlohmann::json english = JsonValue::parse(textOf("en"));
    for (const std::string& language : Words::languages(bundled)) {
        const nlohmann::json texts = JsonValue::parse(textOf(language));
        EXPECT_EQ(textOf(language), jsonText(texts)) << language;
        for (const auto& [key, text] : english.items()) {
            ASSERT_TRUE(texts.contains(key)) << language << " lacks " << key;
            EXPECT_EQ(problemOf(texts[key], text, language), "") << language << ' ' << key;
        }
        EXPECT_EQ(texts.size(), english.size()) << language << " has keys of its own";
    }
}

/// A folder of texts in English and German.
struct Folder {
    TemporaryFolder folder;
    Folder() {
        write("en",
              R"({"a": "A {x}{y}{x", "b": "B", "c": {"one": "{n} c of {x}", "other": "{n} cs of {x}"}})");
    }
    void write(const std::string& language, std::string_view text) { folder.put(language + ".json", text); }
    Words load(std::string_view language) const { return Words::load(folder.path(), language); }
};

TEST(Words, CountInTheirLanguage) {
    Folder folder;
    folder.write("fr", R"({"c": {"one": "{n} un", "many": "{n} de", "other": "{n} autres"}})");
    folder.write("ru", R"({"c": {"one": "{n} one", "few": "{n} few", "many": "{n} many", "other": "{n}"}})");
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"en", {"1 c of {x}", "2 cs of {x}", "12,345 cs of {x}", "1,000,000 cs of {x}"}},
        {"fr", {"1 un", "2 autres", "12\u202f345 autres", "1\u202f000\u202f000 de"}},
        {"ru", {"1 one", "2 few", "12\u00a0345 many", "1\u00a0000\u00a0000 many"}}};
    for (const auto& [language, texts] : cases) {
        const Words words = folder.load(language);
        std::vector<std::string> found;
        for (const std::int64_t count : {1, 2, 12'345, 1'000'000}) found.push_back(words.plural("c", count));
        EXPECT_EQ(found, texts) << language;
    }
    EXPECT_EQ(Words::load(bundled, "en").number(std::numeric_limits<std::int64_t>::min()),
              "-9,223,372,036,854,775,808");
}

TEST(Words, FillInEachValueOnceAndKeepTheRest) {
    const Words words = Folder().load("en");
    EXPECT_EQ(words.text("a", {{"x", "{y}"}, {"y", "{x}"}}), "A {y}{x}{x");
    EXPECT_EQ(words.text("a", {{"y", ""}}), "A {x}{x");
    EXPECT_EQ(words.plural("c", 1, {{"x", "{n}"}}), "1 c of {n}");
    EXPECT_EQ(words.text("c"), "{n} cs of {x}");
    EXPECT_EQ(words.text("none.such", {{"such", "x"}}), "none.such");
}

TEST(Words, AreEnglishWhereALanguageLacksThem) {
    Folder folder;
    folder.write("ru", R"({"b": "Б"})");
    const Words words = folder.load("ru");
    EXPECT_EQ(words.language(), "ru");
    EXPECT_EQ(words.text("b"), "Б");
    EXPECT_EQ(words.plural("c", 21), "21 cs of {x}") << "Russian says 21 like one; English does not";
    for (const char* none : {"xx", "", "../en", "en/../ru", "EN"})
        EXPECT_EQ(folder.load(none).language(), "en") << none;
}

TEST(Words, NameTheFileAndTheKeyOfATextThatIsNone) {
    Folder folder;
    const std::string file = (folder.folder / "de.json").string();
    const std::pair<const char*, const char*> cases[] = {
        {"[]", "the document: not an object"},
        {R"({"a": 1})", "a: neither a text nor an object of plural forms"},
        {R"({"a": {"one": "x"}})", R"(a: the form "other" is missing)"},
        {R"({"a": {"other": "x", "lots": "y"}})", "a.lots: no plural category"},
        {R"({"a": {"other": null}})", "a.other: not a string"}};
    for (const auto& [text, why] : cases) {
        folder.write("de", text);
        EXPECT_EQ(messageOf<Words::FileError>([&] { folder.load("de"); }), file + ": " + why);
    }
    const TemporaryFolder empty;
    EXPECT_EQ(messageOf<Words::FileError>([&] { Words::load(empty.path(), "de"); }),
              (empty / "en.json").string() + ": No such file or directory");
}

TEST(PreferredLanguage, IsTheFirstWishThereIs) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {{{"de_AT.UTF-8@euro"}, "de"},
                                                                      {{"nl", "fr-CA", "de"}, "fr"},
                                                                      {{"pt_BR.UTF-8"}, "pt-BR"},
                                                                      {{"pt_PT"}, "en"},
                                                                      {{"", "C.UTF-8"}, "en"},
                                                                      {{"den"}, "en"},
                                                                      {{}, "en"}};
    for (const auto& [wishes, language] : cases)
        EXPECT_EQ(preferredLanguage(wishes, {"de", "en", "fr", "pt-BR"}), language)
            << testing::PrintToString(wishes);
}

}  // namespace
}  // namespace tapcore
