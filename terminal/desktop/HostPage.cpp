#include "terminal/desktop/HostPage.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>
#include <algorithm>

#include "model/contract/Formatter.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Skin.h"

namespace margindesk {

namespace {

struct TSample {
  const char* FText;
  std::int32_t FKind;  // of the formatter
  double FValue;
};

constexpr TSample kSamples[] = {
    {"Desktop_Amounts", kFormatAmount, 1234567.8},
    {"Desktop_Quantities", kFormatQuantity, 12000},
    {"Desktop_QuotedPrices", kFormatPrice, 318.4},
    {"Desktop_Ratios", kFormatRatio, 0.0525},
};
constexpr std::string_view kConfirmKey = "ConfirmationClosePosition";

void Select(QComboBox& box, const QVariant& value) { box.setCurrentIndex(std::max(box.findData(value), 0)); }

}  // namespace

const TLanguageName kLanguageNames[3] = {{kLanguageEnglish, "English"},
                                         {kLanguageSimplifiedChinese, "简体中文"},
                                         {kLanguageTraditionalChinese, "繁體中文"}};

int ReadScale(const TCustomConfigManager& config) {
  return FindScaleStep(config.ReadInteger(kPlatformSection, kScaleKey));
}

THostPage::THostPage(TConfigManager& config, QWidget* parent)
    : QWidget(parent),
      FConfig(config),
      FLanguage(new QComboBox(this)),
      FSkin(new QComboBox(this)),
      FScale(new QComboBox(this)),
      FConfirm(new QCheckBox(HostText("Desktop_ConfirmClosing"), this)) {
  setObjectName(QStringLiteral("HostPage"));
  for (const TLanguageName& language : kLanguageNames) {
    FLanguage->addItem(QString::fromUtf8(language.FName), language.FIndex);
  }
  FSkin->addItem(HostText("Desktop_SkinLight"), QStringLiteral("Light"));
  FSkin->addItem(HostText("Desktop_SkinDark"), QStringLiteral("Dark"));
  for (const int percent : kScaleSteps) FScale->addItem(QStringLiteral("%1 %").arg(percent), percent);

  auto* form = new QFormLayout;
  form->addRow(HostText("Desktop_Language"), FLanguage);
  form->addRow(HostText("Desktop_Skin"), FSkin);
  form->addRow(HostText("Desktop_Scale"), FScale);
  form->addRow(FConfirm);
  auto* decimals = new QGroupBox(HostText("Desktop_Decimals"), this);
  auto* samples = new QFormLayout(decimals);
  for (const TSample& sample : kSamples) {
    FSamples.push_back(new QLabel(decimals));
    FSamples.back()->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    samples->addRow(HostText(sample.FText), FSamples.back());
  }
  auto* box = new QVBoxLayout(this);
  box->addLayout(form);
  box->addWidget(decimals);
  box->addStretch(1);
  Load();
}

void THostPage::UpdateSamples() {
  const TCustomFormatter& formatter = TCustomFormatter::GetInstance();
  for (std::size_t i = 0; i < FSamples.size(); ++i) {
    FSamples[i]->setText(ToQt(formatter.FormatValue(kSamples[i].FValue, kSamples[i].FKind, TCode(), true)));
  }
}

void THostPage::Load() {
  const std::string user = FConfig.GetUserSection();
  Select(*FLanguage, TCustomLanguageManager::GetInstance().GetLanguageIndex());
  Select(*FSkin, ToQt(FConfig.ReadString(user, kSkinKey)));
  Select(*FScale, ReadScale(FConfig));
  FConfirm->setChecked(FConfig.ReadBool(user, kConfirmKey));
  UpdateSamples();
}

void THostPage::LoadFactory() {
  Select(*FSkin, QStringLiteral("Light"));
  Select(*FScale, 100);
  FConfirm->setChecked(false);
}

void THostPage::Save() {
  const TConfigHold hold(FConfig);
  const std::string user = FConfig.GetUserSection();
  FConfig.WriteString(user, kSkinKey, FromQt(FSkin->currentData().toString()), true);
  FConfig.WriteString(kPlatformSection, kScaleKey, std::to_string(FScale->currentData().toInt()), true);
  FConfig.WriteString(user, kConfirmKey, FConfirm->isChecked() ? "Y" : "N", true);
}

std::int32_t THostPage::GetLanguage() const { return FLanguage->currentData().toInt(); }

}  // namespace margindesk
