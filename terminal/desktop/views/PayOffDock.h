#pragma once

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QToolButton>

#include "terminal/desktop/views/FactForm.h"
#include "terminal/desktop/views/HostDock.h"
#include "terminal/desktop/views/PayOffChart.h"
#include "terminal/desktop/views/PositionChooser.h"

namespace margindesk {

// The pay-off of one option position of an account, or of everything that the account holds on the same
// underlying with it. The volatility is that of the option's price until the person sets one.
class TPayOffDock : public THostDock {
 public:
  static constexpr const char* kKind = "pay-off";

  TPayOffDock(THostData& hostData, TCode account, std::string key, QWidget* parent);

  std::vector<std::string> Describe() const override;
  void UpdateTexts() override;
  void Refresh() override;

 private:
  void ShowFigures(const TPayOffCase& payOff, const TPayOffFigures& figures);

  THostData& FData;
  TPositionChooser* FChooser;
  QCheckBox* FCombined;
  QLabel* FVolatilityCaption;
  QDoubleSpinBox* FVolatility;
  QToolButton* FImplied;
  QLabel* FFigures;
  TPayOffChart* FChart;
  QLabel* FNote;
  bool FOwnVolatility = false;
};

}  // namespace margindesk
