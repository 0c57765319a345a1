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

TEST(BundledWords, AreWholeInEveryLanguageAndSorted) {
    EXPECT_EQ(Words::languages(bundled), (std::vector<std::string>{"de", "en", "es", "fr", "ru", "uk"}));
    const nlohmann::json english = JsonValue::parse(textOf("en"));
    for (const std::string& language : Words::languages(bundled)) {
        const nlohmann::json texts = JsonValue::parse(textOf(language));
        EXPECT_EQ(textOf(language), jsonText(texts)) << language;
        for (const auto& [key, text] : english.items()) {
            ASSERT_TRUE(texts.contains(key)) << language << " lacks " << key;
            EXPECT_EQ(namesIn(texts[key]), namesIn(text)) << language << ' ' << key;
        }
        EXPECT_EQ(texts.size(), english.size()) << language << " has keys of its own";
    }
}

/// A folder of texts in English and German.
struct Folder {
    TemporaryFolder folder;
    Folder() { write("en", R"({"a": "A {x}{y}{x", "b": "B"})"); }
    void write(const std::string& language, std::string_view text) { folder.put(language + ".json", text); }
    Words load(std::string_view language) const { return Words::load(folder.path(), language); }
};

TEST(Words, GroupTheDigitsOfANumberAsTheirLanguageDoes) {
    Folder folder;
    folder.write("ru", "{}");
    EXPECT_EQ(folder.load("ru").number(1'000'000), "1\u00a0000\u00a0000");
    EXPECT_EQ(Words::load(bundled, "en").number(std::numeric_limits<std::int64_t>::min()),
              "-9,223,372,036,854,775,808");
}

TEST(Words, FillInEachValueOnceAndKeepTheRest) {
    const Words words = Folder().load("en");
    EXPECT_EQ(words.text("a", {{"x", "{y}"}, {"y", "{x}"}}), "A {y}{x}{x");
    EXPECT_EQ(words.text("a", {{"y", ""}}), "A {x}{x");
    EXPECT_EQ(words.text("none.such", {{"such", "x"}}), "none.such");
}

TEST(Words, AreEnglishWhereALanguageLacksThem) {
    Folder folder;
    folder.write("ru", R"({"b": "Б"})");
    const Words words = folder.load("ru");
    EXPECT_EQ(words.language(), "ru");
    EXPECT_EQ(words.text("b"), "Б");
    EXPECT_EQ(words.text("a"), "A {x}{y}{x");
    for (const char* none : {"xx", "", "../en", "en/../ru", "EN"})
        EXPECT_EQ(folder.load(none).language(), "en") << none;
}

TEST(Words, NameTheFileAndTheKeyOfATextThatIsNone) {
    Folder folder;
    const std::string file = (folder.folder / "de.json").string();
    const std::pair<const char*, const char*> cases[] = {
        {"[]", "the document: not an object: []"},
        {R"({"a": 1})", "a: not a string: 1"},
    };
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
