#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "model/contract/Baseview.h"
#include "plugin/DataPreferenceInterface.h"

namespace margindesk {

// The plug-in object of the account information view: its menu entry, and a new view each time it is opened.
class TIAccountInfo : public TIBaseView {
 public:
  // Makes a new, empty formula map for all views in the place of the old one and starts the download of the
  // formula file. What a derived class replaces of the loading is not reached from this constructor; the two
  // completions, which come later, do reach it.
  explicit TIAccountInfo(TComponent* owner);
  ~TIAccountInfo() override;  // breaks the download off; the formula map stays

  std::string GetName() override;
  std::int32_t GetViewID() override;
  std::int32_t GetMenuLevel() override;
  std::int32_t GetMenuIndex(std::int32_t level) override;
  std::int32_t GetMenuID(std::int32_t level) override;
  std::string GetMenuCaption(std::int32_t level) override;
  std::int32_t GetMenuGroupIndex(std::int32_t level) override;
  bool GetIsVisible() override;
  TFrame* OpenNewInstance() override;
  TIBasePreferenceView* GetPreferenceView() override;
  bool GetDefaultSize(std::int32_t& width, std::int32_t& height) override;
  bool GetDefaultCaption(std::string& caption) override;

  // --- the formula map (AccountInfoInterfaceFormula.cpp)

  // Fetches the file at the address in the user's "FormulaURL"; does nothing without one.
  virtual void LoadFormulaMapURL();
  // The file has been fetched: reads it.
  virtual void ProcessLoadFormulaURL(void* sender, const std::string& fileName, const std::string& text,
                                     bool success);
  // The file has been read: fills the map anew, and deletes the file whether or not it could be read. A
  // failure leaves the map as it was.
  virtual void ProcessLoadFormulaFile(void* sender, const std::string& fileName, const std::string& text,
                                      bool success);
  void ProcessFormulaFile(std::string_view text, std::string_view languageCode);  // one language of the file
  void ClearFormulaList();

 private:
  std::unique_ptr<TIDataPreference> FMyPreferenceView;  // made when first asked for
  std::string FFormulaFile;                             // the fetched file while it is being read
};

}  // namespace margindesk
