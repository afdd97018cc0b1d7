// The rows of the position grid: which positions are shown, under which key, and of which accounts.
#include <algorithm>
#include <cmath>
#include <utility>

#include "host/framework/AveragePrice.h"
#include "host/framework/PositionFigures.h"
#include "host/framework/PositionRowKey.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Icommon.h"
#include "model/contract/PositionAdapter.h"
#include "model/contract/Positionviewdatacontrol.h"

namespace margindesk {

namespace {

bool IsSomething(double value) { return std::abs(value) > kZeroTolerance; }

}  // namespace

std::int32_t TPositionViewDataControl::GetCount() { return static_cast<std::int32_t>(FRowKeys.size()); }

const TColumnList* TPositionViewDataControl::GetColList() { return nullptr; }

const TCustomPositionData* TPositionViewDataControl::GetRowPosition(std::int32_t row) const {
  const bool inside = row >= 0 && static_cast<std::size_t>(row) < FRowPositions.size();
  return inside ? FRowPositions[static_cast<std::size_t>(row)] : nullptr;
}

bool TPositionViewDataControl::GetRowValue(std::int32_t row, const void*& value) {
  value = GetRowPosition(row);
  return value != nullptr;
}

bool TPositionViewDataControl::GetColValue(std::int32_t /*column*/, const void*& value) {
  value = nullptr;
  return false;
}

// With the account in front: the same symbol in another account is another row.
std::string TPositionViewDataControl::GetRowKey(std::int32_t row) const {
  if (GetRowPosition(row) == nullptr) return {};
  return std::string(FAccount.Text()).append(1, '\n').append(FRowKeys[static_cast<std::size_t>(row)]);
}

std::int32_t TPositionViewDataControl::FindRow(std::string_view key) const {
  const std::size_t accountEnd = key.find('\n');
  if (accountEnd == std::string_view::npos || key.substr(0, accountEnd) != FAccount.Text()) return -1;
  key.remove_prefix(accountEnd + 1);
  const auto found = std::ranges::lower_bound(
      FRowKeys, key, {}, [](const std::string& rowKey) { return std::string_view(rowKey); });
  return found == FRowKeys.end() || *found != key ? -1 : static_cast<std::int32_t>(found - FRowKeys.begin());
}

void TPositionViewDataControl::RefreshDataList() {
  TCustomPositionAdapter::GetInstance().GetPositionList(FAccount, FPositions);
  if (!FSubAccounts.empty()) MergeSubAccountPositions();
  FRowKeys.clear();
  FRowPositions.clear();
  FShownSymbols.assign(GetCodeCount(), false);
  const auto keys = FPositions.GetKeys();
  const auto positions = FPositions.GetPositions();
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const TCustomPositionData& position = *positions[i];
    if (!IsDisplayPosition(position) || !IsOnShownSide(position)) continue;
    FRowKeys.push_back(keys[i]);
    FRowPositions.push_back(&position);
    FShownSymbols[position.GetSymbol().Number()] = true;
  }
}

// The positions of the group as one map, in the order of the keys and then of the accounts. The master's own
// keep their keys.
void TPositionViewDataControl::MergeSubAccountPositions() {
  struct TLine {
    std::string FKey;
    const TCustomPositionData* FPosition;
  };
  auto sources = std::make_shared<std::vector<TPositionMap>>();
  std::vector<TLine> lines;
  const auto add = [&sources, &lines](const TPositionMap& positions, TCode subAccount) {
    for (std::size_t i = 0; i < positions.GetCount(); ++i) {
      lines.push_back({MakeRowKey(positions.GetKeys()[i], subAccount), positions.GetPositions()[i]});
    }
    sources->push_back(positions);
  };
  add(FPositions, TCode());
  for (const auto& [identifier, subAccount] : FSubAccounts) {
    if (identifier == FAccount) continue;
    TPositionMap positions;
    TCustomPositionAdapter::GetInstance().GetPositionList(identifier, positions);
    add(positions, identifier);
  }
  std::ranges::sort(lines, {}, &TLine::FKey);
  auto contents = std::make_shared<TPositionMap::TContents>();
  for (TLine& line : lines) {
    contents->FKeys.push_back(std::move(line.FKey));
    contents->FPositions.push_back(line.FPosition);
  }
  contents->FKeepAlive = std::move(sources);
  FPositions = TPositionMap(std::move(contents));
}

bool TPositionViewDataControl::IsDisplayPosition(const TCustomPositionData& position) {
  using TRead = double (TCustomPositionData::*)() const;
  static constexpr TRead kReads[] = {
      &TCustomPositionData::GetHoldingQuantity,    &TCustomPositionData::GetExcludedQuantity,
      &TCustomPositionData::GetCompletedBuyAmount, &TCustomPositionData::GetCompletedSellAmount,
      &TCustomPositionData::GetPLFirstPart,        &TCustomPositionData::GetPLSecondPart,
      &TCustomPositionData::GetRealizedPL,
  };
  static constexpr std::int32_t kFields[] = {kFieldQty,          kFieldBODQty,     kFieldTodayBuyQty,
                                             kFieldTodaySellQty, kFieldVoucherQty, kFieldCoveredQty};
  return std::ranges::any_of(kReads, [&](TRead read) { return IsSomething((position.*read)()); }) ||
         std::ranges::any_of(kFields, [&](std::int32_t field) {
           return IsSomething(position.GetDataValue(field).AsFloatOr(0));
         });
}

// The side of the exchange link shows its positions alone; otherwise nothing that is held is left out but by
// the filter.
bool TPositionViewDataControl::IsOnShownSide(const TCustomPositionData& position) const {
  if (IsChinaConnectSide(FSideCurrency)) {
    const TCustomSubItem* item = position.GetReferenceItem();
    return item != nullptr && IsChinaConnectExchange(item->GetFieldCode(kItemExchange));
  }
  return FFilterCurrency.IsEmpty() || GetPositionCurrency(position).SameText(FFilterCurrency);
}

bool TPositionViewDataControl::NamesShownSymbol(const TPositionMap& positions) const {
  return std::ranges::any_of(positions.GetPositions(), [this](const TCustomPositionData* position) {
    const std::size_t number = position->GetSymbol().Number();
    return number < FShownSymbols.size() && FShownSymbols[number];
  });
}

bool TPositionViewDataControl::IsOwnAccount(TCode account) const {
  return account == FAccount || FSubAccounts.contains(account);
}

bool TPositionViewDataControl::CheckNeedUpdatePosition(const TAccountPositionMap& positions) {
  return std::ranges::any_of(positions, [this](const auto& entry) { return IsOwnAccount(entry.first); });
}

void TPositionViewDataControl::InitAggregateAccountList() {
  ClearAggregateData();
  if (FAggregate && !FAccount.IsEmpty()) {
    TCustomAccountAdapter::GetInstance().GetSubAccountList(FAccount, FSubAccounts);
  }
}

void TPositionViewDataControl::ClearAggregateData() { FSubAccounts.clear(); }

// One that left the group counts as well as one that joined it.
bool TPositionViewDataControl::CheckNeedUpdateSubAccountList(const TAccountMap& accounts) {
  if (!FAggregate || FAccount.IsEmpty()) return false;
  return std::ranges::any_of(accounts, [this](const auto& entry) {
    const auto& [identifier, account] = entry;
    return FSubAccounts.contains(identifier) ||
           (account != nullptr && account->GetMasterAccountID() == FAccount);
  });
}

bool TPositionViewDataControl::GetAccountInfo(std::string& info) {
  const auto& accounts = TCustomAccountAdapter::GetInstance();
  const TCustomAccount* account = nullptr;
  if (IsChinaConnectSide(FSideCurrency)) account = accounts.GetAccount(GetChinaConnectAccount(FAccount));
  if (account == nullptr) account = accounts.GetAccount(FAccount);
  if (account == nullptr) return false;
  info = account->GetDataString(kFieldAccountName);
  return true;
}

}  // namespace margindesk
