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

}  // namespace
}  // namespace tapcore
