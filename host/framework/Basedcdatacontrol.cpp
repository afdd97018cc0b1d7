#include "model/contract/Basedcdatacontrol.h"

#include "model/contract/ConfigManager.h"

namespace margindesk {

namespace {

// Without a configuration manager (a control made by a tool or a test) there is nothing to listen to.
void AddConfigListener(THandler handler, const void* owner) {
  if (TCustomConfigManager::HasInstance()) {
    TCustomConfigManager::GetInstance().AddConfigUpdateHandler(handler, owner);
  }
}

void RemoveConfigListener(const void* owner) {
  if (TCustomConfigManager::HasInstance()) {
    TCustomConfigManager::GetInstance().RemoveConfigUpdateHandler(owner);
  }
}

}  // namespace

TCustomDataControl::TCustomDataControl(TComponent* owner) : TBaseDataControl(owner) {
  AddConfigListener(MakeHandler<&TCustomDataControl::ConfigUpdate>(this), this);
}

TCustomDataControl::~TCustomDataControl() { RemoveConfigListener(this); }

void TCustomDataControl::ConfigUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

TCustomTreeDataControl::TCustomTreeDataControl(TComponent* owner) : TBaseDataControl(owner) {
  AddConfigListener(MakeHandler<&TCustomTreeDataControl::ConfigUpdate>(this), this);
}

TCustomTreeDataControl::~TCustomTreeDataControl() { RemoveConfigListener(this); }

void TCustomTreeDataControl::ConfigUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

TCustomTreeDataSource::TCustomTreeDataSource(const TColumnList& columns,
                                             TTreeDataControlClass dataControlClass)
    : TComponent(nullptr), FDataControl(dataControlClass(this)) {
  FDataControl->SetColumnList(columns);
  FDataControl->SetOnChange(MakeDataChangeEvent<&TCustomTreeDataSource::DataChanged>(this));
}

TCustomTreeDataSource::~TCustomTreeDataSource() {
  FDataControl->SetOnChange({});
  DataChanged(nullptr);
}

void TCustomTreeDataSource::SetColumnList(const TColumnList& columns) {
  FDataControl->SetColumnList(columns);
  DataChanged(FDataControl);
}

void TCustomTreeDataSource::Connect(TDataChangeEvent event) noexcept { FOnChange = event; }

void TCustomTreeDataSource::DataChanged(TBaseDataControl* sender) {
  if (FOnChange) FOnChange(sender);
}

TCustomGridDataSource::TCustomGridDataSource(TGridDataControlClass dataControlClass)
    : TComponent(nullptr), FDataControl(dataControlClass(this)) {
  FDataControl->SetOnChange(MakeDataChangeEvent<&TCustomGridDataSource::DataChanged>(this));
}

TCustomGridDataSource::~TCustomGridDataSource() {
  FDataControl->SetOnChange({});
  DataChanged(nullptr);
}

void TCustomGridDataSource::Connect(TDataChangeEvent event) noexcept { FOnChange = event; }

void TCustomGridDataSource::DataChanged(TBaseDataControl* sender) {
  if (FOnChange) FOnChange(sender);
}

}  // namespace margindesk
