#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "forms/DataPreferenceForm.h"

namespace margindesk {

// The data preference page: the decimals of five kinds of figures, whether zeros among them are shown, and
// the mode of average prices. It holds nothing but its controls; what is stored in the user's section is the
// truth, and any change of the configuration loads the page again.
class TDataPreferenceFrame final : public TDataPreferenceForm {
 public:
  explicit TDataPreferenceFrame(TComponent* owner);
  ~TDataPreferenceFrame() override;

  bool SetLanguage(std::int32_t index) override;  // to the host's current language; the index is not used
  bool Execute() override;                        // writes what differs from what is stored, and nothing else
  bool Reset() override;
  bool ResetFactory() override;  // the page has no factory values: as Reset
  bool SendMessage(std::int32_t flag, std::int64_t data) override;
  std::int32_t GetWidth() override;  // of the page's contents
  std::int32_t GetHeight() override;

  void InitView();
  void ConfigUpdate(void* sender, void* data);
  std::string GetResourceStr(std::string_view key) const;

 private:
  // The check boxes' handlers: what belongs to a box can be reached while it is checked.
  template <std::size_t Row>
  void cbPrecisionPropertiesChange() {
    EnableRow(FRows[Row]);
  }
  void cbAvgPriceModePropertiesChange();

  template <std::size_t... Rows>
  void BindRows(std::index_sequence<Rows...> rows);
  static void EnableRow(const TPrecisionRow& row);
};

}  // namespace margindesk
