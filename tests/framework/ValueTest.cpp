#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <latch>
#include <locale>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "model/contract/Code.h"
#include "model/contract/Variant.h"

namespace margindesk {
namespace {

TEST(Code, IsEqualWhenItsTextIsAndTheSameTextWhenOnlyTheCaseOfAsciiLettersDiffers) {
  std::string text = "HK0700";
  const TCode code(text);
  text[2] = '9';
  EXPECT_EQ(code.Text(), "HK0700") << "it keeps a text of its own";
  EXPECT_TRUE(TCode() == TCode("") && TCode().IsEmpty() && TCode().Number() == 0 && !TCode(" ").IsEmpty());
  EXPECT_FALSE(TCode(std::string_view("A\0B", 3)) == TCode("A"));
  EXPECT_TRUE(TCode("eur").SameText(TCode("EUR")) && !(TCode("eur") == TCode("EUR")));
  EXPECT_TRUE(TCode("jPy").SameText(TCode("Jpy"))) << "also when the upper-case text was never a code";
  EXPECT_FALSE(TCode("eur").SameText(TCode("eu")) || TCode().SameText(TCode("a")));
  EXPECT_FALSE(TCode("\xC3\xA9[").SameText(TCode("\xC3\x89["))) << "other letters have no case here";
}

TEST(Code, ThreadsThatInternTheSameTextsGetTheSameDenselyNumberedCodes) {
  constexpr std::size_t kTexts = 2000;
  const std::uint32_t before = GetCodeCount();
  std::array<std::vector<TCode>, 4> codes;
  {
    std::latch start(codes.size());
    std::vector<std::jthread> threads;
    threads.reserve(codes.size());
    for (auto& own : codes) {
      threads.emplace_back([&own, &start] {
        start.arrive_and_wait();
        for (std::size_t i = 0; i < kTexts; ++i) own.emplace_back("thread" + std::to_string(i));
        for (std::size_t i = 0; i < kTexts; ++i) own.emplace_back("THREAD" + std::to_string(i));
      });
    }
  }
  for (const auto& own : codes) EXPECT_EQ(own, codes[0]);
  EXPECT_EQ(GetCodeCount(), before + 2 * kTexts) << "one number for each new text";
  for (std::size_t i = 0; i < kTexts; ++i) EXPECT_TRUE(codes[0][i].SameText(codes[1][i + kTexts])) << i;
}

TEST(Variant, EveryKindIsDistinctAndReadsAsTextAndAsANumberOrSaysThatItIsNone) {
  const struct {
    TVariant FValue;
    const char* FText;
    double FNumber;                  // -1 for none
  } cases[] = {{TVariant(), "", 0},  // unassigned is a zero, not a fault
               {TVariant::Null(), "", -1},
               {TVariant::EmptyText(), "", -1},
               {TVariant::Integer(-7), "-7", -7},
               {TVariant::Float(-7), "-7", -7},
               {TVariant::Float(1e15), "1000000000000000", 1e15},
               {TVariant::Text("-7"), "-7", -7},
               {TVariant::Text(" 12 lots"), " 12 lots", -1}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.FText);
    for (const auto& other : cases) EXPECT_EQ(each.FValue == other.FValue, &each == &other) << other.FText;
    EXPECT_EQ(each.FValue.AsText(), each.FText);
    EXPECT_EQ(each.FValue.AsFloatOr(-1), each.FNumber);
  }
  EXPECT_EQ(TVariant::Text("2.5").AsFloat(), 2.5);
  EXPECT_THROW(TVariant::Text("12 lots").AsFloat(), EConvertError);
}

TEST(NumberText, IsWrittenOutWhereAPersonWouldAndReadsBackTheSame) {
  EXPECT_EQ(FloatToText(-12345678.25), "-12345678.25");
  EXPECT_EQ(FloatToText(1e20) + " " + FloatToText(1e21), "100000000000000000000 1e+21");
  std::mt19937_64 random(1);
  for (int i = 0; i < 10000; ++i) {
    const auto value = std::bit_cast<double>(random());
    double read = 0;
    if (!std::isfinite(value)) continue;
    ASSERT_TRUE(TryTextToFloat(FloatToText(value), read) && read == value) << FloatToText(value);
  }
}

TEST(NumberText, TakesAWholeDecimalNumberAndNothingElse) {
  double value = 42;
  for (const char* text : {"", " 1", "1 ", "+1", "1,5", "1.5.", "0x10", "inf", "-nan", "1e999", "-", "."}) {
    EXPECT_FALSE(TryTextToFloat(text, value)) << text;
  }
  EXPECT_EQ(value, 42) << "a refused text leaves the value alone";
  EXPECT_TRUE(TryTextToFloat("-.5e-1", value) && value == -0.05);
  std::int32_t number = 42;
  for (const char* text : {"", "1 ", "+1", "1.0", "2147483648"}) EXPECT_FALSE(TryTextToInteger(text, number));
  EXPECT_TRUE(number == 42 && TryTextToInteger("-2147483648", number) && number < 0);
}

TEST(NumberText, IsTheSameInAProcessWhoseLocaleWritesDecimalCommas) {
  struct TCommas : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale(), new TCommas));
  std::setlocale(LC_NUMERIC, "de_DE.utf8");  // where the machine has it
  double value = 0;
  EXPECT_EQ(FloatToText(1234567.5) + " " + IntegerToText(1234567), "1234567.5 1234567");
  EXPECT_TRUE(TryTextToFloat("1234567.5", value) && value == 1234567.5);
  std::locale::global(before);
  std::setlocale(LC_NUMERIC, "C");
}

TEST(AsciiText, ChangesAndComparesTheLettersAToZAlone) {
  EXPECT_EQ(UpperCaseText("az@[`{ \xC3\xA9"), "AZ@[`{ \xC3\xA9");
  EXPECT_TRUE(SameTextIgnoringCase("CashIn/Out", "cASHiN/oUT") && !SameTextIgnoringCase("@", "`"));
  EXPECT_EQ(TrimText(" a \xE4\xB8\xAD\x01\r\n"), "a \xE4\xB8\xAD") << "bytes above ASCII are no blanks";
}

}  // namespace
}  // namespace margindesk
