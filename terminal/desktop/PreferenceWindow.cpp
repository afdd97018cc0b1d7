#include "terminal/desktop/PreferenceWindow.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QVBoxLayout>

#include "host/services/Formatter.h"
#include "model/contract/MessageBoxCtrl.h"
#include "terminal/desktop/FormScroll.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Skin.h"
#include "terminal/desktop/binders/BinderFactory.h"

namespace margindesk {

namespace {

constexpr int kPageMargin = 9;  // pixels at 100 % scale

struct TSampleFigure {
  const char* FCaption;
  std::string (*FShow)(const TFormatter& formatter);
};

constexpr TSampleFigure kSamples[] = {
    {"Desktop_Amounts",
     [](const TFormatter& formatter) {
       return formatter.FormatValue(1234567.8, kFormatAmount, TCode(), true);
     }},
    {"Desktop_Quantities",
     [](const TFormatter& formatter) {
       return formatter.FormatValue(12000, kFormatQuantity, TCode(), true);
     }},
    {"Desktop_AveragePrices",
     [](const TFormatter& formatter) { return formatter.FormatAveragePrice(318.4, true); }},
    {"Desktop_Ratios",
     [](const TFormatter& formatter) { return formatter.FormatValue(0.0525, kFormatRatio, TCode(), true); }},
};

// The name behind a user's section.
std::string_view GetUser(std::string_view section) {
  const std::size_t dot = section.find('.');
  return dot == std::string_view::npos ? std::string_view() : section.substr(dot + 1);
}

}  // namespace

TPreferenceWindow::TPreferenceWindow(TPreferenceDialog& dialog, TConfigManager& config,
                                     std::function<void(std::int32_t language)> applied, QWidget* parent)
    : QDialog(parent),
      FDialog(dialog),
      FConfig(config),
      FTabs(new QTabWidget(this)),
      FHostPage(new THostPage(FConfig, FTabs)),
      FDecimals(new QGroupBox(this)),
      FApplied(std::move(applied)) {
  FSampleTimer.setSingleShot(true);
  QObject::connect(&FSampleTimer, &QTimer::timeout, this, [this] { UpdateSamples(); });
  FTabs->addTab(FHostPage, {});
  for (const TPreferencePage& page : FDialog.GetPages()) {
    QWidget* form = CreateFormWidget(*page.FFrame, FTabs);
    const int margin = Scaled(kPageMargin);
    form->layout()->setContentsMargins(margin, margin, margin, margin);
    FTabs->addTab(new TFormScroll(form, FTabs), {});
    FollowPage(*form);
  }
  auto* grid = new QGridLayout(FDecimals);
  for (int column = 0; column < static_cast<int>(std::size(kSamples)); ++column) {
    FSamples.push_back({new QLabel(FDecimals), new QLabel(FDecimals)});
    grid->addWidget(FSamples.back().FCaption, 0, column, Qt::AlignRight);
    grid->addWidget(FSamples.back().FValue, 1, column, Qt::AlignRight);
  }
  auto* box = new QVBoxLayout(this);
  box->addWidget(FTabs, 1);
  box->addWidget(FDecimals);
  AddButtons();
  UpdateTexts();
  UpdateSamples();
}

void TPreferenceWindow::FollowPage(QWidget& form) {
  const auto changed = [this] { FSampleTimer.start(0); };
  for (auto* box : form.findChildren<QCheckBox*>()) {
    QObject::connect(box, &QCheckBox::toggled, this, changed);
  }
  for (auto* number : form.findChildren<QDoubleSpinBox*>()) {
    QObject::connect(number, &QDoubleSpinBox::valueChanged, this, changed);
  }
}

void TPreferenceWindow::AddButtons() {
  auto* buttons = new QDialogButtonBox(this);
  using TBox = QDialogButtonBox;
  const auto add = [&](TBox::ButtonRole role, const char* key, auto act) {
    QPushButton* button = buttons->addButton(QString(), role);
    QObject::connect(button, &QPushButton::clicked, this, act);
    FButtons.emplace_back(button, key);
  };
  add(TBox::AcceptRole, "Desktop_OK", [this] {
    if (Apply()) accept();
  });
  add(TBox::RejectRole, "Desktop_Cancel", [this] { reject(); });
  add(TBox::ApplyRole, "Desktop_Apply", [this] { Apply(); });
  add(TBox::ResetRole, "Desktop_Reset", [this] {
    FHostPage->Load();
    FDialog.Reset();
  });
  add(TBox::ResetRole, "Desktop_Factory", [this] {
    FHostPage->LoadFactory();
    FDialog.ResetFactory();
  });
  FButtons.front().first->setDefault(true);
  layout()->addWidget(buttons);
}

void TPreferenceWindow::UpdateTexts() {
  setWindowTitle(HostText("Desktop_PreferencesTitle"));
  FTabs->setAccessibleName(windowTitle());
  FTabs->tabBar()->setAccessibleName(windowTitle());
  FTabs->setTabText(0, HostText("Desktop_General"));
  int tab = 1;
  for (const TPreferencePage& page : FDialog.GetPages()) FTabs->setTabText(tab++, ToQt(page.FName));
  FHostPage->UpdateTexts();
  FDecimals->setTitle(HostText("Desktop_Sample"));
  for (std::size_t i = 0; i < FSamples.size(); ++i)
    FSamples[i].FCaption->setText(HostText(kSamples[i].FCaption));
  for (const auto& [button, key] : FButtons) button->setText(HostText(key));
}

void TPreferenceWindow::UpdateSamples() {
  TConfigManager chosen(GetUser(FConfig.GetUserSection()));
  FDialog.Preview(chosen);
  const TFormatter formatter(chosen);
  for (std::size_t i = 0; i < FSamples.size(); ++i)
    FSamples[i].FValue->setText(ToQt(kSamples[i].FShow(formatter)));
}

bool TPreferenceWindow::Apply() {
  bool saved = false;
  {
    const TConfigHold hold(FConfig);  // a page that heard of the others would lose what it has to save
    saved = FDialog.Apply();
    FHostPage->Save();
  }
  FApplied(FHostPage->GetLanguage());
  UpdateTexts();
  FHostPage->Load();
  if (!saved) TCustomMessageBoxCtrl::GetInstance().ShowMessage(FromQt(HostText("Desktop_NotSaved")));
  return saved;
}

void TPreferenceWindow::reject() {
  FDialog.Cancel();
  QDialog::reject();
}

}  // namespace margindesk
