#include <random>

#include <gtest/gtest.h>

#include "model/CommaText.h"

namespace margindesk {
namespace {

using TItems = std::vector<std::string>;

TEST(CommaText, SplitsAtCommasAndAtBlanksOutsideQuotes) {
  EXPECT_EQ(SplitCommaText(""), TItems{});
  EXPECT_EQ(SplitCommaText("a,b"), (TItems{"a", "b"}));
  EXPECT_EQ(SplitCommaText(" a , b\tc\r\nd "), (TItems{"a", "b", "c", "d"}));
  EXPECT_EQ(SplitCommaText("a,,b,"), (TItems{"a", "", "b", ""}));
  EXPECT_EQ(SplitCommaText(R"("a,b" "c ""d""",e)"), (TItems{"a,b", "c \"d\"", "e"}));
  EXPECT_EQ(SplitCommaText(R"(x="1,2")"), (TItems{"x=\"1", "2\""}));
  EXPECT_EQ(SplitCommaText("\"never closed, a"), (TItems{"never closed, a"}));
}

TEST(CommaText, WhatIsJoinedSplitsIntoTheSameItems) {
  EXPECT_EQ(JoinCommaText({"DefaultColumn=PL,1,80;", "Account="}), "\"DefaultColumn=PL,1,80;\",Account=");
  EXPECT_EQ(JoinCommaText({""}), "\"\"");
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    TItems items(random() % 5);
    for (std::string& item : items) {
      item.resize(random() % 6);
      for (char& letter : item) letter = ",\" \ta\xE5"[random() % 6];
    }
    EXPECT_EQ(SplitCommaText(JoinCommaText(items)), items) << JoinCommaText(items);
  }
}

}  // namespace
}  // namespace margindesk
