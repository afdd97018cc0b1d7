#include <array>
#include <latch>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "model/contract/Code.h"

namespace margindesk {
namespace {

const TCode codeMadeBeforeMain("HK0001");
const std::string emptyTextReadBeforeMain = TCode().Text();

TEST(Code, IsEqualWhenItsTextIs) {
  std::string text = "HK0700";
  const TCode code(text);
  text[2] = '9';
  EXPECT_EQ(code.Text(), "HK0700") << "it keeps a text of its own";
  EXPECT_EQ(code, TCode("HK0700"));
  EXPECT_FALSE(code == TCode(text));
  EXPECT_EQ(&code.Text(), &TCode("HK0700").Text()) << "one text in memory";
  EXPECT_EQ(codeMadeBeforeMain, TCode("HK0001"));
  EXPECT_FALSE(TCode(std::string_view("A\0B", 3)) == TCode("A"));
}

TEST(Code, IsTheSameTextWithoutRegardToTheCaseOfAsciiLetters) {
  EXPECT_TRUE(TCode("eur").SameText(TCode("EUR")));
  EXPECT_TRUE(TCode("eUr").SameText(TCode("Eur"))) << "also when the upper-case text was never a code";
  EXPECT_FALSE(TCode("eur") == TCode("EUR"));
  EXPECT_FALSE(TCode("eur").SameText(TCode("eu")));
  EXPECT_FALSE(TCode("\xC3\xA9").SameText(TCode("\xC3\x89"))) << "other letters have no case here";
  EXPECT_FALSE(TCode("a[").SameText(TCode("a{"))) << "the neighbours of the letters are none";
}

TEST(Code, TheEmptyCodeIsTheEmptyTextNumberZeroAndNobodysCaseVariant) {
  EXPECT_EQ(TCode(), TCode(""));
  EXPECT_TRUE(TCode().IsEmpty());
  EXPECT_FALSE(TCode(" ").IsEmpty());
  EXPECT_EQ(TCode("").Number(), 0U);
  EXPECT_EQ(TCode().Text(), emptyTextReadBeforeMain);
  EXPECT_TRUE(TCode().SameText(TCode("")));
  EXPECT_FALSE(TCode().SameText(TCode("a")));
}

TEST(Code, NumbersAreDense) {
  const std::uint32_t before = GetCodeCount();
  EXPECT_EQ(TCode("DENSE1").Number(), before);
  EXPECT_EQ(TCode("DENSE2").Number(), before + 1);
  EXPECT_EQ(TCode("DENSE1").Number(), before);
  TCode("dense1");
  EXPECT_EQ(GetCodeCount(), before + 3) << "one for each new text";
}

TEST(Code, ThreadsThatInternTheSameTextsGetTheSameCodes) {
  constexpr std::size_t kTexts = 2000;
  const std::uint32_t before = GetCodeCount();
  std::array<std::vector<TCode>, 4> codes;
  {
    std::latch start(codes.size());
    std::vector<std::jthread> threads;
    threads.reserve(codes.size());
    for (auto& own : codes) {
      threads.emplace_back([&own, &start] {
        own.reserve(2 * kTexts);
        start.arrive_and_wait();
        for (std::size_t i = 0; i < kTexts; ++i) own.emplace_back("thread" + std::to_string(i));
        for (std::size_t i = 0; i < kTexts; ++i) own.emplace_back("THREAD" + std::to_string(i));
      });
    }
  }
  for (const auto& own : codes) EXPECT_EQ(own, codes[0]);
  EXPECT_EQ(GetCodeCount(), before + 2 * kTexts);
  for (std::size_t i = 0; i < kTexts; ++i) EXPECT_TRUE(codes[0][i].SameText(codes[1][i + kTexts])) << i;
}

}  // namespace
}  // namespace margindesk
