#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/contract/EditorManager.h"

namespace margindesk {

// The host's editors.
//
// Account boxes. An account is chosen by typing it (CommitAccountText), by the host on the user's behalf
// (ChooseAccount) or by a saved layout. The chosen account stands in the box's text and hint and, when it is
// not empty, in those of every other box of the group. A box that joins a group empty takes the account of
// the first box there that has one. The two flags of the registration are not used.
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

  // Chooses an account for a box. An empty one empties the box alone: nobody follows it there.
  void ChooseAccount(TAccountEdit& edit, TCode account);
  // Takes the text that was typed into a box as the chosen account, trimmed and upper-cased. An account that
  // the host does not hold yet is taken all the same: the back office is asked for it, and its figures come
  // with the account load.
  void CommitAccountText(TAccountEdit& edit);

  std::size_t GetAccountEditorCount() const noexcept { return FBoxes.size(); }

 private:
  struct TBox {
    TAccountEdit* FEdit;  // not owned; removed before it goes
    std::string FGroup;
  };

  std::vector<TBox> FBoxes;  // in the order of registration
};

}  // namespace margindesk
