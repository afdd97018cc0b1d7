#include "terminal/desktop/SimulationWatch.h"

#include <QPushButton>

namespace margindesk {

TSimulationWatch::TSimulationWatch(const TFrame& frame, const QWidget& form)
    : FGrid(dynamic_cast<TGridTableView*>(frame.FindComponent("OrderGridView"))) {
  if (FGrid == nullptr) return;
  // The binders were connected before, so the form has acted when these are called.
  const auto follow = [&](const char* button, auto act) {
    if (auto* found = form.findChild<QPushButton*>(QString::fromLatin1(button))) {
      QObject::connect(found, &QPushButton::clicked, &form, act);
    }
  };
  follow("btnSimulate", [this] { FSimulated = ReadOrders(); });
  follow("btnClear", [this] { FSimulated.reset(); });
  follow("btnSubmit", [this] {
    if (ReadOrders().empty()) FSimulated.reset();
  });
}

std::vector<std::string> TSimulationWatch::ReadOrders() const {
  std::vector<std::string> orders;
  for (std::int32_t record = 0; record < FGrid->GetRecordCount(); ++record) {
    std::string row;
    bool blank = true;
    for (const TGridColumn& column : FGrid->GetColumns()) {
      const std::string text = FGrid->GetValue(record, column.FTag).AsText();
      blank = blank && text.empty();
      row += text + '\n';
    }
    if (!blank) orders.push_back(std::move(row));
  }
  return orders;
}

}  // namespace margindesk
