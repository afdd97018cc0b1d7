#pragma once

#include <QComboBox>
#include <functional>
#include <string>

#include "host/services/HostData.h"

namespace margindesk {

// An account's positions to choose from, by symbol and name. What is chosen stays while the list changes.
class TPositionChooser : public QComboBox {
 public:
  using TFilter = std::function<bool(const TProductFacts& product)>;  // empty: every position

  TPositionChooser(THostData& hostData, TCode account, std::string key, QWidget* parent, TFilter filter = {});

  // Another account or position; a key that is not listed gives the account's first one.
  void Choose(TCode account, std::string key);

  void Refresh();

  TCode GetAccount() const noexcept { return FAccount; }
  const std::string& GetKey() const noexcept { return FKey; }  // empty: there is none
  const TPositionFacts* GetPosition() const;                   // null when it is gone

 private:
  THostData& FData;
  TCode FAccount;
  std::string FKey;
  const TFilter FFilter;
};

}  // namespace margindesk
