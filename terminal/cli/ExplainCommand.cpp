#include "terminal/cli/ExplainCommand.h"

#include <algorithm>
#include <chrono>

#include <CLI/CLI.hpp>

#include "host/book/BookError.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/Constdef.h"
#include "terminal/cli/AccountColumns.h"
#include "terminal/cli/AccountLookup.h"
#include "terminal/cli/AccountTree.h"
#include "terminal/cli/ExplainOutput.h"
#include "terminal/cli/OpenedView.h"
#include "terminal/cli/TreeHint.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Locations.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

// The one column that a key names.
TColumnList MakeColumn(const std::string& key) {
  TColumnList columns;
  if (key.find(',') == std::string::npos && !SameTextIgnoringCase(key, "all")) {
    columns = MakeNamedColumns(key);
    // Behind the reserved column, unless that is the one.
    if (columns.size() > 1) columns.erase(columns.begin());
  }
  if (columns.size() != 1) {
    throw TCliError(QuotedForMessage(key) + " is not one column; name one, as MarginLevel");
  }
  if (columns.front()->FId == kFieldStatus) {
    throw TCliError(QuotedForMessage(key) +
                    " is the trading period of each exchange, a text; there is no figure to explain");
  }
  return columns;
}

// Has the package load the formulas that are configured, else those that come along, and open its views with
// the column.
void LoadFormulas(TSession& session, const std::string& columnKey) {
  TReferenceHost& host = session.Host();
  TConfigManager& config = host.Config();
  const std::string section = config.GetUserSection();
  config.Override(section, "Default_AccountInfoColumn", columnKey);
  if (config.ReadString(section, "FormulaURL").empty()) {
    const auto file = GetResourceDirectory(session.Terminal().FEnvironment) / "formulas.txt";
    config.Override(section, "FormulaURL", MakeFileAddress(file));
  }
  session.Packages();
  // The file service gives a fetch up in the end.
  constexpr std::chrono::milliseconds kWait{50};
  while (host.Files().GetPendingCount() > 0) host.Loop().RunOnce(kWait);
}

// What a person sees with the mouse on the caption of the field.
std::string ReadFormula(const TFrame& frame, std::int32_t field) {
  auto* tree = dynamic_cast<TVirtualTree*>(frame.FindComponent("AccountInfoTree"));
  const TTreeColumn* caption = tree == nullptr ? nullptr : tree->FindColumn(kCellCaption);
  if (caption == nullptr) return {};
  for (const TVirtualTreeNode* node : tree->GetNodes()) {
    if (node->GetLevel() != 0 || GetAccountNodePlace(*node->GetData()).FField != field) continue;
    MoveMouseTo(*tree, *node, *caption);
    const THintStyleController* hint = FindShownHint(frame);
    return hint == nullptr ? std::string() : hint->GetHintText();
  }
  return {};
}

bool IsThreeLevels(const TConfigManager& config) {
  const std::string value = config.ReadString(config.GetUserSection(), "AcctInfoShow3LvInfo");
  return !value.starts_with('N') && !value.starts_with('n');
}

}  // namespace

void TExplainCommand::AddOptions(CLI::App& app) {
  app.add_option("ACCOUNT", FAccount, "The account's identifier")->required();
  app.add_option("FIELD", FField, "The figure: a column key, as MarginLevel")->required();
  app.add_option("--convert", FConvert, "Show totals in this currency (default: the base currency)")
      ->option_text("CUR");
  app.add_option("--filter", FFilter, "Show this currency alone")->option_text("CUR");
  app.add_flag("--aggregate", FAggregate, "Show a master account together with its sub-accounts");
  app.add_option("--format", FFormat, "How to show it: text or json (default: text)")
      ->option_text("text|json")
      ->check(CLI::IsMember({"text", "json"}));
}

int TExplainCommand::Run(TSession& session, std::ostream& out) {
  TReferenceHost& host = session.Host();
  const TCustomAccount& account = FindAccount(FAccount);
  TExplainedFigure figure;
  figure.FView = MakeAccountView(account, FConvert, FFilter, FAggregate);
  const TColumnList columns = MakeColumn(FField);
  const std::int32_t field = columns.front()->FId;
  LoadFormulas(session, columns.front()->FKey);

  const TOpenedView opened(session, "TIAccountInfo", std::nullopt);
  opened.Read(columns, figure.FView);

  TCustomAccountInfoDataControl& control = opened.Control();
  figure.FFormula = ReadFormula(opened.Frame(), field);
  figure.FTerm = ExplainFigure(control, account, field, IsThreeLevels(host.Config()));
  figure.FSource = GetSourceOfField(control, field);
  if (FFormat == "json") {
    WriteExplanationJson(out, figure);
  } else {
    WriteExplanationText(out, figure, session.Terminal());
  }
  return kExitFine;
}

}  // namespace margindesk
