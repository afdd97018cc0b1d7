#include <functional>
#include <memory>

#include <gmock/gmock.h>

#include "model/contract/Baseview.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

using TLog = std::vector<std::string>;

struct TTraced : TComponent {
  TTraced(TComponent* owner, TLog& log, const std::string& name) : TComponent(owner), FLog(log) {
    SetComponentName(name);
  }
  ~TTraced() override { FLog.push_back(GetComponentName()); }

  TLog& FLog;
};

TEST(Component, AnOwnerDeletesWhatItStillOwnsTheLastMadeFirst) {
  TLog log;
  auto owner = std::make_unique<TComponent>(nullptr);
  new TTraced(owner.get(), log, "first");
  auto* second = new TTraced(owner.get(), log, "second");
  auto* third = new TTraced(owner.get(), log, "third");
  new TTraced(third, log, "child of the third");
  EXPECT_EQ(owner->FindComponent("second"), second);
  EXPECT_EQ(owner->FindComponent("child of the third"), nullptr) << "an owner knows its own components only";
  delete second;
  EXPECT_EQ(owner->GetComponents().size(), 2U);
  owner.reset();
  EXPECT_THAT(log, ElementsAre("second", "third", "child of the third", "first"));
}

// A frame that offers the operations, logs that it goes and then does what the test wants.
struct TFullFrame : TViewFrame {
  TFullFrame(TLog& log, std::string name) : TViewFrame(nullptr), FLog(log) {
    SetComponentName(std::move(name));
    FButtons[1]->FOnClickObject = this;
    FButtons[1]->FOnClick = [](void* object, void* sender) {
      auto* self = static_cast<TFullFrame*>(object);
      if (sender == self->FButtons[1]) self->FLog.emplace_back("click"), self->FAction();
    };
  }
  ~TFullFrame() override {
    FLog.push_back("gone " + GetComponentName());
    if (FAction) FAction();
  }

  bool SetLanguage(std::int32_t index) override { return index == 2; }
  bool GetLayoutData(std::string& layout) override { return layout = "Account=A1001", true; }
  const std::vector<TCaptionButton*>* GetViewCaptionButtons() override { return &FButtons; }
  bool GetViewCaption(std::string& caption) override { return caption = "Account A1001", true; }
  bool GetWidth(std::int32_t& width) override { return width = 370, true; }

  TLog& FLog;
  std::function<void()> FAction;
  std::vector<TCaptionButton*> FButtons{new TCaptionButton(this), new TCaptionButton(this)};
};

struct View : testing::Test {
  TLog FLog;
  std::unique_ptr<TIBaseView> FView = std::make_unique<TIBaseView>(nullptr);

  TViewHandle Open(std::string name) {
    return FView->AddView(std::make_unique<TFullFrame>(FLog, std::move(name)));
  }
  TFullFrame* Frame(TViewHandle handle) const { return static_cast<TFullFrame*>(FView->FindFrame(handle)); }
};

TEST_F(View, KeepsFramesUnderHandlesThatAreNeverGivenOutTwiceAndClosesTheLastOpenedFirst) {
  TIBaseView otherView(nullptr);
  const TViewHandle first = Open("first");
  const TViewHandle elsewhere = otherView.AddView(std::make_unique<TFullFrame>(FLog, "elsewhere"));
  FView->CloseInstance(first);
  const TViewHandle second = Open("second");
  const TViewHandle third = Open("third");
  EXPECT_TRUE(0 < first && first < elsewhere && elsewhere < second && second < third);
  FView->CloseInstance(first);
  EXPECT_THAT(FView->GetHandles(), ElementsAre(second, third));
  EXPECT_FALSE(FView->ContainView(first) || FView->ContainView(elsewhere));
  EXPECT_EQ(FView->FindHandle(Frame(third)), third);
  // A frame that goes finds its own handle unknown already, and may still ask for the others.
  Frame(third)->FAction = [this, second, third, view = FView.get()] {
    FLog.emplace_back(view->ContainView(third) ? "still there" : "forgotten");
    FLog.emplace_back(view->ContainView(second) ? "second open" : "second closed");
  };
  FView.reset();
  EXPECT_THAT(FLog, ElementsAre("gone first", "gone third", "forgotten", "second open", "gone second"));
}

TEST_F(View, AsksTheFrameOfTheHandleAndAnswersNothingWhereThereIsNoneOrItDoesNotOfferTheOperation) {
  const TViewHandle closed = Open("closed");
  const TViewHandle full = Open("frame");
  FView->CloseInstance(closed);
  const TViewHandle plain = FView->AddView(std::make_unique<TViewFrame>(nullptr));
  const TViewHandle noView = FView->AddView(std::make_unique<TFrame>(nullptr));
  for (const TViewHandle handle : {full, TViewHandle{0}, closed, plain, noView}) {
    SCOPED_TRACE(handle);
    const bool answers = handle == full;
    std::int32_t width = 7;
    std::string caption = "kept";
    EXPECT_EQ(FView->GetWidth(handle, width), answers);
    EXPECT_EQ(FView->GetViewCaption(handle, caption), answers);
    EXPECT_EQ(FView->SetLanguage(handle, 2), answers);
    EXPECT_FALSE(FView->SetLanguage(handle, 1)) << "the frame's answer, not the view's";
    EXPECT_EQ(width, answers ? 370 : 7);
    EXPECT_EQ(caption, answers ? "Account A1001" : "kept");
    EXPECT_EQ(FView->GetLayoutData(handle), answers ? "Account=A1001" : "");
  }
}

TEST_F(View, AClickReachesTheButtonOfThatIndexWhichMayCloseItsFrame) {
  const TViewHandle handle = Open("frame");
  // No such button, and one without a click.
  for (const std::int32_t index : {-1, 0, 2}) FView->HandleCaptionButtonClick(handle, index);
  Frame(handle)->FAction = [this, handle] { FView->CloseInstance(handle); };
  FView->HandleCaptionButtonClick(handle, 1);
  FView->HandleCaptionButtonClick(handle, 1);
  EXPECT_THAT(FLog, ElementsAre("click", "gone frame"));
}

}  // namespace
}  // namespace margindesk
