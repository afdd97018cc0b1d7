#include "terminal/desktop/views/MarketMenu.h"

#include <QActionGroup>
#include <QFile>
#include <QFileDialog>

#include "model/contract/MessageBoxCtrl.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

constexpr double kSpeeds[] = {0.5, 1, 2, 5, 10, 50};

QAction* AddChoice(QMenu& menu, QActionGroup* group, const QString& text, bool chosen) {
  QAction* action = menu.addAction(text);
  action->setCheckable(true);
  action->setChecked(chosen);
  group->addAction(action);
  return action;
}

}  // namespace

TMarketMenu::TMarketMenu(TReferenceHost& host) : FHost(host), FTicker(host.Data(), host.Loop()) {}

void TMarketMenu::AddTo(QMenuBar& bar) {
  QMenu* menu = bar.addMenu(HostText("Desktop_Market"));
  Fill(*menu);
  // A replay pauses by itself when it has ended.
  QObject::connect(menu, &QMenu::aboutToShow, menu, [this, menu] {
    menu->actions().front()->setText(
        HostText(FTicker.IsRunning() ? "Desktop_MarketPause" : "Desktop_MarketStart"));
  });
}

void TMarketMenu::Fill(QMenu& menu) {
  QAction* run = menu.addAction(HostText("Desktop_MarketStart"));
  run->setShortcut(QKeySequence(Qt::Key_F9));
  QObject::connect(run, &QAction::triggered, &menu, [this, run] {
    FTicker.IsRunning() ? FTicker.Pause() : FTicker.Start();
    run->setText(HostText(FTicker.IsRunning() ? "Desktop_MarketPause" : "Desktop_MarketStart"));
  });
  QMenu* speeds = menu.addMenu(HostText("Desktop_MarketSpeed"));
  auto* speedGroup = new QActionGroup(speeds);
  for (const double speed : kSpeeds) {
    QAction* action =
        AddChoice(*speeds, speedGroup, QStringLiteral("%1×").arg(speed), speed == FTicker.GetSpeed());
    QObject::connect(action, &QAction::triggered, &menu, [this, speed] { FTicker.SetSpeed(speed); });
  }
  menu.addSeparator();
  auto* sourceGroup = new QActionGroup(&menu);
  QAction* walk = AddChoice(menu, sourceGroup, HostText("Desktop_MarketRandom"), !FTicker.IsReplay());
  QAction* file = AddChoice(menu, sourceGroup, HostText("Desktop_MarketReplay"), FTicker.IsReplay());
  QObject::connect(walk, &QAction::triggered, &menu, [this] { FTicker.WalkAtRandom(); });
  QObject::connect(file, &QAction::triggered, &menu, [this, &menu, walk, file] {
    ChooseFile(&menu);
    (FTicker.IsReplay() ? file : walk)->setChecked(true);
  });
}

void TMarketMenu::ChooseFile(QWidget* parent) {
  const QString name = QFileDialog::getOpenFileName(parent->window(), HostText("Desktop_MarketReplay"), {},
                                                    QStringLiteral("CSV (*.csv)"));
  if (name.isEmpty()) return;
  const auto refuse = [&](const QString& reason) {
    TCustomMessageBoxCtrl::GetInstance().ShowMessage(FromQt(name + u'\n' + reason));
  };
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) return refuse(file.errorString());
  try {
    FTicker.Replay(ReadTickFile(file.readAll().toStdString(), FHost.Data()));
  } catch (const TTickFileError& error) {
    refuse(QString::fromUtf8(error.what()));
  }
}

}  // namespace margindesk
