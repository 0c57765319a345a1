#include "core/files/text_table.h"

#include <gtest/gtest.h>

namespace tapcore {
namespace {

const TextTable shortcuts{{"key", "count"}, {false, true}, {{"⌘S", "12"}, {"tab|new\nline", "12345"}}};

TEST(TextTable, RendersAlignedColumnsInBothFormats) {
    EXPECT_EQ(shortcuts.render(FileFormat::markdown),
              "| key          | count |\n"
              "| ------------ | ----: |\n"
              "| ⌘S           |    12 |\n"
              "| tab new line | 12345 |\n");
    EXPECT_EQ(shortcuts.render(FileFormat::org),
              "| key          | count |\n"
              "|--------------+-------|\n"
              "| ⌘S           |    12 |\n"
              "| tab new line | 12345 |\n");
}

}  // namespace
}  // namespace tapcore
