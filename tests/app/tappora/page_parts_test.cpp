#include "app/tappora/page_parts.h"

#include <gtest/gtest.h>

namespace tappora {
namespace {

TEST(PageParts, EscapeTextsOnce) {
    EXPECT_EQ(escaped("a < b & \"c\""), "a &lt; b &amp; &quot;c&quot;");
    const PageTable table{.caption = "Keys & more",
                          .header = {{"Key"}, {"Presses", true}},
                          .rows = {{{"<"}, {"1,200", true}}, {{"⏎"}, {"7", true}}}};
    EXPECT_EQ("\n" + html(table), R"html(
<div class="scroll" tabindex="0" role="group" aria-label="Keys &amp; more"><table>
<caption>Keys &amp; more</caption>
<thead><tr><th scope="col">Key</th><th scope="col" class="number">Presses</th></tr></thead>
<tbody>
<tr><th scope="row">&lt;</th><td class="number">1,200</td></tr>
<tr><th scope="row">⏎</th><td class="number">7</td></tr>
</tbody></table></div>
)html");
    const auto words = tapcore::Words::load(RESOURCES "/Words", "en");
    EXPECT_EQ(behindButton(table, words),
              "<details><summary>As a table</summary>\n" + html(table) + "</details>\n");
}

TEST(PageParts, LeaveOutSectionsWithoutContent) {
    EXPECT_EQ(section("keys", "Keys", ""), "");
    EXPECT_EQ(section("keys", "Keys & shortcuts", "<p>1</p>\n"),
              "<section aria-labelledby=\"keys\"><h2 id=\"keys\">Keys &amp; "
              "shortcuts</h2>\n<p>1</p>\n</section>\n");
}

}  // namespace
}  // namespace tappora
