#include "terminal/cli/AccountsCommand.h"

#include <string>

#include "model/ResourceText.h"
#include "model/contract/LanguageManager.h"
#include "terminal/cli/AccountLookup.h"
#include "terminal/cli/CsvOutput.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/TextTable.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

struct TAccountLine {
  std::string FAccount;
  std::string FName;
  std::string FType;
  std::string FMaster;  // empty for none
};

using TAccountLines = std::vector<TAccountLine>;

TAccountLines ReadAccounts(const THostData& data) {
  TAccountLines lines;
  for (const TCode code : data.GetAccounts()) {
    const TCustomAccount& account = FindAccount(code);
    lines.push_back(
        {code, GetAccountName(account), account.GetAccountType(), account.GetMasterAccountID().Text()});
  }
  return lines;
}

void WriteText(std::ostream& out, const TAccountLines& lines, const TTerminal& terminal) {
  const auto& language = TCustomLanguageManager::GetInstance();
  TTextTable table;
  table.AddColumn(GetResourceText("Res_Account"), false);
  table.AddColumn(GetResourceText("Res_AccountName"), false);
  table.AddColumn(language.GetLanguageText("Host", "AccountList_Type"), false);
  table.AddColumn(language.GetLanguageText("Host", "AccountList_Master"), false);
  for (const TAccountLine& line : lines) table.AddRow({line.FAccount, line.FName, line.FType, line.FMaster});
  table.Write(out, terminal.FColour, terminal.FWidth);
}

void WriteAsJson(std::ostream& out, const TAccountLines& lines) {
  TJson document = TJson::array();
  for (const TAccountLine& line : lines) {
    document.push_back({{"account", line.FAccount},
                        {"name", MakeJsonOrNull(line.FName)},
                        {"type", MakeJsonOrNull(line.FType)},
                        {"master", MakeJsonOrNull(line.FMaster)}});
  }
  WriteJson(out, document);
}

void WriteAsCsv(std::ostream& out, const TAccountLines& lines) {
  WriteCsvLine(out, {"account", "name", "type", "master"});
  for (const TAccountLine& line : lines) {
    WriteCsvLine(out, {line.FAccount, line.FName, line.FType, line.FMaster});
  }
}

}  // namespace

int TAccountsCommand::Run(TSession& session, std::ostream& out) {
  const TAccountLines lines = ReadAccounts(session.Host().Data());
  switch (FFormat.Get()) {
    case TOutputFormat::kText:
      WriteText(out, lines, session.Terminal());
      break;
    case TOutputFormat::kJson:
      WriteAsJson(out, lines);
      break;
    case TOutputFormat::kCsv:
      WriteAsCsv(out, lines);
      break;
  }
  return kExitFine;
}

}  // namespace margindesk
