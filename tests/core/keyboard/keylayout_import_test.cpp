#include "core/keyboard/keylayout_import.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/foundation/file_io.h"

namespace tapcore {
namespace {

namespace fs = std::filesystem;

/// What an import came to: "CODE: LEGENDS" a line, then what was dropped, or why there is none.
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

/// A file whose one key types "a", with these attributes of its <keyboard> and this between its elements.
std::string fileWith(const std::string& attributes, const std::string& more = "") {
    return "<keyboard " + attributes +
           "><layouts><layout mapSet=\"s\" modifiers=\"m\"/></layouts><modifierMap id=\"m\" "
           "defaultIndex=\"0\"/>" +
           "<keyMapSet id=\"s\"><keyMap index=\"0\"><key code=\"0\" output=\"a\"/></keyMap></keyMapSet>" +
           more + "</keyboard>";
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

/// TAPPORA_REWRITE=1 writes what came out as what is wanted, to be reviewed.
TEST(KeylayoutImport, ReadsEverySampleAsItsExpectedFileSays) {
    std::size_t samples = 0;
    for (const std::string& name : namesIn(TEST_DATA "/layouts")) {
        const fs::path sample = fs::path(TEST_DATA "/layouts") / name;
        if (sample.extension() != ".keylayout") continue;
        fs::path expected = sample;
        expected.replace_extension(".expected");
        const std::string found = outcome(readFile(sample).text);
        if (std::getenv("TAPPORA_REWRITE")) writeFile(expected, found);
        EXPECT_EQ(found, readFile(expected).text) << name;
        ++samples;
    }
    EXPECT_GT(samples, 40);
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
        {R"(name="")", {.file = "Bépo 2.keylayout"}, "b-po-2", "Bépo 2"},
        {"", {}, "imported-layout", "Imported layout"},
    };
    for (const auto& [attributes, options, id, name] : cases) {
        const Layout layout = importKeylayout(fileWith(attributes), options).layout;
        EXPECT_EQ(layout.id, id);
        EXPECT_EQ(layout.name, name);
    }
}

TEST(KeylayoutImport, BearsWhateverAFileRepeats) {
    const std::string legend = "imported-layout (Imported layout) on qwerty\n0: a\n";
    const struct {
        std::string bytes, outcome;
    } cases[] = {
        {fileWith("", std::string(std::size_t{16} << 20, ' ')), "error: larger than 16 MiB\n"},
        {fileWith("", repeated("<a>", 200'000)),
         "error: line 1, column 600188: not well-formed XML: start-end tags mismatch\n"},
        {fileWith("", repeated("<a>", 200'000) + repeated("</a>", 200'000)),
         legend + "dropped: line 1: <a> within <keyboard> means nothing\n"},
        {fileWith("", repeated("<keyMapSet id=\"s\"/>", 50'000)), legend},
        {fileWith("",
                  "<layouts>" + repeated("<layout mapSet=\"s\" modifiers=\"m\"/>", 50'000) + "</layouts>"),
         legend},
    };
    for (const auto& [bytes, wanted] : cases) EXPECT_EQ(outcome(bytes), wanted);
}

}  // namespace
}  // namespace tapcore
