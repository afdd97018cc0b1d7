#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QWidget>
#include <cstdint>

#include "host/services/ConfigManager.h"

namespace margindesk {

inline constexpr std::string_view kScaleKey = "ScaleSize";           // percent, in the platform section
inline constexpr std::string_view kSkinKey = "SkinName";             // in the user's section
inline constexpr std::string_view kLanguageKey = "DesktopLanguage";  // its index, in the user's section

// The scale that is set, as the step at or above it.
int ReadScale(const TCustomConfigManager& config);

// A language with its name in the language itself.
struct TLanguageName {
  std::int32_t FIndex;
  const char* FName;
};
extern const TLanguageName kLanguageNames[3];

// The host's own page of the preference dialog: language, skin, scale, and whether closing a position is
// confirmed.
class THostPage : public QWidget {
 public:
  THostPage(TConfigManager& config, QWidget* parent);  // which must outlive it

  void UpdateTexts();  // in the current language
  void Load();         // shows what is stored
  void LoadFactory();  // shows the factory values
  void Save();         // stores what is shown; the configuration tells of it
  std::int32_t GetLanguage() const;

 private:
  TConfigManager& FConfig;
  QComboBox* const FLanguage;
  QComboBox* const FSkin;
  QComboBox* const FScale;
  QCheckBox* const FConfirm;
  QFormLayout* FForm;
};

}  // namespace margindesk
