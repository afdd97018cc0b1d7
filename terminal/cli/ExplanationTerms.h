#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/BaseAccountData.h"
#include "model/contract/Code.h"
#include "terminal/cli/Explanation.h"

namespace margindesk {

// What follows from its terms. Without terms it is 0.
TTerm MakeOperation(TTermKind kind, std::string name, std::vector<TTerm> terms);

TTerm MakeInput(std::string name, double value, TCode account, std::optional<TCode> currency);

// The terminal's own word for a term, in the language shown, with the values that it has places for.
std::string GetWord(std::string_view key, std::initializer_list<std::string_view> values = {});

// The caption of a column, whether it is shown or not.
std::string GetFieldName(std::int32_t field);

TTerm MakeRatio(TCode currency);

// An amount of a currency and its worth in base currency.
TTerm MakeIntoBase(TTerm amount, TCode currency);

// A field as an account's record alone gives it: one read, or what is reckoned from several.
TTerm ReadField(const TCustomAccountData& data, std::int32_t field);

TTerm ReadAmount(const TCustomAccountData& data, std::string name,
                 double (TCustomAccountData::*read)() const);

}  // namespace margindesk
