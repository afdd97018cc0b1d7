#pragma once

#include <cstddef>
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
  THandler Accounts() { return MakeHandler<&TRecorder::TakeAccounts>(this); }    // "A1 A2"
  THandler Positions() { return MakeHandler<&TRecorder::TakePositions>(this); }  // "A1(5 700) A2()"
  THandler Plain() { return MakeHandler<&TRecorder::TakePlain>(this); }          // "called"

  // What has come since the last call.
  std::vector<std::string> Take() { return std::exchange(FNotices, {}); }

  // Called before a notice is kept.
  std::function<void()> FOnNotice;

 private:
  void TakeAccounts(void* /*sender*/, void* data) {
    std::string notice;
    for (const auto& [account, record] : *static_cast<TAccountMap*>(data)) {
      notice += (notice.empty() ? "" : " ") + account.Text();
    }
    Keep(std::move(notice));
  }
  void TakePositions(void* /*sender*/, void* data) {
    std::string notice;
    for (const auto& [account, positions] : *static_cast<TAccountPositionMap*>(data)) {
      std::string keys;
      for (const std::string& key : positions.GetKeys()) keys += (keys.empty() ? "" : " ") + key;
      notice += (notice.empty() ? "" : " ") + account.Text() + "(" + keys + ")";
    }
    Keep(std::move(notice));
  }
  void TakePlain(void* /*sender*/, void* /*data*/) { Keep("called"); }

  void Keep(std::string notice) {
    if (FOnNotice) FOnNotice();
    FNotices.push_back(std::move(notice));
  }

  std::vector<std::string> FNotices;
};

}  // namespace margindesk
