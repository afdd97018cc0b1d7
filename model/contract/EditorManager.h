#pragma once

#include <string>
#include <string_view>

#include "model/contract/Code.h"
#include "model/contract/ColumnInfo.h"
#include "model/contract/Service.h"

namespace margindesk {

class TAccountEdit;
class TGridTableView;

// The host's editors: account boxes with their groups, symbols, and the column layouts of grids.
class TEditorManager : public TService<TEditorManager> {
 public:
  // A typed symbol as the host writes it; the text itself when the host knows no better.
  virtual std::string GetConvertSymbol(std::string_view symbol) const = 0;
  // A grid's column order, visibility, width and sorting as text, and back. A layout that is damaged, or
  // names none of the columns, leaves the grid as it is.
  virtual std::string GetGridColumnLayout(const TGridTableView& view, const TColumnList& columns) const = 0;
  virtual void SetGridColumnLayout(TGridTableView& view, std::string_view layout,
                                   const TColumnList& columns) = 0;
  // Makes an edit an account box of a group: boxes of one group (not the empty one) follow each other's
  // account. Registering again moves it to the new group. flag1 is false and flag2 true: the box is not
  // read-only, and what is typed into it is looked up.
  virtual void RegisterAccountEditor(TAccountEdit& edit, std::string_view groupID, bool flag1,
                                     bool flag2) = 0;
  virtual void RemoveAccountEditor(TAccountEdit& edit) = 0;
  // Puts an account from a saved layout into the box, as if the user had chosen it.
  virtual void SetAccountLayoutAccount(TAccountEdit& edit, TCode account) = 0;
};

extern template class TService<TEditorManager>;

}  // namespace margindesk
