#pragma once

#include <QMenuBar>

#include "host/services/MarketTicker.h"
#include "host/services/ReferenceHost.h"

namespace margindesk {

// The menu of the live market: start and pause, speed, at random or from a tick file.
class TMarketMenu {
 public:
  explicit TMarketMenu(TReferenceHost& host);  // which must outlive it

  void AddTo(QMenuBar& bar);  // in the current language

 private:
  void Fill(QMenu& menu);
  void ChooseFile(QWidget* parent);

  TReferenceHost& FHost;
  TMarketTicker FTicker;
};

}  // namespace margindesk
