#include "terminal/desktop/LoopPump.h"

#include <QCoreApplication>
#include <QEvent>
#include <chrono>

namespace margindesk {

namespace {

constexpr auto kWake = static_cast<QEvent::Type>(QEvent::User + 1);
constexpr std::chrono::milliseconds kTimerPeriod{100};

// What one call may take before the mouse and the keyboard have their turn again.
constexpr std::chrono::milliseconds kBudget{8};

}  // namespace

TLoopPump::TLoopPump(TUiLoop& loop) : FLoop(loop) {
  FLoop.SetWaker([this] { QCoreApplication::postEvent(this, new QEvent(kWake)); });
  QObject::connect(&FTimer, &QTimer::timeout, this, [this] { Run(); });
  FTimer.start(kTimerPeriod);
}

TLoopPump::~TLoopPump() { FLoop.SetWaker({}); }

bool TLoopPump::event(QEvent* event) {
  if (event->type() != kWake) return QObject::event(event);
  Run();
  return true;
}

void TLoopPump::Run() {
  const auto end = std::chrono::steady_clock::now() + kBudget;
  while (FLoop.RunOnce()) {
    if (std::chrono::steady_clock::now() < end) continue;
    QCoreApplication::postEvent(this, new QEvent(kWake), Qt::LowEventPriority);
    return;
  }
}

}  // namespace margindesk
