#pragma once

#include <QObject>
#include <QTimer>

#include "host/services/UiLoop.h"

namespace margindesk {

// Runs the host's loop inside Qt's: whatever is posted wakes it, from any thread, and its timers are looked
// at often enough for the host's tick. Made and destroyed on the user-interface thread.
class TLoopPump : public QObject {
 public:
  explicit TLoopPump(TUiLoop& loop);  // which must outlive it
  ~TLoopPump() override;

  bool event(QEvent* event) override;

 private:
  void Run();

  TUiLoop& FLoop;
  QTimer FTimer;
};

}  // namespace margindesk
