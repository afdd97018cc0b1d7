#pragma once

#include "terminal/desktop/views/FactForm.h"
#include "terminal/desktop/views/HostDock.h"
#include "terminal/desktop/views/PositionChooser.h"

namespace margindesk {

// Every fact of one position of an account: what is held, what it cost, prices, worth, profit and loss.
class TPositionDetail : public THostDock {
 public:
  static constexpr const char* kKind = "position";

  TPositionDetail(THostData& hostData, TCode account, std::string key, QWidget* parent);

  void Choose(TCode account, std::string key);

  std::vector<std::string> Describe() const override;
  void UpdateTexts() override;
  void Refresh() override;

 private:
  THostData& FData;
  TPositionChooser* FChooser;
  TFactForm* FForm;
};

}  // namespace margindesk
