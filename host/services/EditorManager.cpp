#include "host/services/EditorManager.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

#include "controls/AccountEdit.h"
#include "controls/Event.h"
#include "controls/GridTableView.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr std::string_view kAliasSection = "SymbolAlias";
constexpr std::int32_t kMaximumWidth = 10'000;  // pixels
constexpr std::string_view kSortCodes = "NAD";  // in the order of TSortOrder

void Show(TAccountEdit& edit, TCode account) {
  // The text comes last: its change event may close the view, and the box with it.
  edit.SetHint(account.Text());
  edit.SetText(account.Text());
}

const TColumnInfo* FindColumnInfo(const TColumnList& columns, std::int32_t tag) {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [tag](const auto& column) { return column->FId == tag; });
  return found == columns.end() ? nullptr : found->get();
}

// Cuts the text before `separator` off; none when there is no separator.
std::optional<std::string_view> Cut(std::string_view& text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view cut = text.substr(0, at);
  text.remove_prefix(at + 1);
  return cut;
}

bool CutInteger(std::string_view& text, char separator, std::int32_t& value) {
  const auto cut = Cut(text, separator);
  return cut && TryTextToInteger(*cut, value);
}

// The columns that a layout text names, in its order; none when the text is damaged.
std::optional<std::vector<TGridColumn>> ParseLayout(std::string_view layout) {
  std::vector<TGridColumn> columns;
  while (!layout.empty()) {
    TGridColumn column;
    std::int32_t visible = 0;
    if (!CutInteger(layout, ',', column.FTag) || !CutInteger(layout, ',', visible) ||
        !CutInteger(layout, ',', column.FWidth)) {
      return std::nullopt;
    }
    const auto sorting = Cut(layout, ',');
    const std::size_t order =
        sorting && sorting->size() == 1 ? kSortCodes.find(*sorting) : std::string_view::npos;
    if (order == std::string_view::npos || !CutInteger(layout, ';', column.FSortIndex)) return std::nullopt;
    column.FVisible = visible == 1;
    column.FSortOrder = static_cast<TSortOrder>(order);

    const bool sorted = column.FSortOrder != TSortOrder::None;
    const bool twice = std::any_of(columns.begin(), columns.end(),
                                   [&](const TGridColumn& other) { return other.FTag == column.FTag; });
    if (twice || (visible != 0 && visible != 1) || column.FWidth < 0 || column.FWidth > kMaximumWidth ||
        sorted != (column.FSortIndex >= 0)) {
      return std::nullopt;
    }
    columns.push_back(std::move(column));
  }
  return columns;
}

}  // namespace

std::string THostEditorManager::GetConvertSymbol(std::string_view symbol) const {
  std::string text = UpperCaseText(TrimText(symbol));
  const std::string alias = TCustomConfigManager::GetInstance().ReadString(kAliasSection, text);
  return alias.empty() ? text : alias;
}

std::string THostEditorManager::GetGridColumnLayout(const TGridTableView& view,
                                                    const TColumnList& columns) const {
  std::string layout;
  for (const TGridColumn& column : view.GetColumns()) {
    if (FindColumnInfo(columns, column.FTag) == nullptr) continue;
    layout.append(IntegerToText(column.FTag)).append(column.FVisible ? ",1," : ",0,");
    layout.append(IntegerToText(column.FWidth)).append(1, ',');
    layout.append(1, kSortCodes[static_cast<std::size_t>(column.FSortOrder)]).append(1, ',');
    layout.append(IntegerToText(column.FSortIndex)).append(1, ';');
  }
  return layout;
}

void THostEditorManager::SetGridColumnLayout(TGridTableView& view, std::string_view layout,
                                             const TColumnList& columns) {
  const auto stored = ParseLayout(layout);
  if (!stored) return;
  std::vector<TGridColumn> left = view.GetColumns();
  std::vector<TGridColumn> arranged;
  for (const TGridColumn& wanted : *stored) {
    const TColumnInfo* const info = FindColumnInfo(columns, wanted.FTag);
    const auto found = std::find_if(left.begin(), left.end(),
                                    [&](const TGridColumn& column) { return column.FTag == wanted.FTag; });
    if (info == nullptr || found == left.end()) continue;
    TGridColumn& column = arranged.emplace_back(std::move(*found));
    left.erase(found);
    column.FVisible = wanted.FVisible;
    column.FWidth = std::max(wanted.FWidth, info->FMinWidth);
    column.FSortOrder = wanted.FSortOrder;
    column.FSortIndex = wanted.FSortIndex;
  }
  if (arranged.empty()) return;
  std::move(left.begin(), left.end(), std::back_inserter(arranged));
  view.SetColumns(std::move(arranged));
}

void THostEditorManager::RegisterAccountEditor(TAccountEdit& edit, std::string_view groupID, bool /*flag1*/,
                                               bool /*flag2*/) {
  RemoveAccountEditor(edit);
  const auto leader = std::ranges::find_if(FBoxes, [&](const TBox& box) {
    return !groupID.empty() && box.FGroup == groupID && !box.FEdit->GetHint().empty();
  });
  const bool follows = leader != FBoxes.end() && edit.GetEnabled() && edit.GetHint().empty();
  const TCode account = follows ? TCode(leader->FEdit->GetHint()) : TCode();
  FBoxes.push_back({&edit, std::string(groupID)});
  edit.SetOnResolve(MakeEvent<&THostEditorManager::ResolveText>(this));
  if (!follows) return;
  Show(edit, account);
  if (Contains(&edit)) edit.NotifyChosen();
}

void THostEditorManager::RemoveAccountEditor(TAccountEdit& edit) {
  if (std::erase_if(FBoxes, [&](const TBox& box) { return box.FEdit == &edit; }) != 0) edit.SetOnResolve({});
}

void THostEditorManager::SetAccountLayoutAccount(TAccountEdit& edit, TCode account) {
  ChooseAccount(edit, account);
}

void THostEditorManager::ChooseAccount(TAccountEdit& edit, TCode account) {
  const bool registered = Contains(&edit);
  const auto followers = Write(edit, account);
  if (!registered || Contains(&edit)) edit.NotifyChosen();
  Tell(followers, account);
}

void THostEditorManager::ResolveText(TAccountEdit& edit) {
  const TCode account(UpperCaseText(TrimText(edit.GetText())));
  if (!account.IsEmpty()) TCustomAccountAdapter::GetInstance().GetAccount(account, true);
  Tell(Write(edit, account), account);
}

std::map<std::string, std::size_t> THostEditorManager::CountAccountEditors() const {
  std::map<std::string, std::size_t> counts;
  for (const TBox& box : FBoxes) ++counts[box.FGroup];
  return counts;
}

bool THostEditorManager::Contains(const TAccountEdit* edit) const {
  return std::ranges::any_of(FBoxes, [&](const TBox& box) { return box.FEdit == edit; });
}

std::vector<TAccountEdit*> THostEditorManager::Write(TAccountEdit& edit, TCode account) {
  std::vector<TAccountEdit*> followers;
  const auto chosen = std::ranges::find(FBoxes, &edit, &TBox::FEdit);
  if (!account.IsEmpty() && chosen != FBoxes.end() && !chosen->FGroup.empty()) {
    for (const TBox& box : FBoxes) {
      const bool follows = box.FEdit != &edit && box.FGroup == chosen->FGroup && box.FEdit->GetEnabled() &&
                           box.FEdit->GetHint() != account.Text();
      if (follows) followers.push_back(box.FEdit);
    }
  }
  Show(edit, account);
  for (TAccountEdit* const follower : followers) {
    if (Contains(follower)) Show(*follower, account);
  }
  return followers;
}

void THostEditorManager::Tell(const std::vector<TAccountEdit*>& followers, TCode account) const {
  for (TAccountEdit* const follower : followers) {
    if (Contains(follower) && follower->GetHint() == account.Text()) follower->NotifyChosen();
  }
}

}  // namespace margindesk
