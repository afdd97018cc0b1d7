#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/ConfigManager.h"
#include "host/services/LookAndFeelService.h"
#include "host/services/UserAppProfile.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UserAndSkin : public testing::Test {
 protected:
  void Set(std::string_view key, std::string_view value) {
    FConfig.WriteString(FConfig.GetUserSection(), key, value, true);
  }

  TConfigManager FConfig{"ann"};
  TServiceScope<TCustomConfigManager> FInstalled{FConfig};
};

TEST_F(UserAndSkin, MayDoEverythingUntilAFunctionIsTakenAway) {
  const TUserAppProfile user;
  EXPECT_TRUE(user.IsFunctionEnabled("MarginSim"));
  Set("Function_MarginSim", "N");
  EXPECT_FALSE(user.IsFunctionEnabled("MarginSim"));
  EXPECT_TRUE(user.IsFunctionEnabled("OEOpenC"));
  EXPECT_TRUE(user.GetDefaultAccount().IsEmpty());
  Set("DefaultAccount", "C100");
  EXPECT_EQ(user.GetDefaultAccount(), TCode("C100"));
}

TEST_F(UserAndSkin, KnowsThePeriodExchangesOnlyFromItsProvider) {
  std::vector<TCode> exchanges = {TCode("OLD")};
  EXPECT_FALSE(TUserAppProfile().GetPeriodExchangeList(exchanges));
  EXPECT_THAT(exchanges, IsEmpty());
  const TUserAppProfile user([] { return std::vector<TCode>{TCode("HKFE"), TCode("CME")}; });
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(user.GetPeriodExchangeList(exchanges));
  EXPECT_THAT(exchanges, ElementsAre(TCode("HKFE"), TCode("CME")));
}

TEST_F(UserAndSkin, TakesAColourFromTheSkinUnlessItsSectionSaysOtherwise) {
  const TLookAndFeelService look;
  constexpr std::string_view kChanged = "coMarginSimulateDiffBgColor";
  EXPECT_EQ(look.GetSkinName(), "Light");
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 255U);
  EXPECT_EQ(look.GetColor(nullptr, "no such key"), 0U);
  const TColor light = look.GetColor(nullptr, "coText");
  FConfig.WriteString("Light", kChanged, "$00FFFF", true);
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 0xFFFFU);
  Set("SkinName", "dark");
  EXPECT_EQ(look.GetSkinName(), "Dark");
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 255U);
  EXPECT_NE(look.GetColor(nullptr, "coText"), light);
  Set("SkinName", "Neon");
  EXPECT_EQ(look.GetSkinName(), "Light");
}

TEST_F(UserAndSkin, ReadsAColourInThreeNotationsAndNothingElse) {
  EXPECT_EQ(ParseColor("255"), 255U);
  EXPECT_EQ(ParseColor("0xFf8000"), 0xFF8000U);
  EXPECT_EQ(ParseColor("$00FF8000"), 0xFF8000U);
  EXPECT_EQ(ParseColor("0"), 0U);
  for (const char* text :
       {"", "$", "0x", "red", "#FF0000", "-1", "16777216", "$1000000", "255 ", " 255", "FF"}) {
    EXPECT_FALSE(ParseColor(text)) << text;
  }
}

}  // namespace
}  // namespace margindesk
