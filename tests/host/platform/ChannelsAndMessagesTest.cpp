#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/GlobalChannelManager.h"
#include "host/services/MessageBoxCtrl.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "tests/host/platform/Listener.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsNull;

// The orders of a batch, of which only the end matters here.
class TOrders : public TCustomDataControl {
 public:
  explicit TOrders(int& alive) : TCustomDataControl(nullptr), FAlive(alive) { ++FAlive; }
  ~TOrders() override { --FAlive; }

  std::int32_t GetCount() override { return 0; }
  const TColumnList* GetColList() override { return nullptr; }
  TVariant GetValue(std::int32_t, std::int32_t) override { return {}; }
  std::string GetDisplayValue(std::int32_t, std::int32_t) override { return {}; }
  bool GetRowValue(std::int32_t, const void*&) override { return false; }
  bool GetColValue(std::int32_t, const void*&) override { return false; }

 private:
  int& FAlive;
};

TEST(Channels, HandTheirDataToTheirOwnHandlersAlone) {
  TGlobalChannelManager channels;
  TCallLog log;
  TListener linked{"linked", &log, {}};
  linked.FAction = [&] {
    const auto& data = *static_cast<TChannelData*>(linked.FData);
    log.push_back(std::to_string(data.FChannel) + " " + std::string(data.FText) + " " +
                  std::to_string(data.FValue));
  };
  TListener shown{"shown", &log, {}};
  channels.AddChannelHandler(kChannelLinkedAccount, linked.GetHandler(), &linked);
  channels.AddChannelHandler(kChannelMainFormShown, linked.GetHandler(), &linked);
  channels.AddChannelHandler(kChannelMainFormShown, shown.GetHandler(), &shown);

  channels.PostChannelData(kChannelLinkedAccount, "A100", nullptr, 7);
  channels.PostChannelData(kChannelLayoutLoaded, "nobody", nullptr, 0);
  EXPECT_THAT(log, ElementsAre("linked", "10 A100 7"));
  channels.RemoveChannelHandler(kChannelMainFormShown, &linked);
  channels.RemoveChannelHandler(kChannelLayoutLoaded, &linked);
  channels.PostChannelData(kChannelMainFormShown, "", nullptr, 0);
  EXPECT_THAT(log, ElementsAre("linked", "10 A100 7", "shown"));
  EXPECT_EQ(channels.CountRegistrationsOf(&linked), 1U);
}

TEST(Channels, LeaveARecordAloneUnlessItsMessageIsAnswered) {
  TGlobalChannelManager channels;
  TWebViewRecord record;
  record.FTitle = "before";
  channels.SendChannelMessage(kMessageMoreInfo, &record);
  EXPECT_EQ(record.FTitle, "before");
  channels.SetResponder(kMessageMoreInfo, [&](void* data) {
    channels.SetResponder(kMessageMoreInfo, {});  // an answer may take itself out
    static_cast<TWebViewRecord*>(data)->FTitle = "answered";
  });
  channels.SendChannelMessage(kMessageSymbolList, &record);
  EXPECT_EQ(record.FTitle, "before");
  channels.SendChannelMessage(kMessageMoreInfo, &record);
  EXPECT_EQ(record.FTitle, "answered");
  record.FTitle = "again";
  channels.SendChannelMessage(kMessageMoreInfo, &record);
  EXPECT_EQ(record.FTitle, "again");
}

TEST(Channels, OwnTheOrdersThatComeForConfirmation) {
  TGlobalChannelManager channels;
  int alive = 0;
  TOrderTakeActionRecord record;
  record.FDataControl = new TOrders(alive);
  channels.SendChannelMessage(kMessageBatchConfirmation, &record);
  EXPECT_EQ(alive, 0);
  EXPECT_THAT(record.FDataControl, IsNull());
  EXPECT_FALSE(record.FResult);

  std::unique_ptr<TCustomDataControl> shown;
  channels.SetResponder(kMessageBatchConfirmation, [&](void* data) {
    auto& asked = *static_cast<TOrderTakeActionRecord*>(data);
    shown.reset(std::exchange(asked.FDataControl, nullptr));
    asked.FResult = true;
  });
  record.FDataControl = new TOrders(alive);
  channels.SendChannelMessage(kMessageBatchConfirmation, &record);
  EXPECT_EQ(alive, 1);
  EXPECT_TRUE(record.FResult);
}

TEST(MessageBox, SaysNoToAQuestionUnlessToldOtherwise) {
  TMessageBoxCtrl box;
  std::vector<std::string> said;
  box.SetSink([&](std::string_view text) { said.emplace_back(text); });
  box.ShowMessage("Saved");
  EXPECT_NE(box.ShowConfirmation("Close all?"), kConfirmationYes);
  box.SetPolicy([](std::string_view question) { return question == "Close all?"; });
  EXPECT_EQ(box.ShowConfirmation("Close all?"), kConfirmationYes);
  EXPECT_NE(box.ShowConfirmation("Delete?"), kConfirmationYes);
  EXPECT_THAT(said, ElementsAre("Saved", "Close all?", "Close all?", "Delete?"));

  testing::internal::CaptureStderr();
  TMessageBoxCtrl().ShowMessage("To the terminal");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "To the terminal\n");
}

}  // namespace
}  // namespace margindesk
