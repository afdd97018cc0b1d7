#include "terminal/desktop/binders/GridEditors.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "controls/ComboBoxProperties.h"
#include "controls/PopupEditProperties.h"
#include "controls/SpinEditProperties.h"
#include "host/services/SymbolList.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/binders/CellNumber.h"
#include "terminal/desktop/binders/GridPaste.h"

namespace margindesk {

namespace {

TCellField::TKind GetKind(const TCellEditor& editor) {
  if (editor.IsSpin()) return TCellField::TKind::Spin;
  if (editor.IsDropDown()) return TCellField::TKind::List;
  const auto* popup = dynamic_cast<const TPopupEditProperties*>(editor.GetProperties());
  return popup != nullptr && popup->FPopupControl != nullptr ? TCellField::TKind::Popup
                                                             : TCellField::TKind::Text;
}

// Why a text cannot stand in the cell.
QString GetRefusal(const TCellEditor& editor, const QString& text) {
  if (text.trimmed().isEmpty()) return HostText("Desktop_CellEmpty");
  if (!editor.IsSpin()) return HostText("Desktop_CellNotInList").arg(text);
  double number = 0;
  if (!TryTextToFloat(FromQt(text.trimmed()), number)) return HostText("Desktop_CellNoNumber").arg(text);
  const double largest = static_cast<const TSpinEditProperties*>(editor.GetProperties())->FMaximum;
  return HostText("Desktop_CellTooLarge").arg(ToQt(FloatToText(largest)));
}

}  // namespace

TGridEditors::TGridEditors(TGridTableView& grid, QTableView& view, TGridModel& model,
                           std::function<void()> refresh)
    : QObject(&view), FGrid(grid), FView(view), FModel(model), FRefresh(std::move(refresh)) {
  view.setEditTriggers(QAbstractItemView::NoEditTriggers);
  view.setTabKeyNavigation(false);
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
  const auto place = [this] { Place(); };
  QObject::connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, place);
  QObject::connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, place);
  QObject::connect(qApp, &QApplication::focusChanged, this,
                   [this](QWidget*, QWidget* now) { FocusMoved(now); });
}

TGridEditors::~TGridEditors() {
  FStepping = true;
  if (FDropList) FDropList->close();
  delete FReason;
}

// --- opening and closing

bool TGridEditors::IsEditable(const QModelIndex& index) const {
  return FModel.flags(index).testFlag(Qt::ItemIsEditable) && FGrid.GetDataSource() == nullptr;
}

bool TGridEditors::Open(const QModelIndex& index) {
  if (!IsEditable(index) || !Commit()) return false;
  const std::int32_t record = FModel.GetRecord(index.row());
  const std::int32_t tag = FModel.GetColumn(index.column()).FTag;
  GoTo(index);
  {
    const TStep step(*this);
    if (!FGrid.OpenEditor(record, tag).empty() || !step.IsAlive() || FGrid.GetEditor() == nullptr)
      return false;
  }
  const TCellEditor& editor = *FGrid.GetEditor();
  FField = new TCellField(FView.viewport(), GetKind(editor));
  QLineEdit& line = FField->Line();
  line.setAccessibleName(ToQt(FModel.GetColumn(index.column()).FCaption));
  line.setAlignment(FModel.GetColumn(index.column()).FNumeric ? Qt::AlignRight : Qt::AlignLeft);
  line.installEventFilter(this);
  QObject::connect(&line, &QLineEdit::textEdited, this, [this](const QString& text) { Typed(text); });
  if (FField->GetKind() == TCellField::TKind::Spin) {
    QObject::connect(FField->Up(), &QToolButton::clicked, this, [this] { Spin(true, false); });
    QObject::connect(FField->Down(), &QToolButton::clicked, this, [this] { Spin(false, false); });
  } else if (FField->Drop() != nullptr) {
    QObject::connect(FField->Drop(), &QToolButton::clicked, this, [this] { DropDown(); });
  }
  ShowValue();
  Place();
  FField->show();
  line.setFocus();
  line.selectAll();
  qApp->installEventFilter(this);  // sees clicks elsewhere before they happen
  return true;
}

bool TGridEditors::Commit() {
  if (FField == nullptr) return true;
  QString refusal = FRefusal;
  if (refusal.isEmpty()) {
    const TStep step(*this);
    refusal = ToQt(FGrid.CommitEditor());
    if (!step.IsAlive()) return true;
  }
  if (!refusal.isEmpty()) {
    ShowReason(refusal);
    return false;
  }
  Close();
  FRefresh();
  return true;
}

void TGridEditors::Cancel() {
  {
    const TStep step(*this);
    FGrid.CancelEditor();
  }
  Close();
  FRefresh();
}

void TGridEditors::Close() {
  TCellField* field = std::exchange(FField, nullptr);
  if (field == nullptr) return;
  qApp->removeEventFilter(this);
  FRefusal.clear();
  ShowReason({});
  if (FDropList) FDropList->close();
  // The focus must not wander to whatever comes next.
  if (field->isAncestorOf(QApplication::focusWidget())) FView.setFocus();
  field->hide();
  field->deleteLater();
}

void TGridEditors::Follow() {
  if (FStepping || FField == nullptr) return;
  const TCellEditor* editor = FGrid.GetEditor();
  if (editor == nullptr) {
    Close();
  } else if (editor->GetValue() != FShown) {
    ShowValue();
  }
}

void TGridEditors::Place() {
  const TCellEditor* editor = FGrid.GetEditor();
  if (FField == nullptr || editor == nullptr) return;
  const int row = FModel.GetRow(editor->GetRecord());
  const int column = FModel.FindColumn(editor->GetColumnTag());
  if (row < 0 || column < 0) return;
  FField->setGeometry(FView.visualRect(FModel.index(row, column)));
  if (FReason != nullptr) ShowReason(FReason->text());
}

void TGridEditors::ShowValue() {
  FShown = FGrid.GetEditor()->GetValue();
  FRefusal.clear();
  ShowReason({});
  const QString text = ToQt(MakeNumberText(FShown));
  if (FField->Line().text() == text) return;
  FField->Line().setText(text);
  QAccessibleValueChangeEvent changed(&FField->Line(), text);
  QAccessible::updateAccessibility(&changed);
}

void TGridEditors::ShowReason(const QString& reason) {
  if (FField != nullptr) {
    FField->SetRefused(!reason.isEmpty());
    FField->Line().setAccessibleDescription(reason);
  }
  if (reason.isEmpty()) {
    delete std::exchange(FReason, nullptr);
    return;
  }
  if (FReason == nullptr) {
    FReason = new QLabel(FView.window());
    FReason->setObjectName(QStringLiteral("cellRefusal"));
    FReason->setTextFormat(Qt::PlainText);
    FReason->setAutoFillBackground(true);
    FReason->setBackgroundRole(QPalette::ToolTipBase);
    FReason->setForegroundRole(QPalette::ToolTipText);
    FReason->setMargin(5);
  }
  FReason->setText(reason);
  FReason->adjustSize();
  const QWidget& window = *FView.window();
  const QRect field(FField->mapTo(&window, QPoint()), FField->size());
  QPoint corner(std::max(0, std::min(field.left(), window.width() - FReason->width())), field.bottom() + 2);
  if (corner.y() + FReason->height() > window.height()) corner.setY(field.top() - FReason->height() - 2);
  FReason->move(corner);
  FReason->show();
  FReason->raise();
  QAccessibleEvent alert(FReason, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

bool TGridEditors::IsInside(const QWidget* widget) const {
  const auto holds = [widget](const QWidget* outer) {
    return outer != nullptr && (outer == widget || outer->isAncestorOf(widget));
  };
  return holds(FField) || holds(FDropList) || holds(FReason) || holds(FView.verticalScrollBar()) ||
         holds(FView.horizontalScrollBar()) ||
         (widget->windowType() == Qt::Popup && widget->parentWidget() == &FField->Line());
}

// --- the steps of editing

void TGridEditors::Typed(const QString& text) {
  const TStep step(*this);
  const std::string typed =
      FField->GetKind() == TCellField::TKind::Spin ? RemoveGrouping(FromQt(text)) : FromQt(text);
  const std::string refusal = FGrid.TypeInEditor(TVariant::Text(typed));
  if (!step.IsAlive()) return;
  const TCellEditor* editor = FGrid.GetEditor();
  if (editor == nullptr || FField == nullptr) return Close();
  FRefusal = refusal.empty() ? QString() : GetRefusal(*editor, text);
  ShowReason({});
  FShown = editor->GetValue();
  // What is typed stays as it is, unless the form made another value of it.
  if (refusal.empty() && !IsSameValue(typed, FShown)) ShowValue();
}

void TGridEditors::Spin(bool up, bool byKey) {
  {
    const TStep step(*this);
    FGrid.SpinEditor(up, byKey);
    if (!step.IsAlive()) return;
  }
  if (FField == nullptr || FGrid.GetEditor() == nullptr) return Follow();
  ShowValue();
}

void TGridEditors::ChooseNext(int step) {
  const TCellEditor& editor = *FGrid.GetEditor();
  const int count = static_cast<int>(editor.GetItems().size());
  if (count > 0) Choose(std::clamp(editor.GetItemIndex() + step, 0, count - 1));
}

void TGridEditors::ChooseByKey(const QString& text) {
  const TCellEditor& editor = *FGrid.GetEditor();
  const int count = static_cast<int>(editor.GetItems().size());
  for (int i = 1; i <= count; ++i) {
    const int entry = (editor.GetItemIndex() + i) % count;
    if (ToQt(editor.GetItems()[static_cast<std::size_t>(entry)]).startsWith(text, Qt::CaseInsensitive))
      return Choose(entry);
  }
}

void TGridEditors::Choose(int entry) {
  {
    const TStep step(*this);
    FGrid.ChooseInEditor(entry);
    if (!step.IsAlive()) return;
  }
  if (FField == nullptr || FGrid.GetEditor() == nullptr) return Follow();
  ShowValue();
}

void TGridEditors::DropDown() {
  {
    const TStep step(*this);
    if (!FGrid.DropDownEditor().empty() || !step.IsAlive()) return;
  }
  Follow();
  if (FField == nullptr) return;
  const QRect place(FField->mapToGlobal(QPoint()), FField->size());
  if (FField->GetKind() == TCellField::TKind::List) return DropEntries(place);
  DropSymbols(place);
}

void TGridEditors::DropEntries(const QRect& place) {
  const TCellEditor& editor = *FGrid.GetEditor();
  TDropList::TRows rows;
  for (const std::string& entry : editor.GetItems()) rows.push_back({ToQt(entry)});
  if (rows.empty()) return;
  FDropList = new TDropList(&FView, {}, std::move(rows), [this](int row) {
    Choose(row);
    Commit();
  });
  FDropList->SetCurrentRow(std::max(editor.GetItemIndex(), 0));
  FDropList->DropDown(place, {});
}

void TGridEditors::DropSymbols(const QRect& place) {
  const auto& properties = *static_cast<const TPopupEditProperties*>(FGrid.GetEditor()->GetProperties());
  auto* panel = dynamic_cast<TSymbolListPanel*>(properties.FPopupControl);
  if (panel == nullptr) return;
  QStringList headers;
  for (const std::string& caption : panel->GetColumnCaptions()) headers << ToQt(caption);
  FDropList = new TDropList(&FView, headers, {}, [this, panel](int row) {
    const QPointer<TGridEditors> life(this);
    panel->Choose(static_cast<std::size_t>(row));
    if (life.isNull()) return;
    Follow();
    FRefresh();
    if (FField == nullptr) MoveToNextCell(true);
  });
  FDropList->AddSearch(ToQt(panel->GetCaption()), FField->Line().text(), [panel](const QString& text) {
    panel->Search(FromQt(text));
    TDropList::TRows rows;
    for (const TSymbolHit& hit : panel->GetHits()) {
      rows.push_back({ToQt(hit.FSymbol.Text()), ToQt(hit.FName), ToQt(hit.FExchange.Text())});
    }
    return rows;
  });
  // The grid hides the panel with its editor; a list that is closed alone hides it here.
  QObject::connect(FDropList, &QObject::destroyed, this, [this, panel] {
    if (FField != nullptr) panel->SetVisible(false);
  });
  FDropList->DropDown(place, {properties.FPopupWidth, properties.FPopupHeight});
}

// At a cell that refuses what is pasted the person goes on by hand.
void TGridEditors::Paste() {
  const QModelIndex from = FView.currentIndex();
  const int row = from.row();
  const int column = from.column();
  TPasteEnd end;
  {
    const TStep step(*this);
    end = PasteCells(FGrid, FModel, from, QApplication::clipboard()->text(), FRefresh);
    if (!step.IsAlive()) return;
  }
  FRefresh();
  GoTo(FModel.index(row, column));
  if (end.FRow < 0 || !Open(FModel.index(end.FRow, end.FColumn))) return;
  FField->Line().setText(end.FText);
  Typed(end.FText);
  Commit();
}

}  // namespace margindesk
