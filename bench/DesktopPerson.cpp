#include "bench/DesktopPerson.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointingDevice>
#include <algorithm>
#include <random>

namespace margindesk {

namespace {

// What an event of the person's carries besides.
struct TDeedMark {
  explicit TDeedMark(TDeed deed) : FDeed(deed) {}
  virtual ~TDeedMark() = default;

  TDeed FDeed;
  TBenchClock::time_point FPosted = TBenchClock::now();
};

struct TPersonsMouse final : QMouseEvent, TDeedMark {
  TPersonsMouse(TDeed deed, Type type, QPoint local, QPoint global, Qt::MouseButton button)
      : QMouseEvent(type, local, global, button, type == MouseButtonPress ? button : Qt::NoButton,
                    Qt::NoModifier),
        TDeedMark(deed) {}
};

struct TPersonsKey final : QKeyEvent, TDeedMark {
  TPersonsKey(Type type, int key) : QKeyEvent(type, key, Qt::NoModifier), TDeedMark(TDeed::Key) {}
};

bool IsInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool TMeasuringApplication::notify(QObject* receiver, QEvent* event) {
  const auto* mark = IsInput(*event) ? dynamic_cast<const TDeedMark*>(event) : nullptr;
  if (mark == nullptr) {
    const bool painted = event->type() == QEvent::UpdateRequest;
    const QPointer<QObject> kept = receiver;
    const bool answer = QApplication::notify(receiver, event);
    if (painted && kept != nullptr) Painted(receiver);
    return answer;
  }
  const TDeed deed = mark->FDeed;
  const TBenchClock::time_point posted = mark->FPosted;
  const auto* mouse = dynamic_cast<const QMouseEvent*>(event);
  const QPoint point = mouse == nullptr ? QPoint() : mouse->position().toPoint();
  const QPointer<QWidget> widget = qobject_cast<QWidget*>(receiver);
  const bool answer = QApplication::notify(receiver, event);
  if (widget != nullptr) {
    // The row under the pointer; after a key the view has the current one painted itself.
    auto* view = qobject_cast<QAbstractItemView*>(mouse == nullptr ? widget.data() : widget->parentWidget());
    const QRect touched =
        mouse == nullptr ? view->visualRect(view->currentIndex()) : QRect(point, QSize(1, 1));
    view->viewport()->update(touched.isEmpty() ? QRect(0, 0, 1, 1) : touched);
    FWaiting.push_back({deed, posted, widget->window()});
  }
  return answer;
}

void TMeasuringApplication::Painted(const QObject* window) {
  const auto now = TBenchClock::now();
  std::erase_if(FWaiting, [&](const TWaiting& waiting) {
    if (waiting.FWindow != window) return false;
    const std::chrono::duration<double, std::milli> took = now - waiting.FPosted;
    FTimes[static_cast<std::size_t>(waiting.FDeed)].push_back(took.count());
    return true;
  });
}

TPerson::TPerson(const std::vector<QAbstractItemView*>& views) {
  // Made with the first event, and to be made on this thread.
  QPointingDevice::primaryPointingDevice();
  QInputDevice::primaryKeyboard();
  for (QAbstractItemView* view : views) {
    QWidget* viewport = view->viewport();
    FPlaces.push_back({view, viewport, viewport->size(), viewport->mapToGlobal(QPoint())});
  }
  FThread = std::thread([this] { Live(); });
}

TPerson::~TPerson() {
  FEnough = true;
  FThread.join();
}

void TPerson::Live() {
  constexpr std::chrono::microseconds kPause{1'000'000 / kDeedsPerSecond};
  std::mt19937 random(1);
  auto next = TBenchClock::now();
  for (unsigned deed = 0; !FEnough; ++deed) {
    // Half a second here, half a second there.
    const TPlace& place = FPlaces[deed / (kDeedsPerSecond / 2) % FPlaces.size()];
    const QPoint local(static_cast<int>(random() % static_cast<unsigned>(place.FSize.width())),
                       static_cast<int>(random() % static_cast<unsigned>(place.FSize.height())));
    const auto mouse = [&](TDeed what, QEvent::Type type, Qt::MouseButton button) {
      QCoreApplication::postEvent(place.FViewport,
                                  new TPersonsMouse(what, type, local, local + place.FOrigin, button));
    };
    switch (deed % 10) {
      case 4:
        mouse(TDeed::Click, QEvent::MouseButtonPress, Qt::LeftButton);
        mouse(TDeed::Click, QEvent::MouseButtonRelease, Qt::LeftButton);
        break;
      case 9: {
        const int key = random() % 2 == 0 ? Qt::Key_Down : Qt::Key_Up;
        QCoreApplication::postEvent(place.FView, new TPersonsKey(QEvent::KeyPress, key));
        QCoreApplication::postEvent(place.FView, new TPersonsKey(QEvent::KeyRelease, key));
        break;
      }
      default:
        mouse(TDeed::Move, QEvent::MouseMove, Qt::NoButton);
    }
    next += kPause;
    std::this_thread::sleep_until(next);
  }
}

}  // namespace margindesk
