#include <functional>

#include <gmock/gmock.h>

#include "model/contract/Baseview.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A frame that offers every operation.
class TFullFrame : public TViewFrame {
 public:
  explicit TFullFrame(std::vector<std::string>& log, std::string name) : TViewFrame(nullptr), FLog(log) {
    SetComponentName(std::move(name));
    for (int i = 0; i < 2; ++i) FButtons.emplace_back(new TCaptionButton(this));
    FButtons[1]->FOnClickObject = this;
    FButtons[1]->FOnClick = [](void* object, void* sender) {
      auto* self = static_cast<TFullFrame*>(object);
      self->FLog.emplace_back(sender == self->FButtons[1] ? "click" : "click from a stranger");
      if (const auto action = self->FOnGoing) action();
    };
  }
  ~TFullFrame() override {
    FLog.push_back("gone " + GetComponentName());
    if (FOnGoing) FOnGoing();
  }

  bool SetLanguage(std::int32_t index) override { return index == 2; }
  bool GetLayoutData(std::string& layout) override { return layout = FLayout, true; }
  bool SetLayoutData(const std::string& layout) override { return FLayout = layout, true; }
  const std::vector<TCaptionButton*>* GetViewCaptionButtons() override { return &FButtons; }
  const TImageList* GetViewCaptionButtonImageList() override { return &FImages; }
  bool GetViewCaption(std::string& caption) override { return caption = "Account A1001", true; }
  bool SetGroupID(const std::string& groupID) override { return FGroup = groupID, true; }
  bool GetGroupID(std::string& groupID) override { return groupID = FGroup, true; }
  bool GetWidth(std::int32_t& width) override { return width = 370, true; }
  bool GetHeight(std::int32_t& height) override { return height = 475, true; }

  std::vector<std::string>& FLog;
  std::function<void()> FOnGoing;
  std::vector<TCaptionButton*> FButtons;
  TImageList FImages{this};
  std::string FLayout;
  std::string FGroup;
};

class View : public testing::Test {
 protected:
  std::vector<std::string> FLog;
  std::unique_ptr<TIBaseView> FView = std::make_unique<TIBaseView>(nullptr);

  TViewHandle Open(std::string name) {
    return FView->AddView(std::make_unique<TFullFrame>(FLog, std::move(name)));
  }
};

TEST_F(View, KeepsFramesUnderHandlesThatAreNeverGivenOutTwice) {
  TIBaseView otherView(nullptr);
  const TViewHandle first = Open("first");
  const TViewHandle elsewhere = otherView.AddView(std::make_unique<TFullFrame>(FLog, "elsewhere"));
  FView->CloseInstance(first);
  EXPECT_THAT(FLog, ElementsAre("gone first"));
  const TViewHandle second = Open("second");
  const TViewHandle third = Open("third");
  EXPECT_TRUE(0 < first && first < elsewhere && elsewhere < second && second < third);
  EXPECT_THAT(FView->GetHandles(), ElementsAre(second, third));

  EXPECT_FALSE(FView->ContainView(first));
  EXPECT_FALSE(FView->ContainView(elsewhere)) << "another view's";
  EXPECT_EQ(FView->FindHandle(FView->FindFrame(third)), third);
  EXPECT_EQ(FView->FindHandle(otherView.FindFrame(elsewhere)), 0);
  EXPECT_EQ(FView->AddView(nullptr), 0);
  FView->CloseInstance(first);
  EXPECT_EQ(FView->GetHandles().size(), 2U);
}

TEST_F(View, ClosesItsFramesInTheReverseOrderOfOpeningWhenItGoes) {
  const TViewHandle first = Open("first");
  Open("second");
  const TViewHandle third = Open("third");
  // A frame that goes finds its own handle unknown already, and may still ask for the others.
  static_cast<TFullFrame*>(FView->FindFrame(third))->FOnGoing = [this, first, third, view = FView.get()] {
    FLog.emplace_back(view->ContainView(third) ? "still there" : "forgotten");
    FLog.emplace_back(view->ContainView(first) ? "first open" : "first closed");
  };
  FView.reset();
  EXPECT_THAT(FLog, ElementsAre("gone third", "forgotten", "first open", "gone second", "gone first"));
}

TEST_F(View, ForwardsWhatItIsAskedOfAHandleToTheFrame) {
  Open("other");
  const TViewHandle handle = Open("frame");
  auto* frame = static_cast<TFullFrame*>(FView->FindFrame(handle));
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::string text;
  EXPECT_TRUE(FView->GetWidth(handle, width) && FView->GetHeight(handle, height));
  EXPECT_EQ(width, 370);
  EXPECT_EQ(height, 475);
  EXPECT_TRUE(FView->GetViewCaption(handle, text));
  EXPECT_EQ(text, "Account A1001");
  EXPECT_TRUE(FView->SetLanguage(handle, 2));
  EXPECT_FALSE(FView->SetLanguage(handle, 1)) << "the frame's answer, not the view's";
  EXPECT_TRUE(FView->SetLayoutData(handle, "Account=A1001"));
  EXPECT_EQ(FView->GetLayoutData(handle), "Account=A1001");
  EXPECT_TRUE(FView->SetGroupID(handle, "2") && FView->GetGroupID(handle, text));
  EXPECT_EQ(text, "2");
  std::vector<TCaptionButton*> buttons;
  const TImageList* images = nullptr;
  EXPECT_TRUE(FView->GetViewCaptionButtons(handle, buttons));
  EXPECT_EQ(buttons, frame->FButtons);
  EXPECT_TRUE(FView->GetViewCaptionButtonImageList(handle, images));
  EXPECT_EQ(images, &frame->FImages);
}

TEST_F(View, AnswersNothingForAnUnknownHandleOrAFrameThatDoesNotOfferTheOperation) {
  const TViewHandle closed = Open("closed");
  FView->CloseInstance(closed);
  const TViewHandle plain = FView->AddView(std::make_unique<TViewFrame>(nullptr));
  const TViewHandle noView = FView->AddView(std::make_unique<TFrame>(nullptr));
  for (const TViewHandle handle : {TViewHandle{0}, closed, plain, noView}) {
    SCOPED_TRACE(handle);
    std::int32_t size = 7;
    std::string text = "kept";
    std::vector<TCaptionButton*> buttons;
    const TImageList* images = nullptr;
    EXPECT_FALSE(FView->GetWidth(handle, size) || FView->GetHeight(handle, size));
    EXPECT_FALSE(FView->GetViewCaption(handle, text) || FView->GetGroupID(handle, text));
    EXPECT_FALSE(FView->SetGroupID(handle, "2") || FView->SetLanguage(handle, 0) ||
                 FView->SetLayoutData(handle, ""));
    EXPECT_FALSE(FView->GetViewCaptionButtons(handle, buttons));
    EXPECT_FALSE(FView->GetViewCaptionButtonImageList(handle, images));
    EXPECT_EQ(FView->GetLayoutData(handle), "");
    FView->HandleCaptionButtonClick(handle, 0);
    EXPECT_EQ(size, 7);
    EXPECT_EQ(text, "kept");
  }
}

TEST_F(View, AClickReachesTheButtonOfThatIndexWhichMayCloseItsFrame) {
  const TViewHandle handle = Open("frame");
  for (const std::int32_t index : {-1, 0, 2}) FView->HandleCaptionButtonClick(handle, index);
  EXPECT_THAT(FLog, IsEmpty()) << "no such button, and one without a click";
  static_cast<TFullFrame*>(FView->FindFrame(handle))->FOnGoing = [this, handle] {
    FView->CloseInstance(handle);
  };
  FView->HandleCaptionButtonClick(handle, 1);
  EXPECT_THAT(FLog, ElementsAre("click", "gone frame"));
}

TEST_F(View, GivesItsShortcutsUntilTheyAreInitialisedAgain) {
  std::vector<TCustomViewShortcut> shortcuts;
  FView->AddNewShortcut("F5", 1);
  FView->AddNewShortcut("Ctrl+L", 2);
  FView->GetShortCutList(shortcuts);
  ASSERT_EQ(shortcuts.size(), 2U);
  EXPECT_EQ(shortcuts[1].FText, "Ctrl+L");
  EXPECT_EQ(shortcuts[1].FAction, 2);
  FView->InitializeShortcut();
  FView->GetShortCutList(shortcuts);
  EXPECT_THAT(shortcuts, IsEmpty());
}

TEST(PreferenceView, ForwardsToItsPagesAndGivesThemInTheOrderOfTheirHandles) {
  struct TPage : TPreferenceFrame {
    TPage() : TPreferenceFrame(nullptr) {}
    bool SetLanguage(std::int32_t index) override { return index == 1; }
    bool Execute() override { return FLog += 'x', true; }
    bool Reset() override { return FLog += 'r', true; }
    bool ResetFactory() override { return FLog += 'f', true; }
    bool SendMessage(std::int32_t flag, std::int64_t data) override { return flag == 3 && data == 4; }
    std::int32_t GetWidth() override { return 500; }
    std::int32_t GetHeight() override { return 400; }
    std::string FLog;
  };
  TIBasePreferenceView view(nullptr);
  const TViewHandle plain = view.AddView(std::make_unique<TFrame>(nullptr));
  auto owned = std::make_unique<TPage>();
  TPage* page = owned.get();
  const TViewHandle handle = view.AddView(std::move(owned));
  ASSERT_EQ(view.GetView().size(), 2U);
  EXPECT_EQ(view.GetView()[1], page);
  EXPECT_TRUE(view.Execute(handle) && view.Reset(handle) && view.ResetFactory(handle));
  EXPECT_EQ(page->FLog, "xrf");
  EXPECT_TRUE(view.SetLanguage(handle, 1) && view.SendMessage(handle, 3, 4));
  EXPECT_FALSE(view.SetLanguage(handle, 0) || view.SendMessage(handle, 4, 3));
  for (const TViewHandle other : {plain, handle + 1}) {
    EXPECT_FALSE(view.Execute(other) || view.Reset(other) || view.ResetFactory(other) ||
                 view.SetLanguage(other, 1) || view.SendMessage(other, 3, 4));
  }
}

}  // namespace
}  // namespace margindesk
