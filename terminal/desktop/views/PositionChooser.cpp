#include "terminal/desktop/views/PositionChooser.h"

#include <QSignalBlocker>

#include "terminal/desktop/Text.h"

namespace margindesk {

TPositionChooser::TPositionChooser(THostData& hostData, TCode account, std::string key, QWidget* parent,
                                   TFilter filter)
    : QComboBox(parent), FData(hostData), FFilter(std::move(filter)) {
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(16);
  QObject::connect(this, &QComboBox::currentIndexChanged, this,
                   [this](int index) { FKey = FromQt(itemData(index).toString()); });
  Choose(account, std::move(key));
}

void TPositionChooser::Choose(TCode account, std::string key) {
  FAccount = account;
  FKey = std::move(key);
  Refresh();
  if (currentIndex() >= 0 || count() == 0) return;
  FKey.clear();
  Refresh();
}

const TPositionFacts* TPositionChooser::GetPosition() const {
  const TAccountRecord* account = FData.FindAccount(FAccount);
  return account == nullptr || !account->FPositions ? nullptr : account->FPositions->Find(FKey);
}

void TPositionChooser::Refresh() {
  QStringList keys;
  QStringList captions;
  const TAccountRecord* account = FData.FindAccount(FAccount);
  if (account != nullptr && account->FPositions) {
    for (const TPositionFacts& position : account->FPositions->GetFacts()) {
      const TSymbolFacts* facts = FData.GetItem(position.FSymbol).GetFacts();
      if (FFilter && (facts == nullptr || !FFilter(facts->FProduct))) continue;
      keys << ToQt(position.FKey);
      captions << (facts == nullptr ? keys.back()
                                    : keys.back() + QStringLiteral("   ") + ToQt(facts->FProduct.FName));
    }
  }
  const QSignalBlocker quiet(this);  // nobody chose anything
  bool same = keys.size() == count();
  for (int i = 0; same && i < count(); ++i) same = itemData(i).toString() == keys[i];
  if (!same) {
    clear();
    for (qsizetype i = 0; i < keys.size(); ++i) addItem(captions[i], keys[i]);
  }
  if (FKey.empty() && !keys.isEmpty()) FKey = FromQt(keys.front());
  setCurrentIndex(static_cast<int>(keys.indexOf(ToQt(FKey))));
}

}  // namespace margindesk
