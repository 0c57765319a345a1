#include "core/keyboard/import/keylayout/keylayout_import.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/foundation/file_io.h"
#include "core/foundation/folder_listing.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// The result of an import: "CODE: LEGENDS" a line, then what was dropped; or the error.
std::string outcome(const std::string& bytes) {
    try {
        const KeylayoutImport import = importKeylayout(bytes);
        std::string text =
            import.layout.id + " (" + import.layout.name + ") on " + *import.layout.base + "\n";
        for (const auto& [code, legends] : import.layout.legends) {
            text += std::to_string(code) + ":";
            for (const std::string& legend : legends) text += " " + legend;
            text += "\n";
        }
        for (const std::string& sentence : import.dropped) text += "dropped: " + sentence + "\n";
        return text;
    } catch (const XmlError& error) {
        return std::string("error: ") + error.what() + "\n";
    }
}

/// A file whose one key types "a", and "A" with shift.
constexpr std::string_view sample = R"(<!DOCTYPE keyboard>
<keyboard name="Sample" maxout="1">
<layouts><layout modifiers="m" mapSet="s"/></layouts>
<modifierMap id="m" defaultIndex="0">
<keyMapSelect mapIndex="0"><modifier keys=""/></keyMapSelect>
<keyMapSelect mapIndex="1"><modifier keys="anyShift caps?"/></keyMapSelect>
</modifierMap>
<keyMapSet id="s">
<keyMap index="0"><key code="0" output="a"/></keyMap>
<keyMap index="1"><key code="0" output="A"/></keyMap>
</keyMapSet>
</keyboard>
)";

/// The sample with a piece of it replaced.
std::string sampleWith(std::string_view piece, std::string_view replacement) {
    std::string text(sample);
    return text.replace(text.find(piece), piece.size(), replacement);
}

/// The sample with this before the end of its <keyboard>.
std::string sampleEndingIn(const std::string& more) {
    return sampleWith("</keyboard>", more + "</keyboard>");
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

/// The sample under entities that stand for ten of the one before, from `core` on, of which a key types the
/// last.
std::string sampleOfEntities(const std::string& core) {
    std::string entities = "<!ENTITY e0 \"" + core + "\">";
    for (int i = 1; i < 12; ++i)
        entities += "<!ENTITY e" + std::to_string(i) + " \"" +
                    repeated("&e" + std::to_string(i - 1) + ";", 10) + "\">";
    std::string text = sampleWith("keyboard>", "keyboard [" + entities + "]>");
    return text.replace(text.find("\"a\""), 3, "\"&e11;\"");
}

/// TAPPORA_REWRITE=1 writes what came out as what is wanted, to be reviewed.
TEST(KeylayoutImport, ReadsEverySampleAsItsExpectedFileSays) {
    std::size_t samples = 0;
    for (const std::string& name : namesIn(TEST_DATA "/layouts")) {
        const fs::path file = fs::path(TEST_DATA "/layouts") / name;
        if (file.extension() != ".keylayout") continue;
        fs::path expected = file;
        expected.replace_extension(".expected");
        const std::string found = outcome(readFile(file).text);
        if (std::getenv("TAPPORA_REWRITE")) writeFile(expected, found).requireSafe();
        EXPECT_EQ(found, readFile(expected).text) << name;
        ++samples;
    }
    EXPECT_GT(samples, 10);
}

TEST(KeylayoutImport, SaysWhatItMakesOfEachOddPiece) {
    const std::string legend = "sample (Sample) on qwerty\n0: a A\n";
    const struct {
        std::string_view piece, replacement;
        std::string outcome;
    } cases[] = {
        {"\"a\"", "\"lj\"", "sample (Sample) on qwerty\n0: lj A\n"},  // longer than maxout
        {"mapSet=\"s\"", "mapSet=\"t\"",
         "error: line 3, column 10: no <keyMapSet> with a key map has the id t\n"},
        {"modifiers=\"m\"", "modifiers=\"t\"", "error: line 3, column 10: no <modifierMap> has the id t\n"},
        {"code=\"0\"", "code=\"0x1F\"", "error: line 9, column 19: code: not a key code\n"},
        {"index=\"1\"", "index=\"one\"", "error: line 10, column 1: index: not an integer\n"},
        {"anyShift caps?", "rightShift  shift?", legend},
        {"anyShift caps?", "anyShift hyper",
         "sample (Sample) on qwerty\n0: a\ndropped: key maps for other modifiers, and bases: 1; keys show "
         "what they type alone and with shift\n"},
        {R"( defaultIndex="0">
<keyMapSelect mapIndex="0"><modifier keys=""/></keyMapSelect>)",
         ">", legend + "dropped: line 3: no key map is chosen without modifiers; taken for it is 0\n"},
        {R"(0">
<keyMapSelect mapIndex="0"><modifier keys=""/></keyMapSelect>
<keyMapSelect mapIndex="1"><modifier keys="anyShift caps?)",
         R"(12"><keyMapSelect mapIndex="1"><modifier keys="command)",
         "sample (Sample) on qwerty\n0: a\ndropped: line 3: no key map is chosen with shift\ndropped: line "
         "3: no key map is chosen without modifiers; taken for it is 0\ndropped: key maps for other "
         "modifiers, and bases: 1; keys show what they type alone and with shift\n"},
        {"<keyMap index=\"1\">",
         "<keyMap index=\"1\"><note>hello</note>&common;<note/><key code=\"200\" output=\"x\"/>",
         legend +
             "dropped: line 10: <note> within <keyMap> is not expected here\ndropped: line 10: text within "
             "<keyMap> is not expected here\ndropped: key codes [200]: keys that type only with shift\n"},
        {"keyboard>", "keyboard [<!ENTITY a >]>",
         "error: line 1, column 1: the entity a is declared without a text\n"},
        {"keyboard>\n<keyboard name=\"Sample\"",
         "keyboard [<!ENTITY a \"&b;\"><!ENTITY b \"&a;\">]>\n<keyboard name=\"&a;\"",
         "error: line 2, column 1: name: &a; expands too far\n"},
        {"keyboard>\n<keyboard name=\"Sample\"",
         "keyboard [<!ENTITY a SYSTEM \"file:///etc/hostname\">]>\n<keyboard name=\"&a;\"",
         "error: line 2, column 1: name: &a; refers to another file, and none is ever loaded\n"},
        {"\"a\"", "\"&nbsp;\"", "error: line 9, column 19: output: &nbsp; is not declared\n"},
        {"\"a\"", "\"fish & chips\"", "error: line 9, column 19: output: \"&\" starts no reference\n"},
        {"\"a\"", "\"&#xD800;\"", "error: line 9, column 19: output: &#xD800; is not a character\n"},
        {"\"a\"", "\"\xE9\"", "error: line 9, column 41: not UTF-8\n"},
        {"\"a\"", std::string_view("\"\0\"", 3), "error: line 9, column 41: a NUL character\n"},
        {"<!DOCTYPE keyboard>", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>",
         "error: line 1, column 1: the encoding iso-8859-1 is not read; save the file as UTF-8\n"},
        {"</layouts>", "</layout>",
         "error: line 3, column 46: not well-formed XML: start-end tags mismatch\n"},
        {"<layout modifiers=\"m\" mapSet=\"s\"/>", "", "error: line 2, column 1: no <layout>\n"},
        {sample, "<plist version=\"1.0\"><dict/></plist>",
         "error: line 1, column 1: <plist> is not a keyboard layout\n"},
        {sample, "", "error: line 1, column 1: not well-formed XML: no document element found\n"},
    };
    for (const auto& [piece, replacement, wanted] : cases)
        EXPECT_EQ(outcome(sampleWith(piece, replacement)), wanted) << replacement;
}

TEST(KeylayoutImport, KnowsEachModifierOfAMapAlone) {
    const std::string both = "sample (Sample) on qwerty\n0: a A\n";
    const std::string none =
        "sample (Sample) on qwerty\n0: a\ndropped: key maps for other modifiers, and bases: 1; keys show "
        "what "
        "they type alone and with shift\n";
    const auto shiftedBy = [](const std::string& keys) {
        return outcome(sampleWith("anyShift caps?", keys));
    };
    for (const char* keys : {"shift", "rightShift", "anyShift", "shift rightShift", "shift rightShift?"})
        EXPECT_EQ(shiftedBy(keys), both) << keys;
    for (const std::string other :
         {"option", "rightOption", "anyOption", "control", "rightControl", "anyControl", "command", "caps"}) {
        EXPECT_EQ(shiftedBy("anyShift " + other), none) << other;
        EXPECT_EQ(shiftedBy("anyShift " + other + "?"), both) << other;
        // Of two choices that fit, the first counts: without the other key that is the second here.
        EXPECT_EQ(outcome(sampleWith("<keyMapSelect mapIndex=\"0\">",
                                     "<keyMapSelect mapIndex=\"1\"><modifier keys=\"" + other +
                                         "\"/></keyMapSelect><keyMapSelect mapIndex=\"0\">")),
                  both)
            << other;
    }
}

TEST(KeylayoutImport, NamesTheLayoutByTheOptionsTheFileOrItsName) {
    const struct {
        std::string attributes;
        KeylayoutImportOptions options;
        std::string id, name;
    } cases[] = {
        {R"(name="U.S. – Mine 2")", {}, "u-s-mine-2", "U.S. – Mine 2"},
        {R"(name="Русская")", {}, "imported", "Русская"},
        {R"(name="Auto")", {}, "imported", "Auto"},
        {R"(name="Mine")", {.id = "own", .name = "My Own"}, "own", "My Own"},
        {R"(name="")", {.file = "Bépo 2.keylayout"}, "bepo-2", "Bépo 2"},
        {R"(name="Русская 2")", {.file = "Mine (ru).keylayout"}, "mine-ru", "Русская 2"},
        {R"(name="QWERTY")", {}, "qwerty-2", "QWERTY"},
        {R"(name="Bépo")", {.taken = {"bepo", "bepo-2"}}, "bepo-3", "Bépo"},
        {R"(name="Bépo")", {.id = "bepo", .taken = {"bepo"}}, "bepo", "Bépo"},
        {"", {}, "imported-layout", "Imported layout"},
    };
    for (const auto& [attributes, options, id, name] : cases) {
        const Layout layout = importKeylayout(sampleWith(R"(name="Sample")", attributes), options).layout;
        EXPECT_EQ(layout.id, id);
        EXPECT_EQ(layout.name, name);
    }
}

TEST(KeylayoutImport, BearsWhateverAFileRepeats) {
    const std::string legend = "sample (Sample) on qwerty\n0: a A\n";
    const struct {
        std::string bytes, outcome;
    } cases[] = {
        {sampleWith(R"(code="0" output="a")", R"(code="0" output="${a}")"),
         "error: line 2, column 1: no key types a letter\n"},
        {sampleEndingIn(std::string(std::size_t{16} << 20, ' ')), "error: larger than 16 MiB\n"},
        {sampleEndingIn(repeated("<a>", 200'000)),
         "error: line 12, column 600003: not well-formed XML: start-end tags mismatch\n"},
        {sampleEndingIn(repeated("<a>", 200'000) + repeated("</a>", 200'000)),
         legend + "dropped: line 12: <a> within <keyboard> is not expected here\n"},
        {sampleEndingIn(repeated("<keyMapSet id=\"s\"/>", 50'000)), legend},
        {sampleEndingIn("<layouts>" + repeated("<layout mapSet=\"s\" modifiers=\"m\"/>", 50'000) +
                        "</layouts>"),
         legend},
        {sampleOfEntities("ha"), "error: line 9, column 19: output: &e1; expands too far\n"},
        {sampleOfEntities(""), "error: line 9, column 19: output: &e1; expands too far\n"},
    };
    for (const auto& [bytes, wanted] : cases) EXPECT_EQ(outcome(bytes), wanted);
}

}  // namespace
}  // namespace tapcore
