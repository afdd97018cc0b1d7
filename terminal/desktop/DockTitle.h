#pragma once

#include <QDockWidget>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace margindesk {

// The title bar of every dock: its caption, room for buttons of its own, one that takes the dock out of the
// window and back, and one that closes it. It follows the dock's title and the application's look.
class TDockTitle : public QWidget {
 public:
  explicit TDockTitle(QDockWidget& dock);  // which takes it over

  // Where buttons of the dock's own stand.
  QWidget& Buttons() noexcept { return *FButtons; }

  // In the current language.
  void UpdateTexts();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QToolButton* AddButton(QHBoxLayout& row);
  void UpdateLook();

  QDockWidget& FDock;
  QLabel* const FCaption;
  QWidget* const FButtons;
  QToolButton* FFloat = nullptr;
  QToolButton* FClose = nullptr;
};

}  // namespace margindesk
