#pragma once

#include <string>

class QApplication;

namespace margindesk {

// Gives the application the colours of a skin ("Light", "Dark") and its font at a scale in percent, with the
// characters of the current language's region.
void ApplySkin(QApplication& application, const std::string& skin, int scalePercent);

// The steps of the scale in percent.
inline constexpr int kScaleSteps[] = {100, 115, 125, 135, 150};

// The step at or above a percentage, else the last one.
int FindScaleStep(int percent);

// Pixels of a screen that are so many at 100 %, at the scale that was applied last; and the other way round.
int Scaled(int pixels);
int Unscaled(int pixels);

}  // namespace margindesk
