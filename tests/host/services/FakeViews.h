#pragma once

#include <memory>
#include <string>

#include "model/contract/Baseview.h"
#include "model/contract/Constdef.h"
#include "model/contract/Variant.h"

namespace margindesk {

// A view whose layout is any text. A layout that begins with "bad" is taken and then refused; one that begins
// with "mute" cannot be read back.
class TFakeFrame final : public TViewFrame {
 public:
  explicit TFakeFrame(std::string& log) : TViewFrame(nullptr), FLog(log) {
    SendViewNotify(this, kViewLayoutChanged);
  }
  ~TFakeFrame() override { FLog += "closed " + FLayout + ";"; }

  bool GetLayoutData(std::string& layout) override {
    if (FLayout.starts_with("mute")) throw std::runtime_error("no layout");
    layout = FLayout;
    return true;
  }
  bool SetLayoutData(const std::string& layout) override {
    FLayout = layout;
    SendViewNotify(this, kViewLayoutChanged);
    if (layout.starts_with("bad")) throw EConvertError("no flag: \n" + layout);
    return true;
  }
  bool GetViewCaption(std::string& caption) override {
    caption = "View of " + FLayout;
    return true;
  }
  bool SetGroupID(const std::string& groupID) override {
    FGroup = groupID;
    return true;
  }
  bool GetGroupID(std::string& groupID) override {
    groupID = FGroup;
    return true;
  }

  std::string FLayout, FGroup;

 private:
  std::string& FLog;
};

struct TFakeView final : TIBaseView {
  TFakeView() : TIBaseView(nullptr) {}
  TFrame* OpenNewInstance() override { return FindFrame(AddView(std::make_unique<TFakeFrame>(FLog))); }

  std::string FLog;
};

}  // namespace margindesk
