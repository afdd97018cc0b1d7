#include "terminal/desktop/binders/SimpleBinders.h"

#include <QEvent>
#include <QKeyEvent>
#include <algorithm>
#include <cmath>

#include "terminal/desktop/Picture.h"
#include "terminal/desktop/Text.h"

namespace margindesk {

namespace {

constexpr int kShortestText = 8;  // characters of a drop-down list that are never cut

}  // namespace

// --- button

TButtonBinder::TButtonBinder(TButton& button, QPushButton& widget)
    : TBinder(button, widget), FButton(button), FPushButton(widget) {
  QObject::connect(&widget, &QPushButton::clicked, this, [this] { FButton.Click(); });
  Show();
}

void TButtonBinder::Refresh() {
  FPushButton.setText(ToQt(FButton.GetCaption()));
  FPushButton.setAccessibleName(FPushButton.text());
}

// --- check box

TCheckBoxBinder::TCheckBoxBinder(TCheckBox& box, QCheckBox& widget)
    : TBinder(box, widget), FBox(box), FCheckBox(widget) {
  QObject::connect(&widget, &QCheckBox::toggled, this, [this](bool checked) {
    if (!IsRefreshing()) FBox.SetChecked(checked);
  });
  Show();
}

void TCheckBoxBinder::Refresh() {
  // A box without a caption, such as the account's lock, is named by its hint.
  FCheckBox.setText(ToQt(FBox.GetCaption().empty() ? FBox.GetHint() : FBox.GetCaption()));
  FCheckBox.setAccessibleName(FCheckBox.text());
  FCheckBox.setChecked(FBox.GetChecked());
}

// --- drop-down list

TComboBoxBinder::TComboBoxBinder(TComboBox& box, QComboBox& widget)
    : TBinder(box, widget), FBox(box), FComboBox(widget) {
  widget.installEventFilter(this);
  widget.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  widget.setMinimumContentsLength(kShortestText);
  QObject::connect(&widget, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (!IsRefreshing()) FBox.SetItemIndex(index);
  });
  Show();
}

bool TComboBoxBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return TBinder::eventFilter(watched, event);
  const auto* key = static_cast<const QKeyEvent*>(event);
  if (key->key() == Qt::Key_Backspace) {
    FBox.PressKey(kKeyBackspace);
    return true;
  }
  const QString text = key->text();
  if (text.size() != 1 || !text.front().isPrint() || text.front().isSpace()) return false;
  FBox.PressKey(text.front().unicode());
  return true;
}

void TComboBoxBinder::Refresh() {
  const auto& items = FBox.GetItems();
  for (int i = 0; i < FBox.GetItemCount(); ++i) {
    const QString text = ToQt(items[static_cast<std::size_t>(i)]);
    if (i >= FComboBox.count()) {
      FComboBox.addItem(text);
    } else if (FComboBox.itemText(i) != text) {
      FComboBox.setItemText(i, text);
    }
  }
  while (FComboBox.count() > FBox.GetItemCount()) FComboBox.removeItem(FComboBox.count() - 1);
  FComboBox.setPlaceholderText(ToQt(FBox.GetTextHint()));
  FComboBox.setCurrentIndex(FBox.GetItemIndex());
}

// --- edit

TTextEditBinder::TTextEditBinder(TTextEdit& edit, QLineEdit& widget)
    : TBinder(edit, widget), FEdit(edit), FLineEdit(widget) {
  widget.installEventFilter(this);
  QObject::connect(&widget, &QLineEdit::textEdited, this, [this](const QString& text) {
    const int cursor = FLineEdit.cursorPosition();
    FEdit.SetText(FromQt(text));
    FLineEdit.setCursorPosition(cursor);
  });
  Show();
}

bool TTextEditBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      FEdit.PressKey(kKeyEnter);
      return true;  // the form has had it; a dialog around must not
    }
  }
  if (event->type() == QEvent::FocusOut &&
      static_cast<const QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
    FEdit.Exit();
  }
  return TBinder::eventFilter(watched, event);
}

void TTextEditBinder::Refresh() {
  const QString text = ToQt(FEdit.GetText());
  if (FLineEdit.text() != text) FLineEdit.setText(text);
  FLineEdit.setPlaceholderText(ToQt(FEdit.GetTextHint()));
  if (FEdit.GetSelectionLength() > 0) {
    FLineEdit.setSelection(FEdit.GetSelectionStart(), FEdit.GetSelectionLength());
  }
}

// --- number

TSpinEditBinder::TSpinEditBinder(TSpinEdit& edit, QDoubleSpinBox& widget)
    : TBinder(edit, widget), FEdit(edit), FSpinBox(widget) {
  widget.setLocale(QLocale::c());
  widget.setGroupSeparatorShown(false);
  QObject::connect(&widget, &QDoubleSpinBox::valueChanged, this, [this](double value) {
    if (!IsRefreshing()) FEdit.SetNumber(value);
  });
  Show();
}

void TSpinEditBinder::Refresh() {
  FSpinBox.setDecimals(std::floor(FEdit.GetIncrement()) == FEdit.GetIncrement() ? 0 : 8);
  FSpinBox.setRange(FEdit.GetMinimum(), FEdit.GetMaximum());
  FSpinBox.setSingleStep(FEdit.GetIncrement());
  FSpinBox.setAlignment(FEdit.GetAlignment() == TAlignment::Right ? Qt::AlignRight : Qt::AlignLeft);
  FSpinBox.setValue(FEdit.GetNumber().value_or(std::max(0.0, FEdit.GetMinimum())));
}

// --- picture

TImageBinder::TImageBinder(TImage& image, QLabel& widget)
    : TBinder(image, widget), FImage(image), FLabel(widget) {
  Show();
}

void TImageBinder::Refresh() {
  FLabel.setScaledContents(FImage.GetStretch());
  FLabel.setPixmap(MakePixmap(FImage.GetPicture()));
}

}  // namespace margindesk
