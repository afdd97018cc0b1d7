#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "controls/AccountEdit.h"
#include "controls/Button.h"
#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/Image.h"
#include "controls/SpinEdit.h"
#include "controls/TextEdit.h"
#include "terminal/desktop/binders/Binder.h"

namespace margindesk {

class TButtonBinder : public TBinder {
 public:
  TButtonBinder(TButton& button, QPushButton& widget);

 protected:
  void Refresh() override;

 private:
  TButton& FButton;
  QPushButton& FPushButton;
};

class TCheckBoxBinder : public TBinder {
 public:
  TCheckBoxBinder(TCheckBox& box, QCheckBox& widget);

 protected:
  void Refresh() override;

 private:
  TCheckBox& FBox;
  QCheckBox& FCheckBox;
};

// A drop-down list; keys go through the form's own key event.
class TComboBoxBinder : public TBinder {
 public:
  TComboBoxBinder(TComboBox& box, QComboBox& widget);
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void Refresh() override;

 private:
  TComboBox& FBox;
  QComboBox& FComboBox;
};

// A one-line edit, an account box too. The text reaches the model as it is typed; the Enter key goes through
// the form's key event, and leaving the edit is told to the model.
class TTextEditBinder : public TBinder {
 public:
  TTextEditBinder(TTextEdit& edit, QLineEdit& widget);
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void Refresh() override;

 private:
  TTextEdit& FEdit;
  QLineEdit& FLineEdit;
};

// A number with spin buttons. An empty edit is no number.
class TSpinEditBinder : public TBinder {
 public:
  TSpinEditBinder(TSpinEdit& edit, QDoubleSpinBox& widget);

 protected:
  void Refresh() override;

 private:
  TSpinEdit& FEdit;
  QDoubleSpinBox& FSpinBox;
};

class TImageBinder : public TBinder {
 public:
  TImageBinder(TImage& image, QLabel& widget);

 protected:
  void Refresh() override;

 private:
  TImage& FImage;
  QLabel& FLabel;
};

}  // namespace margindesk
