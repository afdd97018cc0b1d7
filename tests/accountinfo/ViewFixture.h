#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <gmock/gmock.h>

#include "accountinfo/view/AccountInfoView.h"
#include "accountinfo/view/AcctPositionViewDataControl.h"
#include "host/services/HostJournal.h"
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {

struct TOpenFrame : TAccountInfoFrame {
  using TAccountInfoFrame::FCaptionButtonList;
  using TAccountInfoFrame::FCurrentColumnType;
  using TAccountInfoFrame::FDefaultColumnList;
  using TAccountInfoFrame::FFuturesColumnList;
  using TAccountInfoFrame::FMyDataControl;
  using TAccountInfoFrame::FMyPositionDataControl;
  using TAccountInfoFrame::FStockColumnList;
  using TAccountInfoFrame::TAccountInfoFrame;

  std::string Caption() { return GetViewCaption(FText) ? FText : ""; }
  std::string Layout() { return GetLayoutData(FText) ? FText : ""; }
  std::string Filter() const { return FMyDataControl->GetFilterCurrency().Text(); }
  // A person types an account and leaves the box.
  void Type(std::string_view account) {
    edtAccount->SetText(std::string(account));
    edtAccount->Exit();
  }
  // The first row of the tree for a field; null when it is not shown.
  const TVirtualTreeNode* Row(std::string_view key) {
    for (const TVirtualTreeNode* node : AccountInfoTree->GetNodes())
      if (GetNodeAttribute(node) == FindCatalogueRow(key)->FId) return node;
    return nullptr;
  }

  std::string FText;
};

// Views over the book of AccountTree with the stock accounts A1 and A2, and what they asked of the host.
class AccountView : public AccountTree {
 protected:
  AccountView() {
    InitializeAccountInfoView();
    for (const std::string_view account : {"A1", "A2"}) AddType(account, "S");
    AddFigures("A1", "", {});
    AddFigures("A1", "HKD", {});
    AddFigures("A1", "USD", {}, true);
    FHost.RunLoop();
  }
  ~AccountView() override {
    FFrames.clear();
    FinalizeAccountInfoView();
  }

  void AddType(std::string_view account, std::string_view type) {
    TAccountFacts& facts = AddAccount(account);
    facts.FType = type;
    FHost.Data().SetAccount(facts);
  }

  TOpenFrame& Open(std::string_view account = {}) {
    FFrames.push_back(CreateViewFrame<TOpenFrame>(nullptr));
    if (!account.empty()) FFrames.back()->Type(account);
    return *FFrames.back();
  }

  // What was asked since the last call: "1024", "info 1:A1" (mode, account), "view 602:A1", "channel 10:A1".
  std::string Asked() {
    std::string text;
    for (const TJournalEntry& entry : FJournal.Take()) {
      text += text.empty() ? "" : " ";
      if (const auto* notice = std::get_if<TViewNotice>(&entry)) text += std::to_string(notice->FCode);
      if (const auto* message = std::get_if<TChannelMessage>(&entry))
        text += "info " + std::to_string(message->FMode) + ":" + message->FAccount;
      if (const auto* view = std::get_if<TViewRequest>(&entry))
        text += "view " + std::to_string(view->FViewID) + ":" + view->FAccount.Text();
      if (const auto* post = std::get_if<TChannelPost>(&entry))
        text += "channel " + std::to_string(post->FChannel) + ":" + post->FText;
    }
    return text;
  }

  // The keys of a column list; a hidden column in brackets.
  static std::string Keys(const TColumnList& columns) {
    std::string text;
    for (const auto& column : columns)
      text += (text.empty() ? "" : " ") + (column->FVisible ? column->FKey : "[" + column->FKey + "]");
    return text;
  }

  THostJournal FJournal{FHost};
  std::vector<std::unique_ptr<TOpenFrame>> FFrames;
};

}  // namespace margindesk
