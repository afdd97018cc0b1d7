#include <array>
#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <random>

#include <gtest/gtest.h>

#include "model/contract/Variant.h"

namespace margindesk {
namespace {

TEST(Variant, EveryKindIsDistinctFromTheOthers) {
  const std::array values{TVariant(),         TVariant::Null(),      TVariant::Integer(0),
                          TVariant::Float(0), TVariant::EmptyText(), TVariant::Text("0")};
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < values.size(); ++j)
      EXPECT_EQ(values[i] == values[j], i == j) << i << ' ' << j;
  }
  EXPECT_TRUE(values[0].IsUnassigned() && values[1].IsNull() && values[4].IsText());
  EXPECT_TRUE(values[2].IsInteger() && values[2].IsNumber() && !values[2].IsFloat());
  EXPECT_TRUE(values[3].IsFloat() && values[3].IsNumber() && !values[3].IsInteger());
}

TEST(Variant, ReadsAsANumberOrSaysThatItIsNone) {
  EXPECT_EQ(TVariant().AsFloat(), 0);
  EXPECT_EQ(TVariant::Integer(-7).AsFloat(), -7);
  EXPECT_EQ(TVariant::Float(0.1).AsFloat(), 0.1);
  EXPECT_EQ(TVariant::Text("-1234.5").AsFloat(), -1234.5);
  for (const TVariant& value : {TVariant::Null(), TVariant::EmptyText(), TVariant::Text("12 lots")}) {
    EXPECT_THROW(value.AsFloat(), EConvertError) << value.AsText();
    EXPECT_EQ(value.AsFloatOr(-1), -1) << value.AsText();
  }
  EXPECT_EQ(TVariant::Text("2.5").AsFloatOr(-1), 2.5);
  EXPECT_EQ(TVariant().AsFloatOr(-1), 0) << "unassigned is a zero, not a fault";
}

TEST(Variant, ReadsAsTheTextHeldOrTheNumbersDigits) {
  EXPECT_EQ(TVariant().AsText(), "");
  EXPECT_EQ(TVariant::Null().AsText(), "");
  EXPECT_EQ(TVariant::Text(" a ").AsText(), " a ");
  EXPECT_EQ(TVariant::Integer(std::numeric_limits<std::int32_t>::min()).AsText(), "-2147483648");
  EXPECT_EQ(TVariant::Float(1e15).AsText(), "1000000000000000");
}

TEST(NumberText, IsWrittenOutWhereAPersonWouldAndReadsBackTheSame) {
  EXPECT_EQ(FloatToText(0), "0");
  EXPECT_EQ(FloatToText(-12345678.25), "-12345678.25");
  EXPECT_EQ(FloatToText(0.1), "0.1");
  EXPECT_EQ(FloatToText(0.00001), "0.00001");
  EXPECT_EQ(FloatToText(1e20), "100000000000000000000");
  EXPECT_EQ(FloatToText(1e21), "1e+21");
  EXPECT_EQ(FloatToText(1e-7), "1e-07");

  std::mt19937_64 random(1);
  for (int i = 0; i < 100000; ++i) {
    const auto value = std::bit_cast<double>(random());
    double read = 0;
    if (!std::isfinite(value)) continue;
    ASSERT_TRUE(TryTextToFloat(FloatToText(value), read)) << FloatToText(value);
    ASSERT_EQ(read, value);
  }
}

TEST(NumberText, TakesAWholeDecimalNumberAndNothingElse) {
  double value = 42;
  for (const char* text : {"", " 1", "1 ", "+1", "1,5", "1.5.", "0x10", "inf", "-nan", "1e999", "-", "."}) {
    EXPECT_FALSE(TryTextToFloat(text, value)) << text;
  }
  EXPECT_EQ(value, 42) << "a refused text leaves the value alone";
  EXPECT_TRUE(TryTextToFloat("-.5e-1", value));
  EXPECT_EQ(value, -0.05);

  std::int32_t number = 42;
  for (const char* text : {"", " 1", "1 ", "+1", "1.0", "2147483648", "-2147483649", "1e3", "-"}) {
    EXPECT_FALSE(TryTextToInteger(text, number)) << text;
  }
  EXPECT_EQ(number, 42);
  EXPECT_TRUE(TryTextToInteger("-2147483648", number));
  EXPECT_EQ(number, std::numeric_limits<std::int32_t>::min());
}

// A process whose locale writes decimal commas and groups digits.
class NumberTextUnderAForeignLocale : public testing::Test {
 public:
  struct TCommas : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  NumberTextUnderAForeignLocale() {
    for (const char* name : {"de_DE.utf8", "fr_FR.utf8"}) {  // where the machine has one
      if (std::setlocale(LC_NUMERIC, name) != nullptr) break;
    }
  }
  ~NumberTextUnderAForeignLocale() override {
    std::locale::global(FLocaleBefore);
    std::setlocale(LC_NUMERIC, "C");
  }

 private:
  std::locale FLocaleBefore = std::locale::global(std::locale(std::locale(), new TCommas));
};

TEST_F(NumberTextUnderAForeignLocale, IsTheSame) {
  double value = 0;
  EXPECT_EQ(FloatToText(1234567.5), "1234567.5");
  EXPECT_EQ(IntegerToText(1234567), "1234567");
  EXPECT_TRUE(TryTextToFloat("1234567.5", value));
  EXPECT_FALSE(TryTextToFloat("1,5", value));
  EXPECT_EQ(TVariant::Text("0.25").AsFloat(), 0.25);
}

TEST(AsciiText, ChangesAndComparesTheLettersAToZAlone) {
  EXPECT_EQ(UpperCaseText("az@[`{ \xC3\xA9"), "AZ@[`{ \xC3\xA9");
  EXPECT_TRUE(SameTextIgnoringCase("CashIn/Out", "cASHiN/oUT"));
  EXPECT_FALSE(SameTextIgnoringCase("@", "`"));
  EXPECT_FALSE(SameTextIgnoringCase("Cash", "CashIn"));
  EXPECT_EQ(TrimText("\t \n"), "");
  EXPECT_EQ(TrimText(" a b\x01\r\n"), "a b");
  EXPECT_EQ(TrimText("\xE4\xB8\xAD "), "\xE4\xB8\xAD") << "bytes above ASCII are no blanks";
}

}  // namespace
}  // namespace margindesk
