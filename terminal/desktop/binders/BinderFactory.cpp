#include "terminal/desktop/binders/BinderFactory.h"

#include "controls/Grid.h"
#include "controls/HintStyleController.h"
#include "controls/LayoutControl.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/binders/AccountBox.h"
#include "terminal/desktop/binders/GridBinder.h"
#include "terminal/desktop/binders/HintBinder.h"
#include "terminal/desktop/binders/LayoutBinder.h"
#include "terminal/desktop/binders/PopupMenus.h"
#include "terminal/desktop/binders/SimpleBinders.h"
#include "terminal/desktop/binders/TreeBinder.h"
#include "terminal/desktop/binders/TreeView.h"

namespace margindesk {

namespace {

// Makes the widget for a control of one kind; null for a control of another kind.
using TMaker = QWidget* (*)(TControl& control, QWidget* parent);

template <class TKind, class TWidget, class TKindBinder>
QWidget* Make(TControl& control, QWidget* parent) {
  auto* kind = dynamic_cast<TKind*>(&control);
  if (kind == nullptr) return nullptr;
  auto* widget = new TWidget(parent);
  new TKindBinder(*kind, *widget);  // a child of the widget
  return widget;
}

QWidget* MakeGrid(TControl& control, QWidget* parent) {
  auto* grid = dynamic_cast<TGrid*>(&control);
  if (grid == nullptr) return nullptr;
  auto* widget = new QTableView(parent);
  new TGridBinder(*grid->GetView(), *widget);
  ConnectPopupMenu(*grid->GetView(), *widget);
  return widget;
}

QWidget* MakeTree(TControl& control, QWidget* parent) {
  auto* tree = dynamic_cast<TVirtualTree*>(&control);
  if (tree == nullptr) return nullptr;
  auto* widget = new TTreeView(parent);
  widget->SetGridLines(tree->GetGridLines());
  new TTreeBinder(*tree, *widget);
  ConnectPopupMenu(control, *widget);
  return widget;
}

// A kind that derives from another stands before it.
constexpr TMaker kMakers[] = {
    &Make<TButton, QPushButton, TButtonBinder>,
    &Make<TCheckBox, QCheckBox, TCheckBoxBinder>,
    &Make<TComboBox, QComboBox, TComboBoxBinder>,
    &Make<TAccountEdit, QLineEdit, TAccountBoxBinder>,
    &Make<TTextEdit, QLineEdit, TTextEditBinder>,
    &Make<TSpinEdit, QDoubleSpinBox, TSpinEditBinder>,
    &Make<TImage, QLabel, TImageBinder>,
    &MakeTree,
    &MakeGrid,
};

template <class TKind>
TKind* FindOnly(const TFrame& frame) {
  for (TComponent* component : frame.GetComponents()) {
    if (auto* found = dynamic_cast<TKind*>(component)) return found;
  }
  return nullptr;
}

}  // namespace

QWidget* CreateControlWidget(TControl& control, QWidget* parent) {
  for (const TMaker maker : kMakers) {
    if (QWidget* widget = maker(control, parent)) {
      widget->setObjectName(ToQt(control.GetComponentName()));
      return widget;
    }
  }
  return nullptr;
}

QWidget* CreateFormWidget(TFrame& frame, QWidget* parent) {
  auto* form = new QWidget(parent);
  if (auto* layout = FindOnly<TLayoutControl>(frame)) new TLayoutBinder(*layout, *form);
  if (auto* hints = FindOnly<THintStyleController>(frame)) new THintBinder(*hints, *form);
  return form;
}

}  // namespace margindesk
