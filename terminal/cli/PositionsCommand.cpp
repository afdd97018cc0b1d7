#include "terminal/cli/PositionsCommand.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "model/contract/PositionAdapter.h"
#include "model/contract/Positionviewdatacontrol.h"
#include "terminal/cli/AccountLookup.h"
#include "terminal/cli/CsvOutput.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/PositionColumns.h"
#include "terminal/cli/TextTable.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

// The values of the positions, by position and column.
using TPositionRows = std::vector<std::vector<TVariant>>;

TPositionRows ReadPositions(const THostData& data, TCode account) {
  TPositionViewDataControl control(nullptr);
  TPositionMap positions;
  TCustomPositionAdapter::GetInstance().GetPositionList(account, positions);
  TPositionRows rows;
  for (std::size_t i = 0; i < positions.GetCount(); ++i) {
    const TPositionSource source{*positions.GetPositions()[i], positions.GetKeys()[i], data, control};
    auto& row = rows.emplace_back();
    for (const TPositionColumn& column : GetPositionColumns()) row.push_back(column.FRead(source));
  }
  return rows;
}

bool IsShown(const TPositionRows& rows, std::size_t index) {
  const TPositionColumn& column = GetPositionColumns()[index];
  if (column.FResourceKey.empty()) return false;
  return column.FAlways || std::ranges::any_of(rows, [index](const std::vector<TVariant>& row) {
           return row[index].AsFloatOr(0) != 0;
         });
}

void WriteText(std::ostream& out, const TPositionRows& rows, const TFormatter& formatter,
               const TTerminal& terminal) {
  const auto columns = GetPositionColumns();
  TTextTable table;
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!IsShown(rows, i)) continue;
    shown.push_back(i);
    table.AddColumn(GetCaption(columns[i]), columns[i].FFormat != 0);
  }
  for (const auto& row : rows) {
    std::vector<std::string> texts;
    texts.reserve(shown.size());
    for (const std::size_t i : shown) texts.push_back(GetDisplayText(columns[i], row[i], formatter));
    table.AddRow(texts);
  }
  table.Write(out, terminal.FColour, terminal.FWidth);
}

void WriteAsJson(std::ostream& out, const TPositionRows& rows, const std::string& account) {
  TJson document;
  document["account"] = account;
  document["positions"] = TJson::array();
  for (const auto& row : rows) {
    TJson position;
    for (std::size_t i = 0; i < row.size(); ++i) position[GetPositionColumns()[i].FName] = MakeJson(row[i]);
    document["positions"].push_back(std::move(position));
  }
  WriteJson(out, document);
}

void WriteAsCsv(std::ostream& out, const TPositionRows& rows) {
  std::vector<std::string_view> names;
  for (const TPositionColumn& column : GetPositionColumns()) names.push_back(column.FName);
  WriteCsvLine(out, names);
  for (const auto& row : rows) {
    std::vector<std::string> texts;
    texts.reserve(row.size());
    for (const TVariant& value : row) texts.push_back(value.AsText());
    WriteCsvLine(out, std::vector<std::string_view>(texts.begin(), texts.end()));
  }
}

}  // namespace

void TPositionsCommand::AddOptions(CLI::App& app) {
  app.add_option("ACCOUNT", FAccount, "The account's identifier")->required();
  FFormat.AddTo(app);
}

int TPositionsCommand::Run(TSession& session, std::ostream& out) {
  TReferenceHost& host = session.Host();
  const TCode account = FindAccount(FAccount).GetAccountID();
  const TPositionRows rows = ReadPositions(host.Data(), account);
  switch (FFormat.Get()) {
    case TOutputFormat::kText:
      WriteText(out, rows, host.Formatter(), session.Terminal());
      break;
    case TOutputFormat::kJson:
      WriteAsJson(out, rows, account);
      break;
    case TOutputFormat::kCsv:
      WriteAsCsv(out, rows);
      break;
  }
  return kExitFine;
}

}  // namespace margindesk
