#include "host/services/ColumnDialog.h"

#include <algorithm>
#include <utility>

#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

bool Contains(const std::vector<std::string>& captions, const std::string& caption) {
  return std::ranges::find(captions, caption) != captions.end();
}

}  // namespace

TCustomColumnResult MakeColumnResult(const TCustomColumnRecord& record, const TColumnAnswer& answer) {
  TCustomColumnResult result;
  std::vector<std::string> left = record.FAllCaptions;
  for (const std::string& caption : answer.FOrder) {
    const auto found = std::ranges::find(left, caption);
    if (found == left.end()) continue;
    result.FOrder.push_back(caption);
    left.erase(found);
  }
  std::ranges::move(left, std::back_inserter(result.FOrder));

  const std::vector<std::string>& visible = answer.FVisible ? *answer.FVisible : record.FVisibleCaptions;
  const std::string& reserved = record.FReservedCaptions.front();
  std::ranges::copy_if(result.FOrder, std::back_inserter(result.FVisible), [&](const std::string& caption) {
    return Contains(visible, caption) || (!reserved.empty() && caption == reserved);
  });
  return result;
}

TColumnDialog::TColumnDialog(TGlobalChannelManager& channels) : FChannels(channels) {
  FChannels.SetResponder(kMessageCustomColumns, [this](void* record) {
    if (record != nullptr) Respond(*static_cast<const TCustomColumnRecord*>(record));
  });
}

TColumnDialog::~TColumnDialog() { FChannels.SetResponder(kMessageCustomColumns, {}); }

void TColumnDialog::Respond(const TCustomColumnRecord& record) {
  // Used up before the callback runs, which may open the dialog again.
  const std::optional<TColumnAnswer> answer = std::exchange(FAnswer, std::nullopt);
  if (!answer || !record.FCallback) return;
  TCustomColumnResult result = MakeColumnResult(record, *answer);
  record.FCallback(nullptr, &result);
}

}  // namespace margindesk
