#pragma once

#include <QObject>

#include "controls/HintStyleController.h"

namespace margindesk {

// Shows the hints of a form at the pointer.
class THintBinder : public QObject {
 public:
  THintBinder(THintStyleController& hints, QWidget& form);
  ~THintBinder() override;

 private:
  void HintUpdated();

  THintStyleController& FHints;
  QWidget& FForm;
};

}  // namespace margindesk
