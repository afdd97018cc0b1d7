#include "terminal/cli/AccountColumns.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "host/book/BookError.h"
#include "model/AccountInfoConstDef.h"
#include "model/CommaText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Variant.h"
#include "terminal/session/CliError.h"

namespace margindesk {

namespace {

// The columns of a configured key list, none for an empty list.
TColumnList MakeListOf(std::string_view keys) {
  TColumnList columns;
  if (keys.empty()) return columns;
  AppendCatalogueColumns(keys, columns);
  EnsureReservedColumn(columns);
  AppendCustomColumns(columns);
  return columns;
}

TColumnList MakeConfiguredList(std::string_view configKey) {
  const auto& config = TCustomConfigManager::GetInstance();
  return MakeListOf(ConvertConfigSetting(config.ReadString(config.GetUserSection(), configKey)));
}

std::string_view GetConfigKeyOfType(const std::string& accountType) {
  if (accountType == "S") return "Stock_AccountInfoColumn";
  if (accountType == "F") return "Futures_AccountInfoColumn";
  return {};
}

TColumnList MakeAllColumns() {
  TColumnList columns;
  for (const TCatalogueRow& row : GetCatalogue()) {
    if (IsAccountColumn(row)) columns.push_back(CreateCatalogueColumn(row));
  }
  AppendCustomColumns(columns);
  return columns;
}

// The column of a key; null for an unknown one. `custom` loses a custom column that is taken from it.
std::unique_ptr<TColumnInfo> TakeColumn(std::string_view key, TColumnList& custom) {
  if (const TCatalogueRow* row = FindCatalogueRow(key)) return CreateCatalogueColumn(*row);
  const auto named = std::ranges::find_if(
      custom, [key](const auto& column) { return column != nullptr && column->FKey == key; });
  return named == custom.end() ? nullptr : std::move(*named);
}

bool IsNamed(const TColumnList& columns, std::string_view key) {
  return std::ranges::any_of(columns, [key](const auto& column) { return column->FKey == key; });
}

}  // namespace

TColumnList MakeConfiguredColumns(const TCustomAccount& account) {
  TColumnList columns;
  const std::string_view configKey = GetConfigKeyOfType(account.GetAccountType());
  if (!configKey.empty()) columns = MakeConfiguredList(configKey);
  if (columns.empty()) columns = MakeConfiguredList("Default_AccountInfoColumn");
  if (columns.empty()) columns = MakeListOf(kDefaultAccountColumns);
  return columns;
}

TColumnList MakeNamedColumns(std::string_view keys) {
  if (SameTextIgnoringCase(keys, "all")) return MakeAllColumns();
  const std::vector<std::string> named = SplitCommaText(ConvertConfigSetting(keys));
  if (named.empty()) throw TCliError("--columns names no column");
  TColumnList columns;
  TColumnList custom;
  AppendCustomColumns(custom);
  for (const std::string& key : named) {
    const TCatalogueRow* row = FindCatalogueRow(key);
    if (row != nullptr && !IsAccountColumn(*row)) {
      throw TCliError("column " + QuotedForMessage(key) + " belongs to positions; see the command positions");
    }
    if (IsNamed(columns, row != nullptr ? row->FKey : key)) {
      throw TCliError("column " + QuotedForMessage(key) + " is named twice");
    }
    if (auto column = TakeColumn(key, custom)) {
      columns.push_back(std::move(column));
      continue;
    }
    // An old key that was left as it is names a column that the list holds under its current key already.
    if (FindCatalogueRow(ConvertColumnKey(key)) == nullptr) {
      throw TCliError("unknown column " + QuotedForMessage(key) + "; \"--columns all\" shows every column");
    }
  }
  EnsureReservedColumn(columns);
  return columns;
}

}  // namespace margindesk
