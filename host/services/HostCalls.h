#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "host/framework/HostFunctions.h"
#include "host/services/HostData.h"

namespace margindesk {

// What a package asks of the host's main window and of its China Connect links. A front registers what opens
// views and what follows their state; until then no view opens and a view's notices go nowhere.
class THostCalls final : public THostFunctions {
 public:
  // The data object may be read during the call only. False: there is no such view.
  using TViewOpener = std::function<bool(void* sender, std::int32_t viewID, std::int32_t number,
                                         const TBaseData* data, bool flag1, bool flag2)>;
  using TViewSink = std::function<void(TFrame* view, std::int32_t code)>;

  explicit THostCalls(const THostData& data) : FData(data) {}

  bool IsChinaConnectOn() const override { return FData.IsChinaConnectOn(); }
  bool IsChinaConnectExchange(TCode exchange) const override;
  TCode GetChinaConnectAccount(TCode account) const override;
  bool OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData* data,
                      bool flag1, bool flag2) override;
  void SendViewNotify(TFrame* view, std::int32_t code) override;
  bool DecodePicture(const std::string& fileName, TBitmap& bitmap) override;

  // Each takes the place of the one before; an empty one takes it out.
  void SetViewOpener(TViewOpener opener) { FOpener = std::move(opener); }
  void SetViewSink(TViewSink sink) { FSink = std::move(sink); }

 private:
  const THostData& FData;
  TViewOpener FOpener;
  TViewSink FSink;
};

}  // namespace margindesk
