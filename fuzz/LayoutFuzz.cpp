// Any text as the layout text of an account information view, and as its layout template.
#include <cstddef>
#include <cstdint>
#include <string>

#include "accountinfo/view/AccountInfoView.h"
#include "fuzz/FuzzHost.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Variant.h"

namespace {

using namespace margindesk;

TReferenceHost& GetHost() {
  static TReferenceHost host(MakeFuzzContents(), MakeFuzzOptions());
  return host;
}

std::string GetLayout(TAccountInfoFrame& frame) {
  std::string layout;
  frame.GetLayoutData(layout);
  return layout;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  auto& config = GetHost().Config();
  config.WriteString(config.GetUserSection(), "Stock_AccountInfoColumn", "Equity,PL,PL,CashBalance", false);
  config.WriteString("LayoutTemplate", "AccountInfo", text, false);
  auto frame = CreateViewFrame<TAccountInfoFrame>(nullptr);
  const std::size_t columns = frame->GetLayoutTemplate().size();
  try {
    frame->SetLayoutData(text);
  } catch (const EConvertError&) {
    // The lock says neither yes nor no; the columns are then as they were.
    Require(frame->GetLayoutTemplate().size() == columns, "a refused layout has changed the columns");
  }
  // What the view says of itself, it takes back without a change.
  const std::string layout = GetLayout(*frame);
  Require(frame->SetLayoutData(layout), "a layout of its own was refused");
  Require(GetLayout(*frame) == layout, "a layout of its own has changed the view");
  frame.reset();
  Require(GetHost().CountRegistrations() == 0, "a closed view is still registered");
  return 0;
}
