#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Bitmap.h"
#include "controls/Frame.h"
#include "controls/ImageList.h"
#include "model/contract/Component.h"

namespace margindesk {

class TBaseData;

// Names one open frame in the host; never given out twice, 0 for none.
using TViewHandle = std::int64_t;

enum class TDockPosition { None, Left, Top, Right, Bottom, Client };

// A button in a view's caption bar. It belongs to its frame; the lists that are handed to the host borrow it.
class TCaptionButton : public TComponent {
 public:
  explicit TCaptionButton(TComponent* owner) : TComponent(owner) {}

  using TClick = void (*)(void* object, void* sender);  // (FOnClickObject, the button)

  std::int32_t FImageIndex = -1;
  std::string FHint;
  bool FVisible = true;
  std::int32_t FDown = 0;  // 1 while the button is down
  TClick FOnClick = nullptr;
  void* FOnClickObject = nullptr;
};

// A keyboard shortcut that a view offers: the host draws the text and asks for the action.
struct TCustomViewShortcut {
  std::string FText;
  std::int32_t FAction = 0;
};

// A frame of a view. The plug-in object forwards what the host asks of a handle to the frame's operation of
// the same name; the answers here are those of a frame that does not offer the operation. False leaves an
// argument to be filled in as it was.
class TViewFrame : public TFrame {
 public:
  using TFrame::TFrame;

  virtual bool SetLanguage(std::int32_t /*index*/) { return false; }
  virtual bool GetLayoutData(std::string& /*layout*/) { return false; }
  virtual bool SetLayoutData(const std::string& /*layout*/) { return false; }
  virtual const std::vector<TCaptionButton*>* GetViewCaptionButtons() { return nullptr; }
  virtual const TImageList* GetViewCaptionButtonImageList() { return nullptr; }
  virtual bool GetViewCaption(std::string& /*caption*/) { return false; }
  virtual bool SetGroupID(const std::string& /*groupID*/) { return false; }
  virtual bool GetGroupID(std::string& /*groupID*/) { return false; }
  virtual bool GetWidth(std::int32_t& /*width*/) { return false; }    // pixels
  virtual bool GetHeight(std::int32_t& /*height*/) { return false; }  // pixels
};

// A page of the preference dialog. Every operation answers whether it was carried out.
class TPreferenceFrame : public TFrame {
 public:
  using TFrame::TFrame;

  virtual bool SetLanguage(std::int32_t index) = 0;
  virtual bool Execute() = 0;       // saves the page
  virtual bool Reset() = 0;         // reloads what is stored
  virtual bool ResetFactory() = 0;  // puts the page's factory values back
  virtual bool SendMessage(std::int32_t flag, std::int64_t data) = 0;
  virtual std::int32_t GetWidth() = 0;   // pixels
  virtual std::int32_t GetHeight() = 0;  // pixels
};

class TIBasePreferenceView;

// A view plug-in: a long-lived object without a window that tells the host its menu entry and opens frames.
// It keeps the open frames under their handles and owns them. An operation for a handle that it does not hold
// answers false, empty or 0, does nothing and leaves arguments to be filled in as they were. Operations are
// in slot order.
class TIBaseView : public TComponent {
 public:
  explicit TIBaseView(TComponent* owner);
  ~TIBaseView() override;  // closes every open frame, the last opened first

  virtual std::string GetName();
  virtual std::int32_t GetViewID();
  virtual std::int32_t GetMenuLevel();                    // how many menu levels the entry has
  virtual std::int32_t GetMenuIndex(std::int32_t level);  // among its neighbours; -1 for no such level
  virtual std::int32_t GetMenuID(std::int32_t level);
  virtual std::string GetMenuCaption(std::int32_t level);
  virtual std::int32_t GetMenuGroupIndex(std::int32_t level);
  virtual bool GetIsVisible();
  virtual bool GetIsWindow();
  virtual TFrame* OpenNewInstance();  // registered and owned by this object; null when there is none
  // Frees the frame. While it goes its handle is unknown already.
  virtual void CloseInstance(TViewHandle handle);
  virtual bool GetWidth(TViewHandle handle, std::int32_t& width);
  virtual bool GetHeight(TViewHandle handle, std::int32_t& height);
  virtual bool GetViewCaption(TViewHandle handle, std::string& caption);
  // Calls the click of the frame's button of that index, which may close the frame.
  virtual void HandleCaptionButtonClick(TViewHandle handle, std::int32_t buttonIndex);
  virtual bool GetViewCaptionButtons(TViewHandle handle, std::vector<TCaptionButton*>& buttons);
  virtual bool GetViewCaptionButtonImageList(TViewHandle handle, const TImageList*& images);
  virtual bool GetViewIcon(TViewHandle handle, TBitmap& icon);
  virtual TIBasePreferenceView* GetPreferenceView();  // owned by this object; null when there is none
  virtual bool GetIsDialog();
  virtual bool GetIsSizeable();
  virtual bool GetCanDock();
  virtual TDockPosition GetDockPosition();
  virtual void GetShortCutList(std::vector<TCustomViewShortcut>& shortcuts);
  virtual bool ExecuteShortcutAction(std::int32_t action);
  virtual bool SetSkin(TViewHandle handle, const std::string& skinName);
  virtual bool SetLanguage(TViewHandle handle, std::int32_t index);
  virtual bool SetFont(TViewHandle handle, const std::string& fontName, std::int32_t size,
                       std::int32_t charset);
  virtual void ActiveView(TViewHandle handle);
  virtual void DeactiveView(TViewHandle handle);
  virtual std::string GetLayoutData(TViewHandle handle);
  virtual bool SetLayoutData(TViewHandle handle, const std::string& layout);
  virtual bool SetCustomData(TViewHandle handle, std::int32_t kind, TBaseData* object);
  virtual bool ContainView(TViewHandle handle);
  virtual bool SendMessage(TViewHandle handle, std::int32_t message, std::int64_t data);
  virtual bool SetGroupID(TViewHandle handle, const std::string& groupID);
  virtual bool GetGroupID(TViewHandle handle, std::string& groupID);
  virtual bool GetIsDialogViewAfterMainShow();
  virtual std::int32_t GetDialogViewIndexAfterMainShow();
  // Registers the frame under a new handle and owns it; 0 for no frame.
  virtual TViewHandle AddView(std::unique_ptr<TFrame> frame);
  virtual bool GetDefaultSize(std::int32_t& width, std::int32_t& height);  // pixels
  virtual bool GetDefaultCaption(std::string& caption);
  virtual void InitializeShortcut();  // forgets the shortcuts; a view with shortcuts then adds its own
  virtual void AddNewShortcut(const std::string& text, std::int32_t action);

  TFrame* FindFrame(TViewHandle handle) const noexcept;        // null when unknown
  TViewHandle FindHandle(const TFrame* frame) const noexcept;  // 0 when unknown
  std::vector<TViewHandle> GetHandles() const;                 // in the order of opening

 private:
  TViewFrame* FindViewFrame(TViewHandle handle) const noexcept;

  std::map<TViewHandle, std::unique_ptr<TFrame>> FFrames;
  std::vector<TCustomViewShortcut> FShortcuts;
};

// A page plug-in of the preference dialog; keeps its frames as TIBaseView does.
class TIBasePreferenceView : public TComponent {
 public:
  explicit TIBasePreferenceView(TComponent* owner);
  ~TIBasePreferenceView() override;

  virtual std::string GetName();
  virtual std::int32_t GetViewID();
  virtual std::int32_t GetWidth();         // pixels
  virtual std::int32_t GetHeight();        // pixels
  virtual std::vector<TFrame*> GetView();  // the pages in the order of their handles
  virtual bool SetLanguage(TViewHandle handle, std::int32_t index);
  virtual bool Execute(TViewHandle handle);
  virtual bool Reset(TViewHandle handle);
  virtual bool ResetFactory(TViewHandle handle);
  virtual bool SendMessage(TViewHandle handle, std::int32_t flag, std::int64_t data);

  TViewHandle AddView(std::unique_ptr<TFrame> frame);

  TViewHandle FindHandle(const TFrame* frame) const noexcept;  // 0 when unknown

 protected:
  const std::map<TViewHandle, std::unique_ptr<TFrame>>& GetFrames() const noexcept { return FFrames; }

 private:
  TPreferenceFrame* FindPage(TViewHandle handle) const noexcept;

  std::map<TViewHandle, std::unique_ptr<TFrame>> FFrames;
};

// Opens another view of the host (kView... in Constdef.h) with a data object that the host reads during the
// call. number is 0; flag1 false and flag2 true: not as a dialog, and shown at once. False: the host has no
// such view.
bool OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData* data, bool flag1,
                    bool flag2);

// Tells the host that a view's state changed (kViewAccountChanged, kViewLayoutChanged). A frame may send it
// before it has a handle; there is nothing to update then.
void SendViewNotify(TFrame* view, std::int32_t code);

}  // namespace margindesk
