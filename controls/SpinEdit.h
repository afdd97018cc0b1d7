#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "controls/Control.h"
#include "controls/Geometry.h"

namespace margindesk {

// A number with spin buttons, kept between its limits. It may be empty.
class TSpinEdit : public TValueControl<std::optional<double>> {
 public:
  using TValueControl::TValueControl;

  std::optional<double> GetNumber() const noexcept { return Value(); }
  void SetNumber(std::optional<double> number) {
    if (number && !std::isfinite(*number)) number.reset();
    if (number) number = std::clamp(*number, FMinimum, FMaximum);
    ChangeValue(number);
  }

  double GetMinimum() const noexcept { return FMinimum; }
  double GetMaximum() const noexcept { return FMaximum; }
  // A value outside the new limits moves to the nearer one. minimum is not above maximum.
  void SetLimits(double minimum, double maximum) {
    Assign(FMinimum, minimum);
    Assign(FMaximum, maximum);
    SetNumber(GetNumber());
  }
  double GetIncrement() const noexcept { return FIncrement; }
  void SetIncrement(double increment) { Assign(FIncrement, increment); }

  TAlignment GetAlignment() const noexcept { return FAlignment; }
  void SetAlignment(TAlignment alignment) { Assign(FAlignment, alignment); }

  void Spin(std::int32_t steps) { SetNumber(GetNumber().value_or(0) + steps * FIncrement); }

 private:
  double FMinimum = std::numeric_limits<double>::lowest();
  double FMaximum = std::numeric_limits<double>::max();
  double FIncrement = 1;
  TAlignment FAlignment = TAlignment::Left;
};

}  // namespace margindesk
