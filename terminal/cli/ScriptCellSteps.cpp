// Steps at trees and grids. A row is the place of a row among all that the step "tree" or "grid" lists.
#include "controls/GridTableView.h"
#include "controls/VirtualTree.h"
#include "host/services/SymbolList.h"
#include "model/contract/Constdef.h"
#include "terminal/cli/AccountTree.h"
#include "terminal/cli/ScriptControls.h"
#include "terminal/cli/ScriptSteps.h"
#include "terminal/cli/TreeHint.h"

namespace margindesk {

namespace {

TVirtualTree& FindTree(const TFrame& frame, const TScriptArguments& step) {
  return FindControlOf<TVirtualTree>(frame, step.Text("name"), "tree");
}

TGridTableView& FindGrid(const TFrame& frame, const TScriptArguments& step) {
  return FindControlOf<TGridTableView>(frame, step.Text("name"), "grid");
}

template <class T>
const T& CheckRow(const std::vector<T>& rows, std::int32_t row) {
  if (row >= 0 && static_cast<std::size_t>(row) < rows.size()) return rows[static_cast<std::size_t>(row)];
  throw TScriptError("row " + std::to_string(row) + " of " + std::to_string(rows.size()));
}

template <class T>
auto& CheckColumn(const T& control, std::int32_t tag) {
  if (const auto* column = control.FindColumn(tag)) return *column;
  throw TScriptError("there is no column " + std::to_string(tag));
}

TJson NameOrNull(const TControl* control) {
  return control == nullptr ? TJson() : MakeJsonOrNull(control->GetComponentName());
}

TJson Tree(TScriptSession& session, const TScriptArguments& step) {
  TVirtualTree& tree = FindTree(session.Frame(step), step);
  const TTreeColumn* caption = tree.FindColumn(kCellCaption);
  const TTreeColumn* value = tree.FindColumn(kCellValue);
  if (caption == nullptr || value == nullptr) throw TScriptError("the tree shows no figures");
  TJson rows = TJson::array();
  for (const TVirtualTreeNode* node : tree.GetNodes()) {
    const TAccountNodePlace place = GetAccountNodePlace(*node->GetData());
    rows.push_back({{"level", node->GetLevel()},
                    {"field", place.FField},
                    {"currency", MakeJsonOrNull(place.FCurrency.Text())},
                    {"caption", tree.GetDisplayText(node, *caption)},
                    {"text", tree.GetDisplayText(node, *value)},
                    {"editor", NameOrNull(tree.GetEditProperties(node, *value))},
                    {"style", NameOrNull(tree.GetContentStyle(node, *value))}});
  }
  return {{"rows", rows}};
}

TJson Grid(TScriptSession& session, const TScriptArguments& step) {
  TGridTableView& grid = FindGrid(session.Frame(step), step);
  TJson columns = TJson::array();
  for (const TGridColumn& column : grid.GetColumns()) {
    if (column.FVisible) columns.push_back({{"tag", column.FTag}, {"caption", column.FCaption}});
  }
  TJson rows = TJson::array();
  for (const std::int32_t record : grid.GetDisplayOrder()) {
    TJson texts = TJson::array();
    for (const TGridColumn& column : grid.GetColumns()) {
      if (column.FVisible) texts.push_back(grid.GetDisplayText(record, column));
    }
    rows.push_back({{"record", record}, {"texts", texts}});
  }
  return {{"columns", columns}, {"rows", rows}};
}

TVariant MakeValue(const TJson& value) {
  if (value.is_string()) return TVariant::Text(value.get<std::string>());
  if (value.is_null()) return TVariant::Null();
  if (!value.is_number()) throw TScriptError("a cell takes a text, a number or null");
  const double number = value.get<double>();
  const bool small = number >= std::numeric_limits<std::int32_t>::min() &&
                     number <= std::numeric_limits<std::int32_t>::max();
  return value.is_number_integer() && small ? TVariant::Integer(value.get<std::int32_t>())
                                            : TVariant::Float(number);
}

TJson Cell(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  TGridTableView& grid = FindGrid(frame, step);
  CheckReachable(frame, grid);
  const std::int32_t record = CheckRow(grid.GetDisplayOrder(), step.Integer("row"));
  const TGridColumn& column = CheckColumn(grid, step.Integer("column"));
  if (!column.FVisible) throw TScriptError("the column is hidden");
  const std::string refusal = grid.EditCell(record, column.FTag, MakeValue(step.Scalar("value")));
  if (!refusal.empty()) throw TScriptError(refusal);
  return TJson::object();
}

TJson Spin(TScriptSession& session, const TScriptArguments& step) {
  constexpr std::int32_t kMostSpins = 10'000;
  const TFrame& frame = session.Frame(step);
  TGridTableView& grid = FindGrid(frame, step);
  CheckReachable(frame, grid);
  const std::int32_t record = CheckRow(grid.GetDisplayOrder(), step.Integer("row"));
  const TGridColumn& column = CheckColumn(grid, step.Integer("column"));
  if (!column.FVisible) throw TScriptError("the column is hidden");
  const std::string direction = step.Text("direction");
  if (direction != "up" && direction != "down") throw TScriptError("\"direction\" is \"up\" or \"down\"");
  const std::string by = step.Has("by") ? step.Text("by") : "mouse";
  if (by != "key" && by != "mouse") throw TScriptError("\"by\" is \"key\" or \"mouse\"");
  const std::int32_t count = step.Has("count") ? step.Integer("count") : 1;
  if (count < 1 || count > kMostSpins) {
    throw TScriptError("\"count\" is 1 to " + std::to_string(kMostSpins));
  }
  const std::string refusal =
      grid.SpinCell(record, column.FTag, direction == "up" ? count : -count, by == "key");
  if (!refusal.empty()) throw TScriptError(refusal);
  return {{"text", grid.GetDisplayText(record, column)}};
}

// Drops the symbol list down from a cell, searches in it, and picks a symbol where asked to.
TJson Symbols(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  TGridTableView& grid = FindGrid(frame, step);
  CheckReachable(frame, grid);
  const std::int32_t record = CheckRow(grid.GetDisplayOrder(), step.Integer("row"));
  const auto check = [](const std::string& refusal) {
    if (!refusal.empty()) throw TScriptError(refusal);
  };
  check(grid.OpenEditor(record, CheckColumn(grid, step.Integer("column")).FTag));
  check(grid.DropDownEditor());
  auto& panel = FindControlOf<TSymbolListPanel>(frame, "", "symbol list");
  panel.Search(step.Text("text"));
  TJson hits = TJson::array();
  for (const TSymbolHit& hit : panel.GetHits()) {
    hits.push_back({{"symbol", hit.FSymbol.Text()}, {"name", hit.FName}, {"exchange", hit.FExchange.Text()}});
  }
  if (step.Has("choose") && !panel.Choose(static_cast<std::size_t>(step.Integer("choose")))) {
    throw TScriptError("the list has no such entry");
  }
  grid.CancelEditor();
  return {{"hits", std::move(hits)}};
}

TJson DoubleClick(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  TGridTableView& grid = FindGrid(frame, step);
  CheckReachable(frame, grid);
  grid.SetFocusedRecordIndex(CheckRow(grid.GetDisplayOrder(), step.Integer("row")));
  grid.DoubleClickCell();
  return TJson::object();
}

TJson DescribeHint(const TFrame& frame) {
  const THintStyleController* hints = FindShownHint(frame);
  if (hints == nullptr) return {{"hint", nullptr}, {"caption", nullptr}};
  return {{"hint", hints->GetHintText()}, {"caption", MakeJsonOrNull(hints->GetHintCaption())}};
}

TJson Hover(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  TVirtualTree& tree = FindTree(frame, step);
  CheckReachable(frame, tree);
  const TVirtualTreeNode& node = *CheckRow(tree.GetNodes(), step.Integer("row"));
  MoveMouseTo(tree, node, CheckColumn(tree, step.Integer("column")));
  return DescribeHint(frame);
}

TJson Leave(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  FindTree(frame, step).MouseLeave();
  return DescribeHint(frame);
}

}  // namespace

std::vector<TScriptStep> MakeCellSteps() {
  const TScriptMember name{"name", TScriptKind::kText, false};
  const TScriptMember row{"row", TScriptKind::kInteger};
  const TScriptMember column{"column", TScriptKind::kInteger};
  return {{"tree", {name}, &Tree},
          {"grid", {name}, &Grid},
          {"cell", {name, row, column, {"value", TScriptKind::kScalar}}, &Cell},
          {"spin",
           {name,
            row,
            column,
            {"direction"},
            {"by", TScriptKind::kText, false},
            {"count", TScriptKind::kInteger, false}},
           &Spin},
          {"symbols", {name, row, column, {"text"}, {"choose", TScriptKind::kInteger, false}}, &Symbols},
          {"doubleclick", {name, row}, &DoubleClick},
          {"hover", {name, row, column}, &Hover},
          {"leave", {name}, &Leave}};
}

}  // namespace margindesk
