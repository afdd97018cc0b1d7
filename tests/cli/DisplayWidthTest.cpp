#include <gtest/gtest.h>

#include "terminal/cli/DisplayWidth.h"

namespace margindesk {

namespace {

TEST(DisplayWidth, CountsWideCharactersTwiceAndMarksNotAtAll) {
  EXPECT_EQ(GetDisplayWidth(""), 0U);
  EXPECT_EQ(GetDisplayWidth("Cash In/Out"), 11U);
  EXPECT_EQ(GetDisplayWidth("總計(港元)"), 10U);
  EXPECT_EQ(GetDisplayWidth("范例（香港），「乙」"), 20U);
  EXPECT_EQ(GetDisplayWidth("カブ 한국 𠮷"), 12U);
  EXPECT_EQ(GetDisplayWidth("Zoë £ € ½ –"), 11U);
  EXPECT_EQ(GetDisplayWidth("Zoe\u0308"), 3U);
  EXPECT_EQ(GetDisplayWidth("\u200Ba\uFEFF"), 1U);
}

TEST(DisplayWidth, TellsTheEndsOfTheRangesApart) {
  EXPECT_EQ(GetDisplayWidth("\u10FF\u1100"), 3U);
  EXPECT_EQ(GetDisplayWidth("\u4DFF\u4E00\u9FFF"), 5U);  // a hexagram is narrow
  EXPECT_EQ(GetDisplayWidth("\uFF00\uFF01\uFF60\uFF61"), 6U);
  EXPECT_EQ(GetDisplayWidth("\U0003FFFD\U0003FFFE"), 3U);
}

TEST(DisplayWidth, MakesAnyTextOneReadableLine) {
  EXPECT_EQ(MakeOneLine("港元\n\t\x1b[31m"), "港元   [31m");
  EXPECT_EQ(MakeOneLine("a\xC2\x9B"
                        "b\u2028c"),
            "a b c");
  EXPECT_EQ(MakeOneLine("bad\xFF\xE6."), "bad??.");
}

}  // namespace

}  // namespace margindesk
