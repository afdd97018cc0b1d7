#include <array>
#include <string>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/HostJournal.h"
#include "host/services/MenuModel.h"
#include "model/contract/OrderActionManager.h"
#include "model/contract/OrderAdapter.h"
#include "tests/host/services/FakeViews.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

TEST(OpenViewsTest, FollowWhatTheirFramesTellAndCloseTheLastOpenedFirst) {
  TTestHost host;
  TFakeView plugin;
  TOpenViews& views = host.Views();
  views.AddClass("TIFake", plugin);
  EXPECT_EQ(views.Open("TIOther"), 0);
  const TViewHandle first = views.Open("TIFake"), second = views.Open("TIFake");
  EXPECT_EQ(views.Find(first)->FCaption, "View of ");
  views.SetLayout(first, "one");
  views.SetLayout(second, "two");
  EXPECT_EQ(views.Find(second)->FCaption, "View of two");

  static_cast<TFakeFrame*>(views.Find(first)->FFrame)->FLayout = "1";
  SendViewNotify(views.Find(first)->FFrame, 7);
  EXPECT_EQ(views.Find(first)->FCaption, "View of one");
  SendViewNotify(views.Find(first)->FFrame, kViewAccountChanged);
  EXPECT_EQ(views.Find(first)->FCaption, "View of 1");

  EXPECT_FALSE(views.Close(second + 1));
  EXPECT_EQ(views.FindPlugin(second), &plugin);
  host.CloseViews();
  EXPECT_EQ(plugin.FLog, "closed two;closed 1;");
  EXPECT_EQ(views.FindPlugin(second), nullptr);
}

// A menu entry by what stands on each level: ID, index, group.
struct TMenuView final : TIBaseView {
  using TLevel = std::array<std::int32_t, 3>;
  explicit TMenuView(std::vector<TLevel> levels) : TIBaseView(nullptr), FLevels(std::move(levels)) {}
  std::int32_t GetMenuLevel() override { return static_cast<std::int32_t>(FLevels.size()); }
  std::int32_t GetMenuID(std::int32_t level) override { return At(level)[0]; }
  std::int32_t GetMenuIndex(std::int32_t level) override { return At(level)[1]; }
  std::int32_t GetMenuGroupIndex(std::int32_t level) override { return At(level)[2]; }
  bool GetIsVisible() override { return FVisible; }
  const TLevel& At(std::int32_t level) const { return FLevels.at(static_cast<std::size_t>(level)); }

  std::vector<TLevel> FLevels;
  bool FVisible = true;
};

std::string Describe(const std::vector<TMenuEntry>& menu) {
  std::string text;
  for (const TMenuEntry& entry : menu) {
    text += std::to_string(entry.FID) + entry.FClass;
    if (!entry.FItems.empty()) text += "(" + Describe(entry.FItems) + ")";
    text += " ";
  }
  return text;
}

TEST(MenuModelTest, JoinsEntriesOfOneIDAndOrdersThemByGroupIndexAndRegistration) {
  TTestHost host;
  TMenuView z({{103, 20, 0}, {601, 5, 1}}), y({{103, 1, 0}, {621, 9, 0}}), x({{7, 20, 0}}), w({{8, 10, 0}});
  TMenuView v({{103, 20, 0}, {622, 9, 0}, {1, 0, 0}}), hidden({{9, 0, 0}}), nowhere({});
  hidden.FVisible = false;
  TMenuView* const views[] = {&z, &y, &x, &w, &v, &hidden, &nowhere};
  for (std::size_t i = 0; i < std::size(views); ++i) {
    host.Views().AddClass(std::string(1, static_cast<char>('z' - i)), *views[i]);
  }
  EXPECT_EQ(Describe(BuildMenu(host.Views())), "8w 103(621y 622(1v ) 601z ) 7x ");
}

struct TColumnUser {
  void Take(void* /*sender*/, void* data) {
    FResult = *static_cast<TCustomColumnResult*>(data);
    TCustomGlobalChannelManager::GetInstance().PostChannelData(kChannelLinkedAccount, "A1", nullptr, 5);
  }
  TCustomColumnResult FResult;
};

TEST(ColumnDialogTest, GivesThePreparedAnswerOnceWithinWhatTheDialogLists) {
  TTestHost host;
  TColumnUser user;
  TCustomColumnRecord record{
      {"Limit", "Credit", "Cash", "Credit"}, {"Cash"}, {"Limit"}, MakeHandler<&TColumnUser::Take>(&user)};
  const auto ask = [&] { host.Channels().SendChannelMessage(kMessageCustomColumns, &record); };
  ask();
  EXPECT_THAT(user.FResult.FOrder, ElementsAre()) << "nothing prepared: cancelled";
  host.ColumnDialog().SetAnswer({{"Cash", "Credit", "Nothing", "Cash"}, std::vector<std::string>{"Credit"}});
  ask();
  EXPECT_THAT(user.FResult.FOrder, ElementsAre("Cash", "Credit", "Limit", "Credit"));
  EXPECT_THAT(user.FResult.FVisible, ElementsAre("Credit", "Limit", "Credit"));
  EXPECT_FALSE(host.ColumnDialog().HasAnswer());
  host.ColumnDialog().SetAnswer({{"Credit"}, std::nullopt});
  ask();
  EXPECT_THAT(user.FResult.FVisible, ElementsAre("Limit", "Cash"));
}

TEST(HostJournalTest, KeepsWhatWasAskedInTheOrderOfAskingWithTheAnswers) {
  TTestHost host;
  TFakeView plugin;
  host.Views().AddClass("TIFake", plugin);
  TColumnUser user;
  TCustomColumnRecord record{{"Limit", "Cash"}, {"Cash"}, {""}, MakeHandler<&TColumnUser::Take>(&user)};
  const auto order = TCustomOrderAdapter::GetInstance().NewClientOrder();
  order->SetAccount(TCode("A1"));
  order->SetSymbol(TCode("5"));
  order->SetSide(kSideSell);
  host.Calls().SetViewOpener([](void*, std::int32_t viewID, std::int32_t, const TBaseData*, bool, bool) {
    return viewID == kViewOptionsPayOff;
  });
  host.MessageBox().SetPolicy([](std::string_view question) { return question == "Sure?"; });
  host.ColumnDialog().SetAnswer({});
  {
    THostJournal journal(host);
    const TViewHandle view = host.Views().Open("TIFake");
    host.Views().SetLayout(view, "one");
    TCustomGlobalChannelManager::GetInstance().SendChannelMessage(kMessageCustomColumns, &record);
    OpenCustomView(nullptr, kViewPositionDetail, 0, order.get(), false, true);
    OpenCustomView(nullptr, kViewOptionsPayOff, 0, order.get(), false, true);
    TCustomMessageBoxCtrl::GetInstance().ShowConfirmation("Sure?");
    TCustomOrderActionManager::GetInstance().TakeOrderAction(nullptr, *order, kActionOrder, true);

    const auto entries = journal.Take();
    ASSERT_EQ(entries.size(), 9U);
    EXPECT_EQ(std::get<TViewNotice>(entries[0]).FView, 0);
    EXPECT_EQ(std::get<TViewNotice>(entries[1]).FView, view);
    EXPECT_THAT(std::get<TChannelMessage>(entries[2]).FVisibleCaptions, ElementsAre("Cash"));
    EXPECT_EQ(std::get<TChannelPost>(entries[3]).FValue, 5) << "from inside the message before it";
    EXPECT_FALSE(std::get<TViewRequest>(entries[4]).FOpened);
    EXPECT_EQ(std::get<TViewRequest>(entries[5]).FSymbol, TCode("5"));
    EXPECT_TRUE(std::get<TViewRequest>(entries[5]).FOpened);
    EXPECT_TRUE(std::get<TAskedQuestion>(entries[6]).FYes);
    const auto& taken = std::get<TOrderRequest>(entries[7]);
    EXPECT_TRUE(taken.FTaken && !taken.FAccepted && taken.FSide == kSideSell &&
                taken.FAccount == TCode("A1"));
    EXPECT_EQ(std::get<TShownMessage>(entries[8]).FText, "Account A1 is unknown.");
    EXPECT_TRUE(journal.Take().empty());
  }
  EXPECT_EQ(&TCustomMessageBoxCtrl::GetInstance(), &host.MessageBox());
  host.CloseViews();
}

}  // namespace
}  // namespace margindesk
