#include "terminal/desktop/HostPage.h"

#include <QLabel>
#include <algorithm>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/Skin.h"

namespace margindesk {

namespace {

constexpr const char* kSkins[] = {"Light", "Dark"};
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
      FConfirm(new QCheckBox(this)) {
  setObjectName(QStringLiteral("HostPage"));
  for (const TLanguageName& language : kLanguageNames) {
    FLanguage->addItem(QString::fromUtf8(language.FName), language.FIndex);
  }
  for (const char* skin : kSkins) FSkin->addItem({}, QString::fromLatin1(skin));
  for (const int percent : kScaleSteps) FScale->addItem(QStringLiteral("%1 %").arg(percent), percent);
  FForm = new QFormLayout(this);
  for (QComboBox* field : {FLanguage, FSkin, FScale}) FForm->addRow(new QLabel(this), field);
  FForm->addRow(FConfirm);
  UpdateTexts();
  Load();
}

void THostPage::UpdateTexts() {
  const auto name = [this](QWidget* field, const char* key) {
    static_cast<QLabel*>(FForm->labelForField(field))->setText(HostText(key));
    field->setAccessibleName(HostText(key));
  };
  name(FLanguage, "Desktop_Language");
  name(FSkin, "Desktop_Skin");
  name(FScale, "Desktop_Scale");
  FSkin->setItemText(0, HostText("Desktop_SkinLight"));
  FSkin->setItemText(1, HostText("Desktop_SkinDark"));
  FConfirm->setText(HostText("Desktop_ConfirmClosing"));
}

void THostPage::Load() {
  const std::string user = FConfig.GetUserSection();
  Select(*FLanguage, TCustomLanguageManager::GetInstance().GetLanguageIndex());
  Select(*FSkin, ToQt(FConfig.ReadString(user, kSkinKey)));
  Select(*FScale, ReadScale(FConfig));
  FConfirm->setChecked(FConfig.ReadBool(user, kConfirmKey));
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
