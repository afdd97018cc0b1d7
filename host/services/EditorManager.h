#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/EditorManager.h"

namespace margindesk {

// The host's editors.
//
// Account boxes. An account is chosen by typing it and leaving the box (ResolveText, which the box calls), by
// the host on the user's behalf (ChooseAccount) or by a saved layout. The chosen account stands in the box's
// text and hint and, when it is not empty, in those of every other box of the group that shows another one;
// these are told, so that their views follow. A disabled box is locked: it follows nobody. A box that joins a
// group empty takes the account of the first box there that has one, and is told. The two flags of the
// registration are not used.
//
// Whoever is told may choose again and may close views, with their boxes.
//
// Symbols. A typed symbol is trimmed and upper-cased; a value under that text in the section "SymbolAlias" of
// the configuration takes its place (once: an alias of an alias is not followed).
//
// Grid layouts. "tag,visible,width,sorting,place;" for each column in display order: the column's tag, 1 or
// 0, pixels, N, A or D (not sorted, ascending, descending) and the place among the sorted columns (-1 when
// not sorted). Applied to a grid, a tag that it lacks is passed over, and columns that the layout does not
// name follow the named ones in the order they had.
class THostEditorManager : public TEditorManager {
 public:
  std::string GetConvertSymbol(std::string_view symbol) const override;
  std::string GetGridColumnLayout(const TGridTableView& view, const TColumnList& columns) const override;
  void SetGridColumnLayout(TGridTableView& view, std::string_view layout,
                           const TColumnList& columns) override;
  void RegisterAccountEditor(TAccountEdit& edit, std::string_view groupID, bool flag1, bool flag2) override;
  void RemoveAccountEditor(TAccountEdit& edit) override;
  void SetAccountLayoutAccount(TAccountEdit& edit, TCode account) override;

  // Chooses an account for a box and tells the box. An empty one empties the box alone: nobody follows it
  // there.
  void ChooseAccount(TAccountEdit& edit, TCode account);
  // Takes the text of a box as its chosen account, trimmed and upper-cased; the box itself is not told, for
  // it goes on to its form's own event. An account that the host does not hold yet is taken all the same: the
  // back office is asked for it, and its figures come with the account load.
  void ResolveText(TAccountEdit& edit);

  std::size_t GetAccountEditorCount() const noexcept { return FBoxes.size(); }
  std::map<std::string, std::size_t> CountAccountEditors() const;  // by group

 private:
  struct TBox {
    TAccountEdit* FEdit;  // not owned; removed before it goes
    std::string FGroup;
  };

  bool Contains(const TAccountEdit* edit) const;
  // Writes an account into a box and into the others that follow it, and answers these.
  std::vector<TAccountEdit*> Write(TAccountEdit& edit, TCode account);
  // Tells those that are still there and still show the account.
  void Tell(const std::vector<TAccountEdit*>& followers, TCode account) const;

  std::vector<TBox> FBoxes;  // in the order of registration
};

}  // namespace margindesk
