#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "model/AccountInfoConstDef.h"

namespace margindesk {

// Fields that describe the account and not one of its currencies: they have no value rows.
inline constexpr auto kAccountLevelFields = std::to_array<std::int32_t>(
    {kFieldAccount, kFieldUser, kFieldAccountName, kFieldMarginLevel, kFieldBODUpdateTime, kFieldCutLoss,
     kFieldHoldFund, kFieldCreditLimitDDS, kFieldRPQ, kFieldCIES, kFieldCreditLimit, kFieldMarginingBasis,
     kFieldPositionIsolation, kFieldMarginMethod, kFieldMaxMargin, kFieldAggregated, kFieldOnlineStatus,
     kFieldMarginClass, kFieldDayTradeStatus});

// Fields whose value is a text.
inline constexpr auto kTextFields = std::to_array<std::int32_t>(
    {kFieldRPQ, kFieldAccount, kFieldAccountName, kFieldCurrency, kFieldBODUpdateTime, kFieldCIES,
     kFieldMarginingBasis, kFieldPositionIsolation, kFieldMarginMethod, kFieldAggregated, kFieldOnlineStatus,
     kFieldMarginClass, kFieldDayTradeStatus});

// Fields that are not summed over sub-accounts: they come from the positions, which cover the sub-accounts
// already, from the master account itself, or are texts.
inline constexpr auto kOwnAggregateFields = std::to_array<std::int32_t>({kFieldMarginLevel,
                                                                         kFieldBODUpdateTime,
                                                                         kFieldRealizedPL,
                                                                         kFieldUnrealizedPL,
                                                                         kFieldPL,
                                                                         kFieldTotalSellAmount,
                                                                         kFieldTotalBuyAmount,
                                                                         kFieldMarketValue,
                                                                         kFieldRPQ,
                                                                         kFieldCIES,
                                                                         kFieldAccount,
                                                                         kFieldAccountName,
                                                                         kFieldCurrency,
                                                                         kFieldMarginingBasis,
                                                                         kFieldPositionIsolation,
                                                                         kFieldMarginMethod,
                                                                         kFieldAggregated,
                                                                         kFieldOnlineStatus,
                                                                         kFieldMarginClass,
                                                                         kFieldDayTradeStatus,
                                                                         kFieldMarginableValue});

template <std::size_t N>
constexpr bool Contains(const std::array<std::int32_t, N>& fields, std::int32_t field) noexcept {
  return std::ranges::find(fields, field) != fields.end();
}

}  // namespace margindesk
