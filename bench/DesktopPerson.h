#pragma once

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <string_view>
#include <thread>
#include <vector>

namespace margindesk {

using TBenchClock = std::chrono::steady_clock;

enum class TDeed { Move, Click, Key };

// An application that measures how long a deed of the person takes from being posted until a picture that was
// painted after it is on the window. What the deed touched is painted after every one, so that those to which
// nothing looks different count as well.
class TMeasuringApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override;

  // Milliseconds of the deeds of a kind since the last call, in no order.
  std::vector<double> TakeTimes(TDeed deed) {
    return std::exchange(FTimes[static_cast<std::size_t>(deed)], {});
  }

 private:
  struct TWaiting {
    TDeed FDeed;
    TBenchClock::time_point FPosted;
    const QWidget* FWindow;
  };

  void Painted(const QObject* window);

  std::vector<TWaiting> FWaiting;
  std::vector<double> FTimes[3];
};

// A person who is never tired: on a thread of its own, so that a busy terminal delays no deed, it moves the
// pointer over the views, clicks rows and walks them with the arrow keys, a hundred deeds a second, each
// posted to the event queue. It goes before the views do.
class TPerson {
 public:
  static constexpr int kDeedsPerSecond = 100;

  explicit TPerson(const std::vector<QAbstractItemView*>& views);
  ~TPerson();
  TPerson(const TPerson&) = delete;
  TPerson& operator=(const TPerson&) = delete;

 private:
  struct TPlace {
    QWidget* FView;
    QWidget* FViewport;
    QSize FSize;
    QPoint FOrigin;  // on the screen
  };

  void Live();

  std::vector<TPlace> FPlaces;
  std::atomic<bool> FEnough = false;
  std::thread FThread;
};

}  // namespace margindesk
