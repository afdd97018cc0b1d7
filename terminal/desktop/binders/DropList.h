#pragma once

#include <QFrame>
#include <QLineEdit>
#include <QTreeView>
#include <functional>
#include <vector>

namespace margindesk {

// A list that drops down from a cell: rows to choose from by click, Enter and arrow keys, and where a search
// is given a box above them in which the person types. It closes by itself when the person clicks elsewhere
// or presses Escape, and goes when it is closed.
class TDropList : public QFrame {
 public:
  using TRows = std::vector<QStringList>;
  using TChoose = std::function<void(int row)>;
  using TSearch = std::function<TRows(const QString& text)>;

  // The headers are shown where there are any. The list is closed before `choose` is called.
  TDropList(QWidget* parent, const QStringList& headers, TRows rows, TChoose choose);

  // Adds the box, holding `text`, and lists what the search finds for it.
  void AddSearch(const QString& hint, const QString& text, TSearch search);
  void SetCurrentRow(int row);
  // Shows it below the place, or above where the screen ends. The size is at least `size`.
  void DropDown(const QRect& globalPlace, QSize size);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class TModel;

  bool KeyPressed(QKeyEvent& key);
  void ChooseRow(int row);

  TModel* FModel;
  QTreeView* FList;
  QLineEdit* FSearchBox = nullptr;
  TChoose FChoose;
  TSearch FSearch;
};

}  // namespace margindesk
