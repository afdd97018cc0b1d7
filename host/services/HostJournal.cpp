#include "host/services/HostJournal.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "host/services/ClientOrderRecord.h"
#include "host/services/ReferenceHost.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"

namespace margindesk {

namespace {

// The entries that nobody has taken yet. A request is entered before it is handed on and gets its answer
// afterwards, unless it was taken meanwhile.
class TJournalEntries {
 public:
  template <class TRequest>
  class TPlace {
   public:
    TPlace(TJournalEntries& entries, TRequest request)
        : FEntries(entries), FNumber(entries.FTaken + entries.FList.size()) {
      FEntries.FList.emplace_back(std::move(request));
    }

    TRequest* Get() const {
      return FNumber < FEntries.FTaken ? nullptr
                                       : std::get_if<TRequest>(&FEntries.FList[FNumber - FEntries.FTaken]);
    }

   private:
    TJournalEntries& FEntries;
    std::size_t FNumber;  // of all entries ever made
  };

  // Enters a request and has it answered; the answer is written to `field`.
  template <class TRequest, class TAnswer>
  auto Enter(TRequest request, bool TRequest::*field, TAnswer answer) {
    const TPlace<TRequest> place(*this, std::move(request));
    const auto given = answer();
    if (TRequest* const entered = place.Get()) entered->*field = IsYes(given);
    return given;
  }

  void Enter(TJournalEntry entry) { FList.push_back(std::move(entry)); }

  std::vector<TJournalEntry> Take() {
    FTaken += FList.size();
    return std::exchange(FList, {});
  }

 private:
  static bool IsYes(bool answer) { return answer; }
  static bool IsYes(std::int32_t answer) { return answer == kConfirmationYes; }

  std::vector<TJournalEntry> FList;
  std::size_t FTaken = 0;
};

class TJournalMessageBox final : public TCustomMessageBoxCtrl {
 public:
  explicit TJournalMessageBox(TJournalEntries& entries) : FEntries(entries) {}

  void ShowMessage(std::string_view text) override {
    FEntries.Enter(TShownMessage{std::string(text)});
    FInner.ShowMessage(text);
  }
  std::int32_t ShowConfirmation(std::string_view text) override {
    return FEntries.Enter(TAskedQuestion{std::string(text)}, &TAskedQuestion::FYes,
                          [&] { return FInner.ShowConfirmation(text); });
  }

 private:
  TJournalEntries& FEntries;
  TCustomMessageBoxCtrl& FInner = TCustomMessageBoxCtrl::GetInstance();
};

// What a flat data control shows, row by row.
std::vector<std::vector<std::string>> ReadCells(TCustomDataControl& control) {
  std::vector<std::vector<std::string>> rows;
  const TColumnList* columns = control.GetColList();
  for (std::int32_t row = 0; columns != nullptr && row < control.GetCount(); ++row) {
    auto& texts = rows.emplace_back();
    for (const auto& column : *columns) texts.push_back(control.GetDisplayValue(row, column->FId));
  }
  return rows;
}

TChannelMessage DescribeMessage(std::int32_t message, const void* record) {
  TChannelMessage entry;
  entry.FMessage = message;
  if (record == nullptr) return entry;
  if (message == kMessageBatchConfirmation) {
    const auto& batch = *static_cast<const TOrderTakeActionRecord*>(record);
    if (batch.FDataControl != nullptr) entry.FOrders = ReadCells(*batch.FDataControl);
  }
  if (message == kMessageMoreInfo) {
    const auto& page = *static_cast<const TWebViewRecord*>(record);
    entry.FAccount = page.FAccount;
    entry.FMode = page.FMode;
    entry.FAddress = page.FAddress;
  } else if (message == kMessageCustomColumns) {
    const auto& columns = *static_cast<const TCustomColumnRecord*>(record);
    entry.FAllCaptions = columns.FAllCaptions;
    entry.FVisibleCaptions = columns.FVisibleCaptions;
  }
  return entry;
}

class TJournalChannels final : public TCustomGlobalChannelManager {
 public:
  explicit TJournalChannels(TJournalEntries& entries) : FEntries(entries) {}

  void AddChannelHandler(std::int32_t channel, THandler handler, const void* owner) override {
    FInner.AddChannelHandler(channel, handler, owner);
  }
  void RemoveChannelHandler(std::int32_t channel, const void* owner) override {
    FInner.RemoveChannelHandler(channel, owner);
  }
  void PostChannelData(std::int32_t channel, std::string_view text, void* object,
                       std::int64_t value) override {
    FEntries.Enter(TChannelPost{channel, std::string(text), value});
    FInner.PostChannelData(channel, text, object, value);
  }
  void SendChannelMessage(std::int32_t message, void* record) override {
    FEntries.Enter(DescribeMessage(message, record));
    FInner.SendChannelMessage(message, record);
  }

 private:
  TJournalEntries& FEntries;
  TCustomGlobalChannelManager& FInner = TCustomGlobalChannelManager::GetInstance();
};

class TJournalCalls final : public THostFunctions {
 public:
  TJournalCalls(TJournalEntries& entries, const TOpenViews& views) : FEntries(entries), FViews(views) {}

  bool IsChinaConnectOn() const override { return FInner.IsChinaConnectOn(); }
  bool IsChinaConnectExchange(TCode exchange) const override {
    return FInner.IsChinaConnectExchange(exchange);
  }
  TCode GetChinaConnectAccount(TCode account) const override {
    return FInner.GetChinaConnectAccount(account);
  }
  bool OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData* data,
                      bool flag1, bool flag2) override {
    TViewRequest request{viewID, {}, {}, false};
    if (const auto* order = dynamic_cast<const TCustomClientOrder*>(data)) {
      request.FAccount = order->GetAccount();
      request.FSymbol = order->GetSymbol();
    }
    return FEntries.Enter(request, &TViewRequest::FOpened,
                          [&] { return FInner.OpenCustomView(sender, viewID, number, data, flag1, flag2); });
  }
  void SendViewNotify(TFrame* view, std::int32_t code) override {
    FEntries.Enter(TViewNotice{FViews.FindHandle(view), code});
    FInner.SendViewNotify(view, code);
  }
  bool DecodePicture(const std::string& fileName, TBitmap& bitmap) override {
    return FInner.DecodePicture(fileName, bitmap);
  }

 private:
  TJournalEntries& FEntries;
  const TOpenViews& FViews;
  THostFunctions& FInner = THostFunctions::GetInstance();
};

TOrderRequest DescribeOrder(bool taken, const TCustomClientOrder& order, std::int32_t action) {
  TOrderRequest request;
  request.FTaken = taken;
  request.FAction = action;
  request.FAccount = order.GetAccount();
  request.FSymbol = order.GetSymbol();
  request.FQuantity = order.GetQuantity();
  request.FPrice = order.GetPrice();
  if (const auto* record = dynamic_cast<const TClientOrderRecord*>(&order)) {
    request.FSide = record->GetSide();
    request.FOrderType = record->GetExtraField(kOrderTypeField);
  }
  return request;
}

class TJournalOrderActions final : public TCustomOrderActionManager {
 public:
  explicit TJournalOrderActions(TJournalEntries& entries) : FEntries(entries) {}

  bool CheckOrderAction(const TCustomClientOrder& order, std::int32_t action, bool showMessage) override {
    return FEntries.Enter(DescribeOrder(false, order, action), &TOrderRequest::FAccepted,
                          [&] { return FInner.CheckOrderAction(order, action, showMessage); });
  }
  bool TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order, std::int32_t action,
                       bool flag) override {
    return FEntries.Enter(DescribeOrder(true, order, action), &TOrderRequest::FAccepted,
                          [&] { return FInner.TakeOrderAction(orders, order, action, flag); });
  }

 private:
  TJournalEntries& FEntries;
  TCustomOrderActionManager& FInner = TCustomOrderActionManager::GetInstance();
};

}  // namespace

// Each stands in front of the service that is installed when it is made.
struct THostJournal::TServices {
  explicit TServices(const TOpenViews& views) : FCalls(FEntries, views) {}

  TJournalEntries FEntries;
  TJournalMessageBox FMessageBox{FEntries};
  TJournalChannels FChannels{FEntries};
  TJournalCalls FCalls;
  TJournalOrderActions FOrderActions{FEntries};
  TServiceScope<TCustomMessageBoxCtrl> FMessageBoxScope{FMessageBox};
  TServiceScope<TCustomGlobalChannelManager> FChannelScope{FChannels};
  TServiceScope<THostFunctions> FCallScope{FCalls};
  TServiceScope<TCustomOrderActionManager> FOrderActionScope{FOrderActions};
};

THostJournal::THostJournal(TReferenceHost& host) : FServices(std::make_unique<TServices>(host.Views())) {}

THostJournal::~THostJournal() = default;

std::vector<TJournalEntry> THostJournal::Take() { return FServices->FEntries.Take(); }

}  // namespace margindesk
