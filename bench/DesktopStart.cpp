#include "bench/DesktopStart.h"

#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTimer>
#include <QTreeView>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "terminal/desktop/Desktop.h"

namespace margindesk {

namespace {

using TClock = std::chrono::steady_clock;  // which all processes of a machine share

constexpr const char* kStarted = "--started-at";
constexpr std::chrono::milliseconds kSettling{1000};
constexpr int kLongest = 30'000;  // milliseconds for a start

long long GetNow() { return TClock::now().time_since_epoch().count(); }

// Tells on standard output when the tree of the main window has been painted for the first time, and a second
// later how much memory is resident; then it closes the window.
class TFirstPicture : public QObject {
 public:
  using QObject::QObject;

  static void Watch() { qApp->installEventFilter(new TFirstPicture(qApp)); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    auto* window = qobject_cast<QMainWindow*>(static_cast<QWidget*>(watched)->window());
    if (window == nullptr || qobject_cast<QTreeView*>(watched->parent()) == nullptr) return false;
    qApp->removeEventFilter(this);
    // Once the picture is whole and on the window.
    QMetaObject::invokeMethod(
        this,
        [this, window] {
          std::printf("%lld ", GetNow());
          QTimer::singleShot(kSettling, this, [window] {
            std::printf("%f\n", GetResidentMegabytes());
            window->close();
          });
        },
        Qt::QueuedConnection);
    return false;
  }
};

}  // namespace

double GetResidentMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "VmRSS:" && status >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

std::optional<TStart> MeasureStart(const std::filesystem::path& folder) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
    environment.insert(QString::fromLatin1(variable), QString::fromStdString((folder / variable).string()));
  }
  environment.insert(QStringLiteral("MARGINDESK_PACKAGE"), QStringLiteral(MARGINDESK_PACKAGE_FILE));
  process.setProcessEnvironment(environment);
  const long long before = GetNow();
  process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(kStarted)});
  if (!process.waitForFinished(kLongest)) {
    process.kill();
    process.waitForFinished();
  }
  long long painted = 0;
  double megabytes = 0;
  const QByteArray output = process.readAllStandardOutput();
  if (std::sscanf(output.constData(), "%lld %lf", &painted, &megabytes) != 2) {
    std::fputs(process.readAllStandardError().constData(), stderr);
    return std::nullopt;
  }
  const std::chrono::duration<double, std::milli> took = TClock::duration(painted - before);
  return TStart{took.count(), megabytes};
}

std::optional<int> RunStarted(int argc, char** argv) {
  if (argc != 2 || std::string(argv[1]) != kStarted) return std::nullopt;
  qAddPreRoutine(&TFirstPicture::Watch);
  return RunDesktop(1, argv);
}

}  // namespace margindesk
