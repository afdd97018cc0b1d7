#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/services/GlobalChannelManager.h"
#include "model/contract/Datadef.h"

namespace margindesk {

// What is to be chosen in a column dialog.
struct TColumnAnswer {
  std::vector<std::string> FOrder;                   // captions from the front; the others follow as listed
  std::optional<std::vector<std::string>> FVisible;  // none: those that are shown now
};

// What a person can reach in the dialog: the listed captions alone, each as often as it is listed, and the
// reserved ones shown whatever was asked.
TCustomColumnResult MakeColumnResult(const TCustomColumnRecord& record, const TColumnAnswer& answer);

// The column dialog of a terminal without a display (kMessageCustomColumns): it gives the answer prepared
// beforehand, once; with none prepared the person has cancelled, and the view's callback is not called.
//
// A front with a display replaces the responder of the message by its own.
class TColumnDialog {
 public:
  explicit TColumnDialog(TGlobalChannelManager& channels);  // which must outlive it
  ~TColumnDialog();
  TColumnDialog(const TColumnDialog&) = delete;
  TColumnDialog& operator=(const TColumnDialog&) = delete;

  void SetAnswer(TColumnAnswer answer) { FAnswer = std::move(answer); }  // in place of the one before
  void ClearAnswer() { FAnswer.reset(); }
  bool HasAnswer() const noexcept { return FAnswer.has_value(); }

 private:
  void Respond(const TCustomColumnRecord& record);

  TGlobalChannelManager& FChannels;
  std::optional<TColumnAnswer> FAnswer;
};

}  // namespace margindesk
