#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/ConfigManager.h"
#include "host/services/GlobalChannelManager.h"
#include "host/services/LookAndFeelService.h"
#include "host/services/UserAppProfile.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "tests/host/platform/Listener.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

// The orders of a batch, of which only the end matters here.
struct TOrders : TCustomDataControl {
  explicit TOrders(int& alive) : TCustomDataControl(nullptr), FAlive(alive) { ++FAlive; }
  ~TOrders() override { --FAlive; }
  std::int32_t GetCount() override { return 0; }
  const TColumnList* GetColList() override { return nullptr; }
  TVariant GetValue(std::int32_t, std::int32_t) override { return {}; }
  std::string GetDisplayValue(std::int32_t, std::int32_t) override { return {}; }
  bool GetRowValue(std::int32_t, const void*&) override { return false; }
  bool GetColValue(std::int32_t, const void*&) override { return false; }
  int& FAlive;
};

TEST(Channels, HandDataToTheirOwnHandlersAndOwnOrdersThatNobodyTakes) {
  TGlobalChannelManager channels;
  TCallLog log;
  TListener linked{"linked", &log, {}};
  linked.FAction = [&] {
    const auto& data = *static_cast<TChannelData*>(linked.FData);
    log.push_back(std::string(data.FText) + " " + std::to_string(data.FValue));
  };
  channels.AddChannelHandler(kChannelLinkedAccount, linked.GetHandler(), &linked);
  channels.PostChannelData(kChannelLinkedAccount, "A100", nullptr, 7);
  channels.PostChannelData(kChannelLayoutLoaded, "nobody", nullptr, 0);
  EXPECT_THAT(log, ElementsAre("linked", "A100 7"));

  int alive = 0;
  TOrderTakeActionRecord record;
  record.FDataControl = new TOrders(alive);
  channels.SendChannelMessage(kMessageBatchConfirmation, &record);
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(record.FDataControl, nullptr);
}

TEST(UserAndSkin, MayDoEverythingThatIsNotTakenAwayAndSeeTheColoursOfTheirSkin) {
  TConfigManager config("ann");
  const TServiceScope<TCustomConfigManager> installed(config);
  const TUserAppProfile user;
  EXPECT_TRUE(user.IsFunctionEnabled("MarginSim"));
  config.WriteString("User.ann", "Function_MarginSim", "N", true);
  EXPECT_FALSE(user.IsFunctionEnabled("MarginSim"));

  const TLookAndFeelService look;
  constexpr std::string_view kChanged = "coMarginSimulateDiffBgColor";
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 255U);
  config.WriteString("Light", kChanged, "$00FFFF", true);
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 0xFFFFU);
  for (const char* text : {"", "$", "red", "-1", "16777216", "255 "}) {
    EXPECT_FALSE(ParseColor(text)) << text;
  }
}

}  // namespace
}  // namespace margindesk
