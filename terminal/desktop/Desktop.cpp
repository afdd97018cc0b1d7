#include "terminal/desktop/Desktop.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <cstdlib>
#include <iostream>

#include <CLI/CLI.hpp>

#include "host/book/BookError.h"
#include "host/services/ConfigStore.h"
#include "host/services/LanguageFile.h"
#include "model/contract/LookAndFeelService.h"
#include "model/contract/Variant.h"
#include "terminal/desktop/Dialogs.h"
#include "terminal/desktop/FirstSettings.h"
#include "terminal/desktop/HostPage.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/LoopPump.h"
#include "terminal/desktop/MainWindow.h"
#include "terminal/desktop/Skin.h"
#include "terminal/desktop/StartMark.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/views/MarketMenu.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Locations.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

constexpr const char* kDemoAccount = "M20001";

std::optional<std::string> ReadEnvironment(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

// The application: an exception that leaves a handler is named in the status bar and goes no further.
class TDesktopApplication : public QApplication {
 public:
  using QApplication::QApplication;

  void SetWindow(TMainWindow* window) noexcept { FWindow = window; }

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      Report(receiver, QString::fromUtf8(error.what()));
    } catch (...) {
      Report(receiver, QStringLiteral("?"));
    }
    return true;
  }

 private:
  void Report(QObject* receiver, const QString& what) {
    if (FWindow == nullptr) return;
    // The view is named by the dock around the widget that got the event.
    QObject* at = receiver;
    while (at != nullptr && qobject_cast<QDockWidget*>(at) == nullptr) at = at->parent();
    auto* dock = qobject_cast<QDockWidget*>(at);
    FWindow->ReportFault(dock == nullptr ? FWindow->windowTitle() : dock->windowTitle(), what);
  }

  TMainWindow* FWindow = nullptr;
};

struct TOptions {
  TSessionOptions FSession;
  std::string FAccount;
  bool FLanguageGiven = false;
  bool FSkipPackage = false;
};

void RestoreLanguage(TReferenceHost& host) {
  std::int32_t language = 0;
  if (TryTextToInteger(host.Config().ReadString(host.Config().GetUserSection(), kLanguageKey), language)) {
    host.Language().SetLanguage(language);
  }
}

// The account of the first view: the one that was named, else the demo book's master, else the book's first
// master or first account. Throws TCliError when nobody knows the one that was named.
std::string FindFirstAccount(THostData& data, const std::string& named) {
  if (!named.empty()) {
    if (data.FindAccount(TCode(named)) == nullptr) throw TCliError("there is no account " + named);
    return named;
  }
  if (data.FindAccount(TCode(kDemoAccount)) != nullptr) return kDemoAccount;
  const auto accounts = data.GetAccounts();
  const auto master = std::ranges::find_if(
      accounts, [&](TCode account) { return !data.FindAccount(account)->FSubAccounts.empty(); });
  if (master != accounts.end()) return std::string(master->Text());
  return accounts.empty() ? std::string() : std::string(accounts.front().Text());
}

bool AskWhetherToLoad(const std::string& package) {
  QMessageBox box(QMessageBox::Warning, QStringLiteral("MarginDesk"),
                  HostText("Desktop_SkipQuestion").arg(ToQt(package)));
  box.setTextFormat(Qt::PlainText);
  const QAbstractButton* load = box.addButton(HostText("Desktop_Load"), QMessageBox::AcceptRole);
  QPushButton* skip = box.addButton(HostText("Desktop_Skip"), QMessageBox::RejectRole);
  box.setDefaultButton(skip);
  box.setEscapeButton(skip);
  box.exec();
  return box.clickedButton() == load;
}

// Loads the package unless the person has it skipped, since the terminal died of it the last time. The answer
// is "" or why there is none: the terminal then runs without.
QString LoadPackageSafely(TPackages& packages, const TEnvironment& environment, const TStartMark& mark,
                          bool skip) {
  const std::string died = mark.Read();
  if (!skip && !died.empty()) skip = !AskWhetherToLoad(died);
  QString reason;
  try {
    const std::filesystem::path package = GetPackageFile(environment);
    if (skip) return HostText("Desktop_Skipped").arg(ToQt(package.filename().string()));
    mark.Set(package);
    LoadPackage(packages, environment);
  } catch (const TCliError& error) {
    reason = QString::fromUtf8(error.what());
  }
  mark.Clear();
  return reason;
}

int RunWindow(TDesktopApplication& application, const TOptions& options) {
  TTerminal terminal{std::cin, std::cout, std::cerr, &ReadEnvironment};
  TSession session(terminal, options.FSession);
  TReferenceHostOptions hostOptions = session.MakeHostOptions();
  const auto config = session.GetConfigFile();
  MakePrivateDirectory(config.parent_path());
  hostOptions.FConfigFile = config;
  hostOptions.FWorkspaceFolder = config.parent_path() / "workspaces";
  TReferenceHost host(session.Book(), hostOptions);
  const std::string account = FindFirstAccount(host.Data(), options.FAccount);
  WriteFirstSettings(host.Config(), GetResourceDirectory(terminal.FEnvironment));
  const TLoopPump pump(host.Loop());
  const TDialogs dialogs(host);
  TPackages packages(host);
  if (!options.FLanguageGiven) RestoreLanguage(host);
  ApplySkin(application, TCustomLookAndFeelService::GetInstance().GetSkinName(), ReadScale(host.Config()));
  const QString missing =
      LoadPackageSafely(packages, terminal.FEnvironment, TStartMark(config.parent_path() / "loading-package"),
                        options.FSkipPackage);
  TMainWindow window(host, packages);
  application.SetWindow(&window);
  TMarketMenu market(host);
  window.SetExtraMenus([&](QMenuBar& bar) { market.AddTo(bar); });
  window.Restore(account);
  if (!missing.isEmpty()) window.ReportFault(window.windowTitle(), missing);
  window.show();
  const int code = QApplication::exec();
  application.SetWindow(nullptr);
  return code;
}

int TellAndEnd(const std::exception& error, int code) {
  std::cerr << "margindesk-desktop: " << error.what() << '\n';
  QMessageBox::critical(nullptr, QStringLiteral("MarginDesk"), QString::fromUtf8(error.what()));
  return code;
}

}  // namespace

int RunDesktop(int argc, char** argv) {
  TDesktopApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("MarginDesk"));
  TOptions options;
  CLI::App parser("The desktop terminal");
  std::string language = "ENG";
  parser.add_option("--book", options.FSession.FBook, "The back-office book (default: the user's own)");
  parser.add_option("--config", options.FSession.FConfig, "The configuration (default: the user's own)");
  parser.add_option("--lang", language, "The language: ENG, CHS or ZHH (default: as last chosen)")
      ->check(CLI::IsMember({"ENG", "CHS", "ZHH"}, CLI::ignore_case));
  parser.add_flag("--skip-package", options.FSkipPackage, "Starts without the package, and asks nothing");
  parser.add_option("--account", options.FAccount, "The account of the first view of a new workspace");
  try {
    parser.parse(argc, argv);
    options.FLanguageGiven = parser.count("--lang") > 0;
    options.FSession.FLanguage = FindLanguage(language).value_or(kLanguageEnglish);
    return RunWindow(application, options);
  } catch (const CLI::ParseError& error) {
    return parser.exit(error) == 0 ? kExitFine : kExitUsage;
  } catch (const TCliError& error) {
    return TellAndEnd(error, kExitUsage);
  } catch (const std::exception& error) {
    return TellAndEnd(error, kExitFault);
  }
}

}  // namespace margindesk
