#include "fuzz/FuzzHost.h"

#include <cstdio>
#include <cstdlib>

namespace margindesk {

THostContents MakeFuzzContents() {
  THostContents contents;
  contents.FCurrencies = {{TCode("HKD"), 1, false, true}, {TCode("USD"), 7.8, false, false}};
  TProductFacts product;
  product.FSymbol = TCode("5");
  product.FCurrency = TCode("HKD");
  contents.FProducts.push_back(product);
  TPriceFacts prices;
  prices.FLast = 60;
  contents.FPrices.emplace_back(product.FSymbol, prices);
  TAccountFacts master;
  master.FAccount = TCode("M1");
  master.FType = "S";
  master.FMasterType = 1;
  TAccountFacts subAccount;
  subAccount.FAccount = TCode("S1");
  subAccount.FMaster = master.FAccount;
  contents.FAccounts = {master, subAccount};
  TPositionFacts position;
  position.FAccount = master.FAccount;
  position.FSymbol = product.FSymbol;
  position.FQuantity = position.FHoldingQuantity = 400;
  contents.FPositions.push_back(position);
  return contents;
}

TReferenceHostOptions MakeFuzzOptions() {
  TReferenceHostOptions options;
  options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
  options.FClock = [] { return TUiLoop::TTimePoint(); };
  options.FFileLimits.FConnectTime = options.FFileLimits.FTotalTime = std::chrono::milliseconds(50);
  return options;
}

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

}  // namespace margindesk
