#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "accountinfo/view/FormulaMap.h"
#include "forms/AccountInfoForm.h"
#include "model/contract/AccountDataControl.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Code.h"
#include "model/contract/ColumnInfo.h"

namespace margindesk {

class TAcctPositionViewDataControl;
class TPicture;

// What all account information views share, for as long as the package is loaded.
extern std::unique_ptr<TFormulaMapList> FFormulaMapList;  // null until somebody has made it
extern std::unique_ptr<TPicture> FPic;                    // the company banner; made by the first view
// Of the banner: whether it has not been fetched yet, was fetched, or there is none.
enum class TBannerState : std::int32_t { NotFetched = 0, Fetched = 1, None = 2 };
extern TBannerState FCompanyBanerCheckLink;

// Puts the shared state at its beginning, and frees it.
void InitializeAccountInfoView();
void FinalizeAccountInfoView();

// The account information view: an account, or a master account with its sub-accounts summed, as a tree of
// figures, with its positions below. Operations that a derived view replaces are virtual, in slot order
// within their sections.
//
// A view is made in two steps (CreateViewFrame), because a constructor does not reach what a derived view
// replaces.
class TAccountInfoFrame : public TAccountInfoForm {
 public:
  explicit TAccountInfoFrame(TComponent* owner);
  ~TAccountInfoFrame() override;

  // The second step of making: reads the configuration, makes the data sources and registers with the host.
  virtual void Construct();

  // --- what the host asks of a view (AccountInfoView.cpp, layout: AccountInfoViewLayout.cpp)

  bool SetLanguage(std::int32_t index) override;  // to the host's current language; the index is not used
  bool GetLayoutData(std::string& layout) override;
  // Throws EConvertError when the text says neither yes nor no to the lock; what comes after is not applied.
  bool SetLayoutData(const std::string& layout) override;
  const std::vector<TCaptionButton*>* GetViewCaptionButtons() override;
  const TImageList* GetViewCaptionButtonImageList() override;
  bool GetViewCaption(std::string& caption) override;
  bool SetGroupID(const std::string& groupID) override;
  bool GetGroupID(std::string& groupID) override;
  bool GetWidth(std::int32_t& width) override;

  // --- account and currencies (AccountInfoViewAccount.cpp)

  virtual void InitializeCurrencyList();
  virtual void InitializeView();
  virtual void CurrencyListUpdate(void* sender, void* data);
  virtual void MultiCurrencyInfoUpdate(void* sender, void* data);
  virtual void SetAccount(TCode account);
  virtual void LoadAccountUpdate(void* sender, void* data);  // data: TAccountMap*
  virtual void SetAggregateMenu();
  virtual void UpdateAggregateMenuCaption();

  // --- columns (AccountInfoViewColumns.cpp)

  virtual void InitializeHead();
  virtual void GetColumnList();
  virtual void FillColumnList(std::string_view keyList, bool positions, TColumnList& columns);
  // A new column of the catalogue, null for an unknown key. Remembers under which key the back office knows
  // it.
  virtual std::unique_ptr<TColumnInfo> GetColumnByKey(std::string_view key);
  virtual void UpdateViewColumn();
  virtual std::string GetColNameByAttr(std::int32_t attribute);  // "" for a field that is not shown
  virtual void HandleCustomColumn(void* sender, void* data);     // data: TCustomColumnResult*
  virtual void CheckReservedColumn(TColumnList& columns);        // see EnsureReservedColumn
  virtual std::string ConvertConfigSetting(std::string_view value);
  virtual std::string ConvertColumnKey(std::string_view key);
  virtual void UpdatePositionGridHeader();
  virtual std::string GetResourceHeader(std::string_view resourceKey);
  virtual void AccountInfoTreeColumnGetDisplayText(const TTreeColumn& column, const TVirtualTreeNode* node,
                                                   std::string& text);
  virtual void AccountInfoTreeColumnGetEditProperties(const TTreeColumn& column, const TVirtualTreeNode* node,
                                                      TEditProperties*& properties);
  virtual void PositionGridColumnGetDisplayText(const TGridColumn& item, std::int32_t record,
                                                std::string& text);
  virtual void GetCustomColumns(TColumnList& columns);

  // --- layout and template (AccountInfoViewLayout.cpp)

  virtual std::string GetColumnLayoutData(const TColumnList& columns);
  virtual void SetColumnLayoutData(TColumnList& columns, std::string_view layout);
  virtual void CreateDataSource();
  virtual void btnSaveTemplateClick();
  virtual std::string GetLayoutTemplate();
  virtual bool SetLayoutTemplate();  // whether there was one

  // --- caption buttons, details, hints and banner (AccountInfoViewDetails.cpp)

  virtual void btnShowHideClick();
  virtual void UpdateCaptionButtons();
  virtual void OpenMoreInfoView(std::int32_t mode);
  virtual std::string GetAccountOtherInfo();
  virtual void UpdateCaptionButtonList();
  virtual void HideHint();
  virtual void RefreshTimer(void* sender, void* data);
  virtual std::string GetFormulaByAttr(std::int32_t attribute);
  virtual std::int32_t GetNodeAttribute(const TVirtualTreeNode* node);
  virtual void ProcessPic(void* sender, const std::string& fileName, const std::string& text, bool success);
  virtual void UpdateImgSize();
  virtual void LoadPic();
  virtual void ProcessShowHint(std::int32_t x, std::int32_t y);
  virtual void ProcessHideHint();

  void ConfigUpdate(void* sender, void* data);

 protected:
  // --- handlers of the controls

  void edtAccountExit();
  void edtAccountKeyPress(char32_t& key);
  void cbLockAcctPropertiesChange();
  void cmbCurrencyPropertiesChange();
  void cmbFilterCurrencyPropertiesChange();
  void cmbCurrencyKeyPress(char32_t& key);
  void btnMoreInfoClick();
  void AggregateMenuClick();
  void CustomColMenuClick();
  void AccountInfoTreeMouseMove(std::int32_t x, std::int32_t y);
  void AccountInfoTreeMouseLeave();
  void CloseToBestMenuClick();
  void CloseToLastMenuClick();
  void CloseToMarketMenuClick();
  void CloseAllPositionsMenuClick();
  void DetailPositionMenuClick();
  void OptionsPayOffMenuClick();
  void PositionGridViewCellDblClick();
  void SetRightClickMenuCaption();

  TColumnList FDefaultColumnList;
  TColumnList FStockColumnList;
  TColumnList FFuturesColumnList;
  TColumnList* FCurrentColumnList = &FDefaultColumnList;  // one of the three
  TColumnList FPositonColumnList;
  TCode FCurrentAccount;
  TCode FCurrentCurrency;  // converted into
  TCode FFilterCurrency;   // empty: every currency
  std::unique_ptr<TCustomTreeDataSource> FMyDataSource;
  TCustomAccountInfoDataControl* FMyDataControl = nullptr;  // of FMyDataSource
  std::vector<TCode> FCurrencyList;                         // behind cmbCurrency
  std::vector<TCode> FFilterCurrencyList;                   // behind cmbFilterCurrency
  std::string FGroupID;
  std::vector<TCaptionButton*> FCaptionButtonList;
  TCaptionButton* FShowHideMoreCaptionButton;
  TCaptionButton* FMoreInfoCaptionButton;
  bool FShowingButtonHint = false;
  std::int32_t FShowingButtonHintCount = 0;  // ticks since the hint appeared
  std::int32_t FCurrentShowHintAttr = 0;     // the field whose hint is shown; -1 when the pointer has left
  std::map<std::int32_t, std::string> FKeyValueMapDic;  // field to back-office key
  bool FMoreInfoViewValid = false;
  std::int32_t FCurrentColumnType = 0;  // 0 default, 1 stock, 2 futures
  TCaptionButton* FSaveTemplateCaptionButton;
  std::int32_t FCurrentScale = 0;  // percent
  bool FEnableAggregated = false;
  bool FIsFirstTime = false;
  bool FIsShow3LvInfo = false;
  std::unique_ptr<TCustomGridDataSource> FMyPositionDataSource;    // null while the grid is hidden
  TAcctPositionViewDataControl* FMyPositionDataControl = nullptr;  // of FMyPositionDataSource
  bool FClosePositionConf = false;
  const std::shared_ptr<const bool> FLife = std::make_shared<const bool>(true);  // goes with the view

 private:
  void ConnectControls();
  void RegisterAccountBox();
  void ChooseInitialAccount();
  void ShowBanner();
  bool IsInputStripVisible() const;  // any of its three parts
  std::int32_t GetAccountColumnType(const TCustomAccount* account) const;
  const TCustomAccount* FindCurrentAccount() const;  // null for none
  static std::int32_t FindCurrency(const std::vector<TCode>& list, TCode currency);
  void FillCurrencyTexts(TComboBox& combo, const std::vector<TCode>& currencies);
  void ApplyColumnItems(std::string_view commaText);
  std::vector<std::string> GetColumnItems();

  bool FAccountBoxRegistered = false;
};

// Makes a view: the constructor, then Construct.
template <class TFrameClass>
std::unique_ptr<TFrameClass> CreateViewFrame(TComponent* owner) {
  auto frame = std::make_unique<TFrameClass>(owner);
  frame->Construct();
  return frame;
}

}  // namespace margindesk
