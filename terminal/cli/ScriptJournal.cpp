#include "terminal/cli/ScriptJournal.h"

#include <string_view>

#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

std::string_view YesOrNo(bool yes) { return yes ? "yes" : "no"; }

struct TDescribe {
  TJson operator()(const TViewNotice& notice) const {
    return {{"kind", "notice"}, {"view", notice.FView}, {"code", notice.FCode}};
  }
  TJson operator()(const TShownMessage& message) const {
    return {{"kind", "message"}, {"text", message.FText}};
  }
  TJson operator()(const TAskedQuestion& question) const {
    return {{"kind", "question"}, {"text", question.FText}, {"answer", YesOrNo(question.FYes)}};
  }
  TJson operator()(const TChannelPost& post) const {
    return {{"kind", "post"}, {"channel", post.FChannel}, {"text", post.FText}, {"value", post.FValue}};
  }
  TJson operator()(const TChannelMessage& message) const {
    TJson entry = {{"kind", "request"}, {"message", message.FMessage}};
    if (message.FMessage == kMessageMoreInfo) {
      entry["account"] = message.FAccount;
      entry["mode"] = message.FMode;
    } else if (message.FMessage == kMessageCustomColumns) {
      entry["columns"] = message.FAllCaptions;
      entry["visible"] = message.FVisibleCaptions;
    } else if (message.FMessage == kMessageBatchConfirmation) {
      entry["orders"] = message.FOrders;
    }
    return entry;
  }
  TJson operator()(const TViewRequest& request) const {
    return {{"kind", "view"},
            {"id", request.FViewID},
            {"account", request.FAccount.Text()},
            {"symbol", request.FSymbol.Text()},
            {"opened", request.FOpened}};
  }
  TJson operator()(const TOrderRequest& order) const {
    return {{"kind", order.FTaken ? "order" : "check"},
            {"action", order.FAction},
            {"account", order.FAccount.Text()},
            {"symbol", order.FSymbol.Text()},
            {"side", order.FSide == kSideSell ? "sell" : "buy"},
            {"quantity", order.FQuantity},
            {"price", order.FPrice},
            {"type", MakeJsonOrNull(order.FOrderType)},
            {"accepted", order.FAccepted}};
  }
};

}  // namespace

TJson MakeJournalJson(const std::vector<TJournalEntry>& entries) {
  TJson list = TJson::array();
  for (const TJournalEntry& entry : entries) list.push_back(std::visit(TDescribe(), entry));
  return list;
}

TJson MakeSubscriptionsJson(const std::vector<TSubscriptionCount>& subscriptions) {
  TJson list = TJson::array();
  for (const TSubscriptionCount& entry : subscriptions) {
    list.push_back({{"kind", entry.FKind}, {"key", MakeJsonOrNull(entry.FKey)}, {"count", entry.FCount}});
  }
  return list;
}

}  // namespace margindesk
