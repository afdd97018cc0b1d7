#include <clocale>
#include <limits>
#include <locale>

#include <gtest/gtest.h>

#include "host/services/ConfigManager.h"
#include "host/services/Formatter.h"
#include "model/contract/Variant.h"

namespace margindesk {
namespace {

TEST(Decimals, AreRoundedHalfAwayFromZeroOnTheDigitsThatTheNumberShows) {
  using TLimits = std::numeric_limits<double>;
  struct TCase {
    double FValue;
    std::int32_t FDecimals;
    const char* FText;
    bool FZeros = true;
  };
  // 1.005 is in binary just below the half.
  // clang-format off
  for (const TCase& example : {
           TCase{1.005, 2, "1.01"}, {-1.005, 2, "-1.01"}, {2.675, 2, "2.68"}, {1.115, 2, "1.12"},
           {0.5, 0, "1"}, {1.5, 0, "2"}, {2.5, 0, "3"}, {-2.5, 0, "-3"}, {0.49999999999999994, 0, "0"},
           {0.0049, 2, "0.00"}, {9.995, 2, "10.00"}, {999999.995, 2, "1,000,000.00"}, {1000.0, 0, "1,000"},
           {-123456.0, 2, "-123,456.00"}, {-123.0, 0, "-123"}, {0.1 + 0.2, 99, "0.300000000000000"}, {12.5, -4, "13"},
           {1e21, 2, "1,000,000,000,000,000,000,000.00"}, {6e-9, 8, "0.00000001"},
           {4503599627370497.5, 0, "4,503,599,627,370,498"}, {-0.0, 2, "0.00"}, {-0.004, 2, "0.00"},
           {-0.005, 2, "-0.01"}, {-1e-300, 2, "0.00"}, {TLimits::denorm_min(), 2, "0.00"},
           {TLimits::infinity(), 2, ""}, {TLimits::quiet_NaN(), 2, ""},
           {1.5, 3, "1.5", false}, {2.0, 3, "2", false}, {-0.0001, 3, "0", false}, {1200.0, 3, "1,200", false}}) {
    EXPECT_EQ(FormatDecimal(example.FValue, example.FDecimals, example.FZeros, true), example.FText)
        << FloatToText(example.FValue) << " with " << example.FDecimals;
  }
  // clang-format on
}

class Formatter : public testing::Test {
 protected:
  // Every kind of figure with a symbol of two decimals, an average price and a plain number.
  std::string All() {
    std::string all;
    for (const auto kind : {kFormatAmount, kFormatQuantity, kFormatRatio, kFormatMarginLevel, kFormatPrice}) {
      all += FFormatter.FormatValue(1234.5, kind, FTencent, true) + " ";
    }
    return all + FFormatter.FormatAveragePrice(5, false) + " " + FFormatter.FormatNumber(5, -1, false);
  }

  TConfigManager FConfig{"ann"};
  const TCode FTencent{"00700"};
  TFormatter FFormatter{FConfig, [this](TCode symbol) { return symbol == FTencent ? 2 : -1; }};
};

TEST_F(Formatter, FollowsTheUsersDecimalsAtOnceAndFallsBackFromUnreadableOnes) {
  const std::string unset = "1,234.50 1,234.5 1,234.500000 1,234.50 1,234.50 5.0000 5";
  FConfig.WriteString("User.bob", "AmountPrecision", "5", true);  // somebody else
  EXPECT_EQ(All(), unset);
  EXPECT_EQ(FFormatter.FormatValue(321.4, kFormatPrice, TCode("XYZ"), true), "321.400");
  struct TCase {
    const char* FKey;
    const char* FPrecision;
    const char* FZeros;
    std::string FTexts;
  };
  for (const TCase& example : {
           TCase{"Amount", "4", "Y", "1,234.5000 1,234.5 1,234.500000 1,234.50 1,234.50 5.0000 5"},
           {"Amount", "0", "N", "1,235 1,234.5 1,234.500000 1,234.50 1,234.50 5.0000 5"},
           {"Amount", "9", "", unset},
           {"Amount", "two", "", unset},
           {"Qty", "2", "Y", "1,234.50 1,234.50 1,234.500000 1,234.50 1,234.50 5.0000 5"},
           {"QuotedPrice", "3", "", "1,234.50 1,234.5 1,234.500000 1,234.50 1,234.500 5.0000 5"},
           {"Currency", "3", "N", "1,234.50 1,234.5 1,234.5 1,234.50 1,234.50 5.0000 5"},
           {"Default", "1", "Y", "1,234.50 1,234.5 1,234.500000 1,234.50 1,234.50 5.0 5.0"},
       }) {
    const std::string key = example.FKey;
    FConfig.WriteString("User.ann", key + "Precision", example.FPrecision, true);
    FConfig.WriteString("User.ann", key + "Decimal", example.FZeros, true);
    EXPECT_EQ(All(), example.FTexts) << key << " " << example.FPrecision << " " << example.FZeros;
    FConfig.WriteString("User.ann", key + "Precision", "", true);
    FConfig.WriteString("User.ann", key + "Decimal", "", true);
  }
}

TEST_F(Formatter, DoesNotLookAtALocale) {
  struct TCommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\2"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new TCommaPoint));
  std::setlocale(LC_ALL, "de_DE.UTF-8");
  EXPECT_EQ(FFormatter.FormatValue(1234567.891, kFormatAmount, TCode(), true), "1,234,567.89");
  std::setlocale(LC_ALL, "C");
  std::locale::global(before);
}

}  // namespace
}  // namespace margindesk
