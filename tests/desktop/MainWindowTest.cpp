// The terminal's window over the package itself.
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/Constdef.h"
#include "terminal/desktop/MainWindow.h"
#include "terminal/desktop/PreferenceWindow.h"
#include "tests/support/TestBook.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TTestBook MakeBook() {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Product("IDX", "HKD", 25000);
  book.Account("A1").FName = "Amber";
  book.Position("A1", "IDX", 2);
  return book;
}

// A terminal with one account; what it keeps outlives it in the folder.
struct TRun {
  explicit TRun(const QTemporaryDir& folder) : FHost(MakeBook(), MakeOptions(folder)) {
    FHost.MessageBox().SetSink([this](std::string_view text) { FMessages.emplace_back(text); });
    EXPECT_EQ(FPackages.Load(MARGINDESK_PACKAGE_FILE), "");
    FWindow.emplace(FHost, FPackages);
    FWindow->Restore("A1");
    FWindow->show();
    QCoreApplication::processEvents();
  }
  ~TRun() {
    FWindow->close();
    FWindow.reset();
  }

  static TReferenceHostOptions MakeOptions(const QTemporaryDir& folder) {
    TReferenceHostOptions options;
    options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
    options.FConfigFile = folder.filePath("config.db").toStdString();
    options.FWorkspaceFolder = folder.filePath("workspaces").toStdString();
    return options;
  }

  std::vector<std::string> FMessages;
  TReferenceHost FHost;
  TPackages FPackages{FHost};
  std::optional<TMainWindow> FWindow;
};

// What a screen reader calls the controls below that take the focus; the parts of one control are left out.
QStringList NamesOf(const QWidget& window) {
  QStringList names;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    const bool part = qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) != nullptr;
    if (part || widget->focusPolicy() == Qt::NoFocus || !widget->isVisibleTo(&window)) continue;
    QString name = widget->accessibleName();  // a drop-down list's other name is its value
    if (name.isEmpty() && qobject_cast<QComboBox*>(widget) == nullptr) {
      name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    }
    EXPECT_FALSE(name.isEmpty()) << widget->metaObject()->className() << ' '
                                 << widget->objectName().toStdString() << " in "
                                 << window.windowTitle().toStdString();
    names << std::move(name);
  }
  return names;
}

TEST(MainWindow, CallsEveryControlByANameInTheChosenLanguage) {
  const QTemporaryDir folder;
  TRun run(folder);
  run.FHost.Views().Open("TIMarginSimulator");
  run.FHost.Channels().PostChannelData(kChannelLinkedSymbol, "IDX", nullptr, 0);
  run.FHost.Channels().PostChannelData(kChannelLinkedAccount, "A1", nullptr, 0);
  run.FHost.Loop().RunOnce();
  QCoreApplication::processEvents();
  const auto namesOfAll = [&] {
    TPreferenceWindow preferences(run.FHost.Preferences(), run.FHost.Config(), {}, &*run.FWindow);
    return NamesOf(*run.FWindow) + NamesOf(preferences);
  };
  const QStringList english = namesOfAll();
  EXPECT_GT(english.size(), 25);
  for (QAction* action : run.FWindow->findChildren<QAction*>()) {
    if (action->text().contains("简体中文")) action->trigger();
  }
  QCoreApplication::processEvents();
  const QStringList chinese = namesOfAll();
  ASSERT_EQ(chinese.size(), english.size());
  for (int i = 0; i < english.size(); ++i) EXPECT_NE(chinese[i], english[i]) << english[i].toStdString();
}

TEST(MainWindow, NamesTheViewOfAHandlerThatFailedAndGoesOn) {
  const QTemporaryDir folder;
  TRun run(folder);
  constexpr std::int32_t kChannel = 4711;
  struct TFaulty {
    void Fail(void* /*sender*/, void* /*data*/) { throw std::runtime_error("no such figure"); }
  } faulty;
  const auto* frame = run.FHost.Views().GetViews().front().FFrame;
  run.FHost.Channels().AddChannelHandler(kChannel, MakeHandler<&TFaulty::Fail>(&faulty), frame);
  run.FHost.Channels().PostChannelData(kChannel, "", nullptr, 0);
  run.FHost.Loop().RunOnce();
  run.FHost.Channels().RemoveChannelHandler(kChannel, frame);
  QStatusTipEvent passedMenu{QString()};
  QCoreApplication::sendEvent(&*run.FWindow, &passedMenu);
  EXPECT_THAT(run.FWindow->statusBar()->currentMessage().toStdString(),
              testing::AllOf(HasSubstr("Account Information - A1"), HasSubstr("no such figure")));
}

TEST(MainWindow, MarksPricesThatAreNotCurrentForAsLongAsTheyAreNot) {
  const QTemporaryDir folder;
  TRun run(folder);
  const auto findMark = [&]() -> QLabel* {
    for (QLabel* label : run.FWindow->statusBar()->findChildren<QLabel*>()) {
      if (label->isVisible() && label->text().contains("Prices not current")) return label;
    }
    return nullptr;
  };
  const auto isMarked = [&] { return findMark() != nullptr; };
  const auto setStatus = [&](std::optional<std::int32_t> status) {
    run.FHost.Data().SetItemStatus(TCode("IDX"), status);
    run.FHost.Loop().RunOnce();
  };
  EXPECT_FALSE(isMarked());
  setStatus(kItemNotCurrent);
  ASSERT_TRUE(QTest::qWaitFor(isMarked));
  EXPECT_EQ(findMark()->toolTip(), "IDX");
  setStatus(std::nullopt);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !isMarked(); }));
}

TEST(MainWindow, ComesBackWithTheHostsDocksAndLosesNothingToADamagedWorkspace) {
  const QTemporaryDir folder;
  const auto hasQuotes = [](const TRun& run) {
    return run.FWindow->findChild<QDockWidget*>("hostview0") != nullptr;
  };
  {
    TRun run(folder);
    run.FHost.Channels().PostChannelData(kChannelLinkedSymbol, "IDX", nullptr, 0);
    run.FHost.Loop().RunOnce();
    ASSERT_TRUE(hasQuotes(run));
  }
  {
    TRun run(folder);
    EXPECT_TRUE(hasQuotes(run));
    EXPECT_EQ(run.FHost.Views().GetViews().size(), 1U);
  }
  std::ofstream(folder.filePath("workspaces/default.json").toStdString()) << "{";
  TRun run(folder);
  EXPECT_THAT(run.FMessages, ElementsAre(HasSubstr("set aside")));
  EXPECT_EQ(run.FHost.Views().GetViews().size(), 1U);
  EXPECT_TRUE(QFile::exists(folder.filePath("workspaces/default.damaged-1")));
}

}  // namespace
}  // namespace margindesk
