#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "core/foundation/characters.h"
#include "core/foundation/folder_listing.h"
#include "core/keyboard/catalog.h"

namespace tapcore {
namespace {

const std::string latin = "abcdefghijklmnopqrstuvwxyz";

/// The letters that each layout types without a dead key.
const std::map<std::string, std::string> alphabets = {
    {"qwerty", latin},
    {"dvorak", latin},
    {"workman", latin},
    {"colemak", latin},
    {"colemak-dh", latin},
    {"colemak-dh-matrix", latin},
    {"canary", latin},
    {"qwertz", latin + "äöüß"},
    {"azerty", latin + "àçèéù"},
    {"spanish", latin + "ñçº"},
    {"bepo", latin + "àçéèê"},
    {"neo2", latin + "äöüß"},
    {"russian", "абвгдеёжзийклмнопрстуфхцчшщъыьэюя"},
    {"ukrainian", "абвгґдеєжзиіїйклмнопрстуфхцчшщьюя"},
};

class BundledLayouts : public testing::Test {
  protected:
    static bool isTyping(std::uint16_t code) { return code <= 47 && code != 36; }

    Catalog catalog = Catalog::bundled(RESOURCES);
};

TEST_F(BundledLayouts, StandInFilesNamedByTheirIds) {
    std::vector<std::string> files;
    std::vector<std::string> wanted;
    for (const std::string& name : namesIn(RESOURCES "/Layouts")) files.push_back(name);
    for (const auto& [id, alphabet] : alphabets) {
        wanted.push_back(id + ".json");
        EXPECT_TRUE(catalog.layout(id)) << id;
    }
    EXPECT_THAT(files, testing::UnorderedElementsAreArray(wanted));
}

TEST_F(BundledLayouts, HaveEachLetterOnOneKey) {
    for (const auto& [id, alphabet] : alphabets) {
        std::multiset<std::string> letters;
        for (const auto& [code, legend] : catalog.legends(id))
            if ((isTyping(code) || code == 50) && isSingleCharacter(legend[0]) && isLetter(legend[0]))
                letters.insert(legend[0]);
        std::multiset<std::string> wanted;
        for (const std::string_view letter : characters(alphabet)) wanted.insert(std::string(letter));
        EXPECT_EQ(letters, wanted) << id;
    }
}

TEST_F(BundledLayouts, TypeEachCharacterWithOneKeyOfTheMainBlock) {
    for (const Layout& layout : catalog.layouts) {
        std::map<std::string, std::uint16_t> keys;
        for (const auto& [code, legend] : catalog.legends(layout.id))
            for (const std::string& text : legend)
                if (isTyping(code) && isSingleCharacter(text) && !keys.emplace(text, code).second)
                    ADD_FAILURE() << layout.id << ": " << text << " on " << keys[text] << " and " << code;
    }
}

TEST_F(BundledLayouts, NameOnlyWhatTheirBasesDoNot) {
    for (const Layout& layout : catalog.layouts) {
        if (!layout.base) continue;
        const Legends base = catalog.legends(*layout.base);
        for (const auto& [code, legend] : layout.legends)
            EXPECT_NE(base.at(code), legend) << layout.id << " " << code;
    }
}

}  // namespace
}  // namespace tapcore
