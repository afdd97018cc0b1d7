#pragma once

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QTableView>
#include <functional>
#include <utility>

#include "controls/GridTableView.h"
#include "terminal/desktop/binders/CellField.h"
#include "terminal/desktop/binders/DropList.h"
#include "terminal/desktop/binders/GridModel.h"

namespace margindesk {

// Lets a person edit the cells of a grid in place. Typing into a cell, clicking it, Enter or F2 open its
// editor; every key goes through the grid's editor steps. Tab commits and goes to the next cell, Enter to the
// next row, Escape leaves the cell as it was. Leaving the grid in any other way commits first, before what
// was clicked or pressed there is done; a value that is refused keeps the editor open with the reason beside
// it, and what was clicked does not happen. Cells of a spreadsheet are pasted from the current cell on.
class TGridEditors : public QObject {
 public:
  // `refresh` shows the grid anew at once.
  TGridEditors(TGridTableView& grid, QTableView& view, TGridModel& model, std::function<void()> refresh);
  ~TGridEditors() override;

  // The grid changed: takes over what the form made of the open editor, or closes it with the grid's.
  void Follow();
  // Cells have moved.
  void Place();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // A front's step at the grid; what the grid tells meanwhile is no news.
  class TStep;

  bool IsEditable(const QModelIndex& index) const;
  bool Open(const QModelIndex& index);
  bool Commit();  // false: the value is refused and the editor is still open
  void Cancel();
  void Close();
  void ShowValue();
  void ShowReason(const QString& reason);  // empty: none
  bool IsInside(const QWidget* widget) const;

  void Typed(const QString& text);
  void Spin(bool up, bool byKey);
  void ChooseNext(int step);
  void ChooseByKey(const QString& text);
  void Choose(int entry);
  void DropDown();
  void DropEntries(const QRect& place);
  void DropSymbols(const QRect& place);

  void Paste();

  void EnterCells();
  bool ViewKey(QKeyEvent& key);
  bool LineEvent(QEvent& event);
  bool LineKey(QKeyEvent& key);
  void ReportKey(const QKeyEvent& key);
  bool ViewClicked(const QMouseEvent& mouse);
  bool LeaveFor(QObject* watched, const QEvent& event);
  void FocusMoved(QWidget* now);
  bool MoveToNextCell(bool forward);
  void MoveToNextRow();
  void GoTo(const QModelIndex& index);

  TGridTableView& FGrid;
  QTableView& FView;
  TGridModel& FModel;
  std::function<void()> FRefresh;
  TCellField* FField = nullptr;  // while an editor is open
  QLabel* FReason = nullptr;
  QPointer<TDropList> FDropList;
  TVariant FShown;   // what of the grid's editor stands in the field
  QString FRefusal;  // why the text in the field is no value of the cell
  bool FStepping = false;
};

class TGridEditors::TStep {
 public:
  explicit TStep(TGridEditors& editors)
      : FEditors(&editors), FBefore(std::exchange(editors.FStepping, true)) {}
  ~TStep() {
    if (FEditors) FEditors->FStepping = FBefore;
  }
  TStep(const TStep&) = delete;
  TStep& operator=(const TStep&) = delete;

  bool IsAlive() const { return !FEditors.isNull(); }  // the form may have closed the view

 private:
  const QPointer<TGridEditors> FEditors;
  const bool FBefore;
};

}  // namespace margindesk
