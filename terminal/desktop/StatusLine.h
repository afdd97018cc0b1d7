#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <functional>
#include <vector>

#include "host/services/ReferenceHost.h"

namespace margindesk {

// What the status bar says all the time: whether the terminal is connected, when figures last changed, how
// many prices under the open views' figures are not current, and whether a simulation is out of date.
// Everything is looked at twice a second, and only when something changed.
class TStatusLine {
 public:
  // All must outlive it. isSimulationOld answers for all open views together.
  TStatusLine(TReferenceHost& host, QStatusBar& bar, std::function<bool()> isSimulationOld);
  ~TStatusLine();
  TStatusLine(const TStatusLine&) = delete;
  TStatusLine& operator=(const TStatusLine&) = delete;

  void UpdateTexts();                     // in the current language
  void NoteChange() { FChanged = true; }  // the open views, or their accounts, may be others

 private:
  void Refresh();
  std::vector<TCode> FindStaleSymbols() const;
  void AddStaleSymbols(TCode account, TCodeSet& seen, std::vector<TCode>& stale) const;

  TReferenceHost& FHost;
  const std::function<bool()> FIsSimulationOld;
  QLabel* const FSimulation;
  QLabel* const FStale;
  QLabel* const FConnection;
  QLabel* const FUpdated;
  QTimer FTimer;
  QTime FTime = QTime::currentTime();  // of the last update
  bool FChanged = true;
};

}  // namespace margindesk
