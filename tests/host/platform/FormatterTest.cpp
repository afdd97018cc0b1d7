#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "host/services/ConfigManager.h"
#include "host/services/Formatter.h"
#include "model/contract/Variant.h"

namespace margindesk {
namespace {

TEST(Decimals, AreRoundedHalfAwayFromZeroOnTheDigitsThatTheNumberShows) {
  struct TCase {
    double FValue;
    std::int32_t FDecimals;
    const char* FText;
  };
  for (const TCase& example : {
           TCase{1.005, 2, "1.01"},  // in binary just below the half
           {-1.005, 2, "-1.01"},
           {2.675, 2, "2.68"},
           {0.285, 2, "0.29"},
           {1.115, 2, "1.12"},
           {0.5, 0, "1"},
           {1.5, 0, "2"},
           {2.5, 0, "3"},
           {-2.5, 0, "-3"},
           {0.49999999999999994, 0, "0"},
           {0.05, 1, "0.1"},
           {0.0049, 2, "0.00"},
           {0.0051, 2, "0.01"},
           {0.00051, 2, "0.00"},
           {9.995, 2, "10.00"},
           {9.994, 2, "9.99"},
           {0.995, 2, "1.00"},
           {99.5, 0, "100"},
           {999999.995, 2, "1,000,000.00"},
           {1234567.891, 2, "1,234,567.89"},
           {-123456.0, 2, "-123,456.00"},
           {-123.0, 0, "-123"},
           {1000.0, 0, "1,000"},
           {100.0, 8, "100.00000000"},
           {0.1 + 0.2, 15, "0.300000000000000"},
           {0.1 + 0.2, 99, "0.300000000000000"},
           {12.5, -4, "13"},
           {1e21, 2, "1,000,000,000,000,000,000,000.00"},
           {1e-9, 8, "0.00000000"},
           {6e-9, 8, "0.00000001"},
           {4503599627370497.5, 0, "4,503,599,627,370,498"},
           {0.0, 2, "0.00"},
           {-0.0, 2, "0.00"},
           {-0.004, 2, "0.00"},
           {-0.005, 2, "-0.01"},
           {-1e-300, 2, "0.00"},
           {std::numeric_limits<double>::denorm_min(), 2, "0.00"},
           {std::numeric_limits<double>::infinity(), 2, ""},
           {-std::numeric_limits<double>::infinity(), 2, ""},
           {std::numeric_limits<double>::quiet_NaN(), 2, ""},
       }) {
    EXPECT_EQ(FormatDecimal(example.FValue, example.FDecimals, true, true), example.FText)
        << FloatToText(example.FValue) << " with " << example.FDecimals;
  }
}

TEST(Decimals, FitTheLargestNumberWhole) {
  const std::string text = FormatDecimal(-std::numeric_limits<double>::max(), 15, true, true);
  EXPECT_EQ(text.size(), 1U + 309U + 102U + 1U + 15U);
  EXPECT_EQ(text.substr(0, 24), "-179,769,313,486,231,570");
  EXPECT_EQ(text.substr(text.size() - 20), ",000.000000000000000");
}

TEST(Decimals, DropTrailingZerosWhenToldSo) {
  struct TCase {
    double FValue;
    const char* FText;
  };
  for (const TCase& example : {TCase{1.5, "1.5"},
                               {2.0, "2"},
                               {1.2004, "1.2"},
                               {1.2996, "1.3"},
                               {0.0, "0"},
                               {-0.0001, "0"},
                               {1200.0, "1200"},
                               {0.9996, "1"},
                               {-0.05, "-0.05"},
                               {0.001, "0.001"},
                               {0.0104, "0.01"}}) {
    EXPECT_EQ(FormatDecimal(example.FValue, 3, false, false), example.FText) << example.FValue;
  }
}

TEST(Decimals, AgreeWithWholeNumberArithmetic) {
  std::mt19937_64 random(20240229);
  for (int i = 0; i < 100'000; ++i) {
    const auto tenThousandths = static_cast<std::int64_t>(random() >> (15 + random() % 45));
    const std::string digits = std::to_string(tenThousandths);
    const std::string padded = std::string(digits.size() < 5 ? 5 - digits.size() : 0, '0') + digits;
    double value = 0;
    ASSERT_TRUE(
        TryTextToFloat(padded.substr(0, padded.size() - 4) + "." + padded.substr(padded.size() - 4), value));
    if (tenThousandths > 900'000'000'000'000) continue;  // more digits than a double keeps
    const std::string cents = std::to_string((tenThousandths + 50) / 100);
    const std::string all = std::string(cents.size() < 3 ? 3 - cents.size() : 0, '0') + cents;
    ASSERT_EQ(FormatDecimal(value, 2, true, false),
              all.substr(0, all.size() - 2) + "." + all.substr(all.size() - 2));
  }
}

class Formatter : public testing::Test {
 protected:
  void Set(std::string_view key, std::string_view value) {
    FConfig.WriteString(FConfig.GetUserSection(), key, value, true);
  }

  TConfigManager FConfig{"ann"};
  const TCode FTencent{"00700"};
  TFormatter FFormatter{FConfig, [this](TCode symbol) { return symbol == FTencent ? 2 : -1; }};
};

TEST_F(Formatter, ShowsEachKindInItsOwnDecimalsWhileTheUserHasSetNone) {
  FConfig.WriteString("User.bob", "AmountPrecision", "5", true);  // somebody else
  EXPECT_EQ(FFormatter.FormatValue(1234.5, kFormatAmount, TCode(), true), "1,234.50");
  EXPECT_EQ(FFormatter.FormatValue(1234.5, kFormatAmount, TCode(), false), "1234.50");
  EXPECT_EQ(FFormatter.FormatValue(1000, kFormatQuantity, TCode(), true), "1,000");
  EXPECT_EQ(FFormatter.FormatValue(12.3456, kFormatQuantity, TCode(), true), "12.3456");
  EXPECT_EQ(FFormatter.FormatValue(7.8, kFormatRatio, TCode(), false), "7.800000");
  EXPECT_EQ(FFormatter.FormatValue(149.996, kFormatMarginLevel, TCode(), false), "150.00");
  EXPECT_EQ(FFormatter.FormatValue(321.4, kFormatPrice, FTencent, true), "321.40");
  EXPECT_EQ(FFormatter.FormatValue(321.4, kFormatPrice, TCode("XYZ"), true), "321.400");
  EXPECT_EQ(FFormatter.FormatAveragePrice(10.0 / 3, true), "3.3333");
  EXPECT_EQ(FFormatter.FormatNumber(1234.25, -1, false), "1234.25");
  EXPECT_EQ(FFormatter.FormatNumber(1234.25, 1, true), "1,234.3");
}

TEST_F(Formatter, FollowsTheUsersDecimalsAtOnceAndFallsBackFromUnreadableOnes) {
  struct TCase {
    const char* FPrecision;
    const char* FZeros;
    const char* FText;
  };
  const auto expectTexts = [this](const char* precisionKey, const char* zerosKey,
                                  std::initializer_list<TCase> cases, const auto& format) {
    for (const TCase& example : cases) {
      Set(precisionKey, example.FPrecision);
      Set(zerosKey, example.FZeros);
      EXPECT_EQ(format(), example.FText)
          << precisionKey << " '" << example.FPrecision << "' '" << example.FZeros << "'";
    }
  };
  expectTexts("AmountPrecision", "AmountDecimal",
              {{"4", "Y", "1,234.5000"},
               {"4", "", "1,234.5000"},
               {"4", "N", "1,234.5"},
               {"0", "N", "1,235"},
               {"8", "y", "1,234.50000000"},
               {"9", "", "1,234.50"},
               {"-1", "", "1,234.50"},
               {"two", "", "1,234.50"},
               {"", "N", "1,234.5"},
               {"", "", "1,234.50"}},
              [this] { return FFormatter.FormatValue(1234.5, kFormatAmount, TCode(), true); });
  expectTexts("QtyPrecision", "QtyDecimal", {{"2", "Y", "10.00"}, {"2", "N", "10"}, {"", "Y", "10"}},
              [this] { return FFormatter.FormatValue(10, kFormatQuantity, TCode(), true); });
  expectTexts("QuotedPricePrecision", "QuotedPriceDecimal",
              {{"1", "Y", "8.0"}, {"", "N", "8"}, {"", "", "8.00"}},
              [this] { return FFormatter.FormatValue(8, kFormatPrice, FTencent, true); });
  expectTexts("CurrencyPrecision", "CurrencyDecimal", {{"3", "Y", "7.800"}, {"3", "N", "7.8"}},
              [this] { return FFormatter.FormatValue(7.8, kFormatRatio, TCode(), false); });
  expectTexts("DefaultPrecision", "DefaultDecimal",
              {{"1", "Y", "5.0 5.0"}, {"1", "N", "5 5"}, {"", "", "5.0000 5"}}, [this] {
                return FFormatter.FormatAveragePrice(5, false) + " " + FFormatter.FormatNumber(5, -1, false);
              });
}

TEST_F(Formatter, DoesNotLookAtALocale) {
  struct TCommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new TCommaPoint));
  const std::string named = std::setlocale(LC_ALL, nullptr);
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  }
  EXPECT_EQ(FFormatter.FormatValue(1234567.891, kFormatAmount, TCode(), true), "1,234,567.89");
  std::setlocale(LC_ALL, named.c_str());
  std::locale::global(before);
}

}  // namespace
}  // namespace margindesk
