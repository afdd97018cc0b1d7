#include "terminal/cli/SimulationOutput.h"

#include <algorithm>

#include "model/contract/LanguageManager.h"
#include "terminal/cli/CsvOutput.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/OrdersOutput.h"
#include "terminal/cli/TextTable.h"

namespace margindesk {

namespace {

void AddRows(const std::vector<TAccountTreeRow>& before, const std::vector<TAccountTreeRow>& after,
             std::size_t level, std::vector<TSimulatedRow>& rows) {
  static const std::vector<TAccountTreeRow> kNone;
  for (const TAccountTreeRow& row : after) {
    const auto old = std::ranges::find_if(before, [&row](const TAccountTreeRow& candidate) {
      return candidate.FField == row.FField && candidate.FIsTotal == row.FIsTotal &&
             candidate.FCurrency == row.FCurrency;
    });
    const bool found = old != before.end();
    rows.push_back({level, found ? *old : TAccountTreeRow(), row});
    AddRows(found ? old->FChildren : kNone, row.FChildren, level + 1, rows);
  }
}

TJson MakeJsonOrder(const TFileOrder& order) {
  return {{"line", order.FLine},
          {"symbol", order.FSymbol},
          {"side", GetSideWord(order.FSide)},
          {"price", order.FPrice ? TJson(*order.FPrice) : TJson()},
          {"quantity", order.FQuantity},
          {"openclose", MakeJsonOrNull(GetOpenCloseWord(order.FOpenClose))},
          {"principal", MakeJsonOrNull(GetPrincipalWord(order.FPrincipal))},
          {"status", GetStatusWord(order.FStatus)}};
}

TJson MakeJsonRow(const TSimulatedRow& row) {
  const TAccountTreeRow& after = row.FAfter;
  return {{"level", row.FLevel},
          {"field", after.FField},
          {"key", after.FKey},
          {"currency", MakeJsonOrNull(after.FCurrency.Text())},
          {"caption", after.FCaption},
          {"before", MakeJson(row.FBefore.FValue)},
          {"after", MakeJson(after.FValue)},
          {"before_text", row.FBefore.FText},
          {"after_text", after.FText},
          {"changed", row.IsChanged()}};
}

TJson MakeJsonRefusal(const std::optional<TOrderRefusal>& refusal) {
  if (!refusal) return TJson();
  return {{"row", refusal->FOrder ? TJson(*refusal->FOrder + 1) : TJson()}, {"reason", refusal->FReason}};
}

const std::string& GetCaption(std::string_view key) {
  return TCustomLanguageManager::GetInstance().GetLanguageText("Host", key);
}

}  // namespace

std::vector<TSimulatedRow> CompareTrees(const std::vector<TAccountTreeRow>& before,
                                        const std::vector<TAccountTreeRow>& after) {
  std::vector<TSimulatedRow> rows;
  AddRows(before, after, 0, rows);
  return rows;
}

std::string DescribeRefusal(const TSimulation& simulation) {
  const TOrderRefusal& refusal = *simulation.FRefusal;
  if (!refusal.FOrder || *refusal.FOrder >= simulation.FOrders.size()) return refusal.FReason;
  const TFileOrder& order = simulation.FOrders[*refusal.FOrder];
  std::string text = "row " + std::to_string(*refusal.FOrder + 1);
  text.append(" (line ").append(std::to_string(order.FLine)).append("), ");
  text.append(GetSideWord(order.FSide)).append(" ").append(FloatToText(order.FQuantity)).append(" ");
  return text.append(order.FSymbol).append(": ").append(refusal.FReason);
}

void WriteSimulationText(std::ostream& out, const TSimulation& simulation, const TTerminal& terminal) {
  WriteAccountHeading(out, simulation.FView);
  if (!simulation.FRows.empty()) {
    TTextTable table;
    table.AddColumn("", false);
    table.AddColumn(GetCaption("Simulation_Before"), true);
    table.AddColumn(GetCaption("Simulation_After"), true);
    table.AddColumn("", false);
    for (const TSimulatedRow& row : simulation.FRows) {
      table.AddRow({std::string(2 * row.FLevel, ' ') + row.FAfter.FCaption, row.FBefore.FText,
                    row.FAfter.FText, row.IsChanged() ? "*" : ""});
    }
    table.Write(out, terminal.FColour, terminal.FWidth);
  }
  if (!simulation.FPlaced.empty()) {
    out << '\n';
    WriteOrdersText(out, simulation.FPlaced, terminal);
  }
}

void WriteSimulationJson(std::ostream& out, const TSimulation& simulation) {
  TJson document;
  document["account"] = simulation.FView.FAccount.Text();
  document["base"] = simulation.FView.FBase.Text();
  document["convert"] = simulation.FView.FConvert.Text();
  document["orders"] = TJson::array();
  for (const TFileOrder& order : simulation.FOrders) document["orders"].push_back(MakeJsonOrder(order));
  document["refused"] = MakeJsonRefusal(simulation.FRefusal);
  document["rows"] = TJson::array();
  for (const TSimulatedRow& row : simulation.FRows) document["rows"].push_back(MakeJsonRow(row));
  document["placed"] = MakeOrdersJson(simulation.FPlaced);
  WriteJson(out, document);
}

void WriteSimulationCsv(std::ostream& out, const TSimulation& simulation) {
  WriteCsvLine(out, {"level", "field", "key", "currency", "caption", "before", "after", "before_text",
                     "after_text", "changed"});
  for (const TSimulatedRow& row : simulation.FRows) {
    const TAccountTreeRow& after = row.FAfter;
    WriteCsvLine(out, {std::to_string(row.FLevel), IntegerToText(after.FField), after.FKey,
                       after.FCurrency.Text(), after.FCaption, row.FBefore.FValue.AsText(),
                       after.FValue.AsText(), row.FBefore.FText, after.FText, row.IsChanged() ? "Y" : "N"});
  }
}

}  // namespace margindesk
