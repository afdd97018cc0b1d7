#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "host/services/HostCalls.h"
#include "model/contract/Baseview.h"

namespace margindesk {

struct TOpenView {
  std::string FClass;
  TViewHandle FHandle = 0;
  TFrame* FFrame = nullptr;  // the plug-in object's
  std::string FCaption;      // as the view last said; its class where it says none
};

// Shows the open views. Nothing may be thrown.
class TOpenViewsListener {
 public:
  virtual void ViewOpened(const TOpenView& view) = 0;
  virtual void ViewClosing(TViewHandle handle) = 0;  // its frame is still there, and goes when this returns
  // The view told something: its caption or its caption buttons may differ.
  virtual void ViewCaptionChanged(TViewHandle handle) = 0;

 protected:
  ~TOpenViewsListener() = default;
};

// The open views of a front, as its main window keeps them, without a display. It hears what frames tell of
// themselves: after kViewAccountChanged and kViewLayoutChanged it asks the view's caption again. What a frame
// tells before it is open goes nowhere.
//
// A view may be opened or closed while another one is told something. An operation for a handle that is not
// open answers false, null or empty and does nothing.
class TOpenViews {
 public:
  explicit TOpenViews(THostCalls& calls);  // which must outlive it
  ~TOpenViews();                           // closes every view, the last opened first
  TOpenViews(const TOpenViews&) = delete;
  TOpenViews& operator=(const TOpenViews&) = delete;

  // Makes a plug-in object (not owned) known under its class name ("TIAccountInfo"), in place of the one
  // before. It is removed before it goes, which closes its views.
  void AddClass(const std::string& className, TIBaseView& plugin);
  void RemoveClass(const std::string& className);
  bool HasClass(const std::string& className) const { return FindClass(className) != nullptr; }
  std::vector<std::string> GetClasses() const;                // in the order in which they were made known
  TIBaseView* FindClass(const std::string& className) const;  // null when it is not known

  // Opens a new view and answers its handle: 0 when the class is unknown or gives no view. What the view
  // throws while it is made comes through, with nothing opened.
  TViewHandle Open(const std::string& className);
  bool Close(TViewHandle handle);
  void CloseAll();  // the last opened first; meanwhile none opens

  const std::vector<TOpenView>& GetViews() const noexcept { return FViews; }  // in the order of opening
  const TOpenView* Find(TViewHandle handle) const noexcept;                   // null when it is not open
  TViewHandle FindHandle(const TFrame* frame) const noexcept;                 // 0 when it is not open
  TIBaseView* FindPlugin(TViewHandle handle) const;                           // null when it is not open

  std::string GetGroup(TViewHandle handle) const;
  bool SetGroup(TViewHandle handle, const std::string& group);
  std::string GetLayout(TViewHandle handle) const;
  // A layout text that the view cannot read throws EConvertError out of the view; what the view took before
  // stays.
  bool SetLayout(TViewHandle handle, const std::string& layout);
  // Who shows the views; null for nobody. Not owned.
  void SetListener(TOpenViewsListener* listener) noexcept { FListener = listener; }

  void SetLanguage(std::int32_t index);  // of every view; the language itself is the language manager's

 private:
  void TakeNotice(const TFrame* frame, std::int32_t code);
  void UpdateCaption(TViewHandle handle);

  THostCalls& FCalls;
  std::vector<std::pair<std::string, TIBaseView*>> FPlugins;  // by class, in the order they were made known
  std::vector<TOpenView> FViews;
  bool FClosing = false;
  TOpenViewsListener* FListener = nullptr;
};

}  // namespace margindesk
