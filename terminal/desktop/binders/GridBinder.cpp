#include "terminal/desktop/binders/GridBinder.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "terminal/desktop/Skin.h"

namespace margindesk {

namespace {

constexpr std::chrono::milliseconds kFrame{50};
// In pixels at 100 % scale, as the widths of the model's columns are.
constexpr int kRowHeight = 22;       // at least
constexpr int kRowPadding = 8;       // above and below a text together
constexpr int kLeastWidth = 30;      // of a column that names none
constexpr int kMostFitted = 160;     // that a column widens by itself so that no text is cut
constexpr double kLeastPart = 0.75;  // of its width that a column keeps in a narrow view

}  // namespace

TGridBinder::TGridBinder(TGridTableView& grid, QTableView& view)
    : QObject(&view),
      FGrid(grid),
      FView(view),
      FModel(grid, this),
      FDelegate(this),
      FEditors(grid, view, FModel, [this] { Refresh(); }) {
  for (const TGridColumn& column : grid.GetColumns()) FFormWidths[column.FTag] = column.FWidth;
  view.setModel(&FModel);
  view.setItemDelegate(&FDelegate);
  view.setAlternatingRowColors(true);
  view.setShowGrid(false);
  view.setWordWrap(false);
  view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view.setSelectionBehavior(QAbstractItemView::SelectRows);
  view.setContextMenuPolicy(Qt::CustomContextMenu);
  view.verticalHeader()->hide();
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
  view.horizontalHeader()->setSectionsMovable(true);
  view.horizontalHeader()->setHighlightSections(false);
  view.horizontalHeader()->setMinimumSectionSize(kLeastWidth);
  view.horizontalHeader()->setSectionsClickable(true);
  FTimer.setParent(this);  // a fault then has a view
  FTimer.setSingleShot(true);
  FTimer.setInterval(kFrame);
  QObject::connect(&FTimer, &QTimer::timeout, this, [this] { Refresh(); });
  QObject::connect(view.horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
    const TGridColumn& column = FModel.GetColumn(section);
    if (!column.FAllowSorting) return;
    const bool ascending = column.FSortOrder != TSortOrder::Ascending;
    FGrid.SetSorting(column.FTag, ascending ? TSortOrder::Ascending : TSortOrder::Descending);
  });
  QObject::connect(view.horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section) {
    if (!FRefreshing) TakeColumns(section);
  });
  QObject::connect(view.horizontalHeader(), &QHeaderView::sectionMoved, this, [this] { TakeColumns(); });
  QObject::connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this,
                   [this] { TakeSelection(); });
  QObject::connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this,
                   [this](const QModelIndex& current, const QModelIndex& previous) {
                     if (FRefreshing || !current.isValid()) return;
                     FCurrentTag = FModel.GetColumn(current.column()).FTag;
                     if (current.row() != previous.row()) {
                       FGrid.SetFocusedRecordIndex(FModel.GetRecord(current.row()));
                     }
                   });
  QObject::connect(&FModel, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& changed) {
    // A mark that comes up is brought into sight.
    if (!changed.data(Qt::ToolTipRole).toString().isEmpty()) FView.scrollTo(changed);
  });
  QObject::connect(&view, &QTableView::activated, this, [this](const QModelIndex& index) {
    if (FModel.flags(index).testFlag(Qt::ItemIsEditable)) return;
    FGrid.SetFocusedRecordIndex(FModel.GetRecord(index.row()));
    FGrid.DoubleClickCell();
  });
  FGrid.SetOnUpdate(MakeEvent<&TGridBinder::GridUpdated>(this));
  ShowRowHeight();
  ShowColumns();
  ShowFocus();
}

TGridBinder::~TGridBinder() { FGrid.SetOnUpdate({}); }

void TGridBinder::GridUpdated() {
  FEditors.Follow();
  if (!FRefreshing && !FTimer.isActive()) FTimer.start();
}

void TGridBinder::Refresh() {
  FTimer.stop();
  const bool before = std::exchange(FRefreshing, true);
  const int first = FView.rowAt(0);
  const int last = FView.rowAt(FView.viewport()->height() - 1);
  if (FModel.Refresh(std::max(first, 0), last < 0 ? FModel.rowCount() - 1 : last)) {
    ShowColumns();
    ShowFocus();
  }
  FEditors.Place();
  FRefreshing = before;
}

// What the mouse over the current cell would tell.
void TGridBinder::ShowHint() {
  const QModelIndex current = FView.currentIndex();
  if (!current.isValid()) return;
  FView.scrollTo(current);
  QWidget& viewport = *FView.viewport();
  const QPoint place = FView.visualRect(current).center();
  QHelpEvent help(QEvent::ToolTip, place, viewport.mapToGlobal(place));
  QApplication::sendEvent(&viewport, &help);
}

bool TGridBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress &&
      static_cast<const QKeyEvent*>(event)->matches(QKeySequence::WhatsThis)) {
    ShowHint();
    return true;
  }
  if (watched == &FView && event->type() == QEvent::FontChange) {
    FLeastWidths.clear();
    ShowRowHeight();
    ShowColumns();
  } else if (watched != &FView && event->type() == QEvent::Resize) {  // its viewport
    ShareWidth();
  }
  return QObject::eventFilter(watched, event);
}

void TGridBinder::ShowRowHeight() {
  const int height = std::max(Scaled(kRowHeight), FView.fontMetrics().height() + Scaled(kRowPadding));
  FView.verticalHeader()->setMinimumSectionSize(height);
  FView.verticalHeader()->setDefaultSectionSize(height);
  FDelegate.SetRowHeight(height);
}

// It only grows until the font changes, so that columns stand still while figures move.
int TGridBinder::GetLeastWidth(int section) {
  const TGridColumn& column = FModel.GetColumn(section);
  const int button = column.FAllowEditing && column.FShowEditButtons ? GetCellButtonWidth() : 0;
  int& least = FLeastWidths[column.FTag];
  least = std::max({least, Scaled(column.FMinWidth), Scaled(kLeastWidth),
                    static_cast<int>(Scaled(column.FWidth) * kLeastPart),
                    FView.horizontalHeader()->sectionSizeHint(section) + button,
                    std::min(static_cast<const QAbstractItemView&>(FView).sizeHintForColumn(section),
                             Scaled(kMostFitted))});
  return least;
}

bool TGridBinder::IsSized(const TGridColumn& column) const {
  const auto form = FFormWidths.find(column.FTag);
  return form != FFormWidths.end() && form->second != column.FWidth;
}

// The columns fill the view in the proportion of their widths, beside those that the person sized; none is
// narrower than reads well, so that a narrow view scrolls.
void TGridBinder::ShareWidth() {
  const int count = FModel.columnCount();
  if (!FGrid.GetOptions().FColumnAutoWidth || count == 0) return;
  const bool before = std::exchange(FRefreshing, true);
  QHeaderView& header = *FView.horizontalHeader();
  const int room = FView.viewport()->width();
  std::vector<int> widths(static_cast<std::size_t>(count));  // of those that do not share; else 0
  std::vector<int> leasts;
  for (int i = 0; i < count; ++i) {
    leasts.push_back(GetLeastWidth(i));
    const TGridColumn& column = FModel.GetColumn(i);
    if (IsSized(column)) widths[static_cast<std::size_t>(i)] = Scaled(std::max(column.FWidth, kLeastWidth));
  }
  const auto wanted = [this](int i) { return Scaled(std::max(FModel.GetColumn(i).FWidth, kLeastWidth)); };
  double part = 0;
  for (bool again = true; again;) {
    again = false;
    int rest = room;
    int shared = 0;
    for (int i = 0; i < count; ++i) {
      const int width = widths[static_cast<std::size_t>(i)];
      rest -= width;
      shared += width == 0 ? wanted(i) : 0;
    }
    part = shared == 0 ? 0 : std::max(0.0, static_cast<double>(rest) / shared);
    for (int i = 0; i < count; ++i) {
      int& width = widths[static_cast<std::size_t>(i)];
      const int least = leasts[static_cast<std::size_t>(i)];
      if (width > 0 || wanted(i) * part >= least) continue;
      width = least;
      again = true;
    }
  }
  double edge = 0;  // of the columns so far; rounding gathers nowhere
  for (int i = 0; i < count; ++i) {
    const int width = widths[static_cast<std::size_t>(i)];
    const double next = edge + (width > 0 ? width : wanted(i) * part);
    header.resizeSection(i, static_cast<int>(std::round(next)) - static_cast<int>(std::round(edge)));
    edge = next;
  }
  FRefreshing = before;
}

void TGridBinder::ShowColumns() {
  const bool before = std::exchange(FRefreshing, true);
  QHeaderView* header = FView.horizontalHeader();
  int sorted = -1;
  for (int i = 0; i < FModel.columnCount(); ++i) {
    const TGridColumn& column = FModel.GetColumn(i);
    header->moveSection(header->visualIndex(i), i);
    // A width that the person chose stands as it is; any other grows with what it is to show.
    if (!FGrid.GetOptions().FColumnAutoWidth) {
      const int width = Scaled(column.FWidth);
      header->resizeSection(i, IsSized(column) ? width : std::max(width, GetLeastWidth(i)));
    }
    if (column.FSortIndex == 0) sorted = i;
  }
  ShareWidth();
  header->setSortIndicatorShown(sorted >= 0);
  if (sorted >= 0) {
    header->setSortIndicator(sorted, FModel.GetColumn(sorted).FSortOrder == TSortOrder::Descending
                                         ? Qt::DescendingOrder
                                         : Qt::AscendingOrder);
  }
  FView.setSelectionMode(FGrid.GetMultiSelect() ? QAbstractItemView::ExtendedSelection
                                                : QAbstractItemView::SingleSelection);
  FRefreshing = before;
}

void TGridBinder::ShowFocus() {
  const bool before = std::exchange(FRefreshing, true);
  const int row = FModel.GetRow(FGrid.GetFocusedRecordIndex());
  const int column = std::max(FModel.FindColumn(FCurrentTag), 0);
  if (row >= 0)
    FView.selectionModel()->setCurrentIndex(FModel.index(row, column), QItemSelectionModel::NoUpdate);
  QItemSelection selection;
  for (const std::int32_t record : FGrid.GetSelection()) {
    const int selected = FModel.GetRow(record);
    if (selected >= 0)
      selection.select(FModel.index(selected, 0), FModel.index(selected, FModel.columnCount() - 1));
  }
  FView.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  FRefreshing = before;
}

void TGridBinder::TakeColumns(int resized) {
  if (FRefreshing) return;
  const bool before = std::exchange(FRefreshing, true);
  QHeaderView* header = FView.horizontalHeader();
  std::vector<TGridColumn> columns = FGrid.GetColumns();
  // The shown ones stand in the person's order, each on a place that a shown one had.
  std::vector<TGridColumn> shown;
  for (int place = 0; place < FModel.columnCount(); ++place) {
    const int section = header->logicalIndex(place);
    const auto found = std::ranges::find(columns, FModel.GetColumn(section).FTag, &TGridColumn::FTag);
    if (found == columns.end()) continue;
    shown.push_back(*found);
    if (section == resized) shown.back().FWidth = Unscaled(header->sectionSize(section));
  }
  auto next = shown.begin();
  for (TGridColumn& column : columns) {
    if (column.FVisible && next != shown.end()) column = *next++;
  }
  FGrid.SetColumns(std::move(columns));
  FRefreshing = before;
}

void TGridBinder::TakeSelection() {
  if (FRefreshing) return;
  std::vector<std::int32_t> records;
  for (const QModelIndex& index : FView.selectionModel()->selectedRows()) {
    records.push_back(FModel.GetRecord(index.row()));
  }
  FGrid.SetSelection(std::move(records));
}

}  // namespace margindesk
