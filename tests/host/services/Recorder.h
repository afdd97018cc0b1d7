#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "model/contract/BaseAccountData.h"
#include "model/contract/BasePositionData.h"
#include "model/contract/Handlers.h"

namespace margindesk {

// Keeps what it was notified of, as texts.
class TRecorder {
 public:
  THandler Accounts() { return MakeHandler<&TRecorder::TakeAccounts>(this); }    // "A1 A2 "
  THandler Positions() { return MakeHandler<&TRecorder::TakePositions>(this); }  // "A1(5 700 ) A2() "
  THandler Plain() { return MakeHandler<&TRecorder::TakePlain>(this); }          // "called"

  // What has come since the last call.
  std::vector<std::string> Take() { return std::exchange(FNotices, {}); }

  std::function<void()> FOnNotice = [] {};  // called once, when a notice was kept

 private:
  void TakeAccounts(void* /*sender*/, void* data) {
    std::string& notice = FNotices.emplace_back();
    for (const auto& [account, record] : *static_cast<TAccountMap*>(data)) notice += account.Text() + " ";
    std::exchange(FOnNotice, [] {})();
  }
  void TakePositions(void* /*sender*/, void* data) {
    std::string& notice = FNotices.emplace_back();
    for (const auto& [account, positions] : *static_cast<TAccountPositionMap*>(data)) {
      notice += account.Text() + "(";
      for (const std::string& key : positions.GetKeys()) notice += key + " ";
      notice += ") ";
    }
    std::exchange(FOnNotice, [] {})();
  }
  void TakePlain(void* /*sender*/, void* /*data*/) { FNotices.emplace_back("called"); }

  std::vector<std::string> FNotices;
};

}  // namespace margindesk
