#include "host/services/BatchConfirmation.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "model/ResourceText.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/Formatter.h"

namespace margindesk {

namespace {

// Columns of the list that comes with the message.
constexpr std::int32_t kSymbolColumn = 0;
constexpr std::int32_t kPriceColumn = 3;
constexpr std::int32_t kQuantityColumn = 4;
constexpr std::int32_t kSideColumn = 11;

void AddOrder(TCustomDataControl& orders, std::int32_t row, const THostData& data,
              std::vector<TBatchTotal>& totals) {
  const TProductRecord* product = data.FindProduct(TCode(orders.GetValue(row, kSymbolColumn).AsText()));
  const TCode currency = product != nullptr ? product->GetCurrency() : TCode();
  const double contractSize = product != nullptr ? product->GetFacts().FProduct.FContractSize : 1;
  const std::string side = orders.GetValue(row, kSideColumn).AsText();
  auto total = std::ranges::find_if(
      totals, [&](const TBatchTotal& each) { return each.FSide == side && each.FCurrency == currency; });
  if (total == totals.end()) {
    totals.emplace_back().FSide = side;
    total = std::prev(totals.end());
    total->FCurrency = currency;
  }
  total->FAmount += orders.GetValue(row, kPriceColumn).AsFloatOr(0) *
                    orders.GetValue(row, kQuantityColumn).AsFloatOr(0) * contractSize;
  ++total->FCount;
}

TBatchQuestion MakeQuestion(TCustomDataControl& orders, const THostData& data) {
  TBatchQuestion question;
  const std::int32_t count = orders.GetCount();
  question.FCaption = GetResourceText("Res_BatchConfirm");
  question.FQuestion = FillText(GetResourceText("Res_BatchConfirm_Question"), {std::to_string(count)});
  question.FRows.resize(static_cast<std::size_t>(count));
  if (const TColumnList* columns = orders.GetColList()) {
    for (const auto& column : *columns) {
      question.FColumns.push_back({GetResourceText(column->FResourceKey), column->FNumeric});
      for (std::int32_t row = 0; row < count; ++row) {
        question.FRows[static_cast<std::size_t>(row)].push_back(orders.GetDisplayValue(row, column->FId));
      }
    }
  }
  for (std::int32_t row = 0; row < count; ++row) AddOrder(orders, row, data, question.FTotals);
  const auto& formatter = TCustomFormatter::GetInstance();
  for (TBatchTotal& total : question.FTotals) {
    total.FText = FillText(
        GetResourceText("Res_BatchConfirm_Total"),
        {total.FSide, total.FCurrency.Text(),
         formatter.FormatValue(total.FAmount, kFormatAmount, TCode(), true), std::to_string(total.FCount)});
  }
  return question;
}

}  // namespace

TBatchConfirmation::TBatchConfirmation(TGlobalChannelManager& channels, const THostData& data)
    : FChannels(channels), FData(data) {
  FChannels.SetResponder(kMessageBatchConfirmation, [this](void* record) {
    if (record != nullptr) Respond(*static_cast<TOrderTakeActionRecord*>(record));
  });
}

TBatchConfirmation::~TBatchConfirmation() { FChannels.SetResponder(kMessageBatchConfirmation, {}); }

void TBatchConfirmation::Respond(TOrderTakeActionRecord& record) const {
  record.FResult = false;
  const std::unique_ptr<TCustomDataControl> orders(std::exchange(record.FDataControl, nullptr));
  // A copy: the front may be replaced while it asks. Nothing of this object is touched once it has.
  const TFront front = FFront;
  if (!orders || orders->GetCount() == 0 || !front) return;
  TBatchQuestion question = MakeQuestion(*orders, FData);
  question.FAction = record.FAction;
  question.FViewID = record.FViewID;
  record.FResult = front(question);
}

}  // namespace margindesk
