// The formula map: fetched once, when the plug-in object is made, and read by the views at each hint.
#include <filesystem>
#include <memory>
#include <system_error>

#include "accountinfo/view/AccountInfoView.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/FileService.h"
#include "plugin/AccountInfoInterface.h"
#include "plugin/FormulaFile.h"

namespace margindesk {

namespace {

void DeleteLocalFile(const std::string& fileName) {
  std::error_code ignored;
  if (!fileName.empty()) std::filesystem::remove(fileName, ignored);
}

}  // namespace

TIAccountInfo::TIAccountInfo(TComponent* owner) : TIBaseView(owner) {
  FFormulaMapList = std::make_unique<TFormulaMapList>();
  TIAccountInfo::LoadFormulaMapURL();
}

TIAccountInfo::~TIAccountInfo() {
  if (TCustomFileService::HasInstance()) TCustomFileService::GetInstance().CancelHandlersOf(this);
  DeleteLocalFile(FFormulaFile);
}

void TIAccountInfo::LoadFormulaMapURL() {
  const auto& config = TCustomConfigManager::GetInstance();
  const std::string address = config.ReadString(config.GetUserSection(), "FormulaURL");
  if (address.empty()) return;
  TCustomFileService::GetInstance().DownloadFile(
      nullptr, address, MakeFileCompletionHandler<&TIAccountInfo::ProcessLoadFormulaURL>(this));
}

void TIAccountInfo::ProcessLoadFormulaURL(void* /*sender*/, const std::string& fileName,
                                          const std::string& /*text*/, bool success) {
  if (!success) return DeleteLocalFile(fileName);
  if (fileName.empty()) return;
  FFormulaFile = fileName;
  TCustomFileService::GetInstance().LoadFileText(
      nullptr, fileName, MakeFileCompletionHandler<&TIAccountInfo::ProcessLoadFormulaFile>(this));
}

void TIAccountInfo::ProcessLoadFormulaFile(void* /*sender*/, const std::string& fileName,
                                           const std::string& text, bool success) {
  if (success) {
    ClearFormulaList();
    for (const std::string_view languageCode : {"ENG", "CHS", "ZHH"}) ProcessFormulaFile(text, languageCode);
  }
  DeleteLocalFile(fileName);
  FFormulaFile.clear();
}

void TIAccountInfo::ProcessFormulaFile(std::string_view text, std::string_view languageCode) {
  if (FFormulaMapList != nullptr) ReadFormulaSection(text, languageCode, *FFormulaMapList);
}

void TIAccountInfo::ClearFormulaList() {
  if (FFormulaMapList != nullptr) FFormulaMapList->clear();
}

}  // namespace margindesk
