#include "terminal/desktop/binders/DropList.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace margindesk {

namespace {

constexpr int kRowPadding = 6;    // pixels above and below a text together
constexpr int kTextPadding = 16;  // and beside it
constexpr int kMostRows = 12;     // before a list without a search scrolls

}  // namespace

class TDropList::TModel : public QAbstractTableModel {
 public:
  TModel(QStringList headers, TRows rows, TDropList& list)
      : QAbstractTableModel(&list), FWidget(list), FHeaders(std::move(headers)), FRows(std::move(rows)) {}

  int GetWidth() const {
    int width = 0;
    for (int row = 0; row < rowCount(); ++row)
      width = std::max(width, data(index(row, 0), Qt::SizeHintRole).toSize().width());
    return width;
  }
  int GetRowHeight() const { return FWidget.fontMetrics().height() + kRowPadding; }

  void SetRows(TRows rows) {
    beginResetModel();
    FRows = std::move(rows);
    endResetModel();
  }
  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(FRows.size());
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : std::max(static_cast<int>(FHeaders.size()), 1);
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    const QString text = FRows[static_cast<std::size_t>(index.row())].value(index.column());
    if (role == Qt::SizeHintRole) {
      return QSize(FWidget.fontMetrics().horizontalAdvance(text) + kTextPadding, GetRowHeight());
    }
    return role == Qt::DisplayRole ? text : QVariant();
  }
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return FHeaders.value(section);
  }

 private:
  const QWidget& FWidget;
  QStringList FHeaders;
  TRows FRows;
};

TDropList::TDropList(QWidget* parent, const QStringList& headers, TRows rows, TChoose choose)
    : QFrame(parent, Qt::Popup),
      FModel(new TModel(headers, std::move(rows), *this)),
      FList(new QTreeView(this)),
      FChoose(std::move(choose)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setFrameShape(QFrame::StyledPanel);
  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(1, 1, 1, 1);
  box->setSpacing(2);
  box->addWidget(FList);
  FList->setModel(FModel);
  FList->setRootIsDecorated(false);
  FList->setUniformRowHeights(true);
  FList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  FList->setMinimumHeight(1);
  FList->setAllColumnsShowFocus(true);
  FList->setFrameShape(QFrame::NoFrame);
  FList->setHeaderHidden(headers.isEmpty());
  FList->setEditTriggers(QAbstractItemView::NoEditTriggers);
  FList->setAccessibleName(headers.isEmpty() ? parent->accessibleName() : headers.front());
  FList->installEventFilter(this);
  QObject::connect(FList, &QTreeView::clicked, this,
                   [this](const QModelIndex& index) { ChooseRow(index.row()); });
}

void TDropList::AddSearch(const QString& hint, const QString& text, TSearch search) {
  FSearch = std::move(search);
  FSearchBox = new QLineEdit(text, this);
  FSearchBox->setPlaceholderText(hint);
  FSearchBox->setAccessibleName(hint);
  FSearchBox->setClearButtonEnabled(true);
  FSearchBox->installEventFilter(this);
  static_cast<QVBoxLayout*>(layout())->insertWidget(0, FSearchBox);
  const auto show = [this](const QString& wanted) {
    FModel->SetRows(FSearch(wanted));
    SetCurrentRow(0);
  };
  QObject::connect(FSearchBox, &QLineEdit::textChanged, this, show);
  show(text);
}

void TDropList::SetCurrentRow(int row) { FList->setCurrentIndex(FModel->index(row, 0)); }

void TDropList::DropDown(const QRect& globalPlace, QSize size) {
  const int rows = std::clamp(FModel->rowCount(), 1, kMostRows);
  const int content = FSearchBox == nullptr ? FModel->GetWidth() : 0;
  QSize wanted(std::max({size.width(), globalPlace.width(), content}), size.height());
  if (FSearchBox == nullptr) wanted.setHeight(std::max(size.height(), rows * FModel->GetRowHeight() + 4));
  const QRect screen = parentWidget()->screen()->availableGeometry();
  QPoint corner = globalPlace.bottomLeft() + QPoint(0, 1);
  if (corner.y() + wanted.height() > screen.bottom()) corner.setY(globalPlace.top() - wanted.height());
  corner.setX(
      std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() - wanted.width())));
  corner.setY(std::max(corner.y(), screen.top()));
  setGeometry(QRect(corner, wanted));
  if (FModel->columnCount() > 1) {
    // The first and the last hold codes; the name between them has the rest.
    FList->header()->setStretchLastSection(false);
    FList->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    for (const int column : {0, FModel->columnCount() - 1}) {
      FList->header()->setSectionResizeMode(column, QHeaderView::Interactive);
      FList->header()->resizeSection(column, wanted.width() / 5);
    }
  }
  show();
  if (FSearchBox == nullptr) {
    FList->setFocus();
  } else {
    FSearchBox->setFocus();
    FSearchBox->selectAll();
  }
}

bool TDropList::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
  auto& key = *static_cast<QKeyEvent*>(event);
  if (KeyPressed(key)) return true;
  const bool moves = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
                     key.key() == Qt::Key_PageDown;
  if (watched != FSearchBox || !moves) return false;
  QCoreApplication::sendEvent(FList, event);
  return true;
}

bool TDropList::KeyPressed(QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      ChooseRow(FList->currentIndex().row());
      return true;
    case Qt::Key_Escape:
    case Qt::Key_F4:
      close();
      return true;
    default:
      return false;
  }
}

void TDropList::ChooseRow(int row) {
  if (row < 0) return;
  const TChoose choose = FChoose;
  close();  // it goes later, when this has returned
  choose(row);
}

}  // namespace margindesk
