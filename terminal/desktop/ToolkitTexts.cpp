#include "terminal/desktop/ToolkitTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QPointer>
#include <QTranslator>

#include "model/contract/LanguageManager.h"

namespace margindesk {

namespace {

// The toolkit's names; English is what it speaks without any.
const char* GetToolkitName(std::int32_t language) {
  switch (language) {
    case kLanguageSimplifiedChinese:
      return "qtbase_zh_CN";
    case kLanguageTraditionalChinese:
      return "qtbase_zh_TW";
    default:
      return nullptr;
  }
}

}  // namespace

void UseToolkitTexts(std::int32_t language) {
  static QPointer<QTranslator> installed;  // goes with the application
  delete installed;
  const char* name = GetToolkitName(language);
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  auto* translator = new QTranslator(QCoreApplication::instance());
  installed = translator;
  if (name != nullptr && translator->load(QString::fromLatin1(name), folder)) {
    QCoreApplication::installTranslator(translator);
  }
}

}  // namespace margindesk
