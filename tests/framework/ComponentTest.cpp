#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>

#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/ConfigManager.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

class TTraced : public TComponent {
 public:
  TTraced(TComponent* owner, std::vector<std::string>& log, const std::string& name)
      : TComponent(owner), FLog(log) {
    if (name.empty()) throw std::invalid_argument("a component needs a name here");
    SetComponentName(name);
  }
  ~TTraced() override { FLog.push_back(GetComponentName()); }

 private:
  std::vector<std::string>& FLog;
};

TEST(Component, AnOwnerDeletesWhatItStillOwnsTheLastMadeFirst) {
  std::vector<std::string> log;
  auto owner = std::make_unique<TComponent>(nullptr);
  new TTraced(owner.get(), log, "first");
  auto* second = new TTraced(owner.get(), log, "second");
  auto* third = new TTraced(owner.get(), log, "third");
  new TTraced(third, log, "child of the third");
  EXPECT_EQ(owner->FindComponent("second"), second);
  EXPECT_EQ(owner->FindComponent("Second"), nullptr);
  EXPECT_EQ(owner->FindComponent("child of the third"), nullptr) << "an owner knows its own components only";

  delete second;
  EXPECT_EQ(owner->FindComponent("second"), nullptr);
  EXPECT_THROW(TTraced(owner.get(), log, ""), std::invalid_argument);
  EXPECT_EQ(owner->GetComponents().size(), 2U) << "one that failed to be made leaves nothing behind";
  owner.reset();
  EXPECT_THAT(log, ElementsAre("second", "third", "child of the third", "first"));
}

// A configuration that holds nothing and counts its listeners.
class TEmptyConfig : public TCustomConfigManager {
 public:
  void AddConfigUpdateHandler(THandler handler, const void* owner) override { FHandlers.Add(handler, owner); }
  void RemoveConfigUpdateHandler(const void* owner) override { FHandlers.RemoveOwner(owner); }
  std::string ReadString(std::string_view, std::string_view) const override { return {}; }
  std::int32_t ReadInteger(std::string_view, std::string_view) const override { return 0; }
  bool ReadBool(std::string_view, std::string_view) const override { return false; }
  std::string GetUserSection() const override { return {}; }
  void WriteString(std::string_view, std::string_view, std::string_view, bool) override {}
  bool CanApplyLayout() const override { return false; }

  THandlerList FHandlers;
};

template <class TBase>
class TNoRows : public TBase {
 public:
  using TBase::GetDisplayValue;
  using TBase::GetValue;
  using TBase::TBase;
  std::int32_t GetCount() override { return 0; }
  const TColumnList* GetColList() override { return nullptr; }
  TVariant GetValue(std::int32_t, std::int32_t) override { return {}; }
  std::string GetDisplayValue(std::int32_t, std::int32_t) override { return {}; }
  bool GetRowValue(std::int32_t, const void*&) override { return false; }
  bool GetColValue(std::int32_t, const void*&) override { return false; }
};

class TNoTree : public TNoRows<TCustomTreeDataControl> {
 public:
  using TNoRows::GetDisplayValue;
  using TNoRows::GetValue;
  using TNoRows::TNoRows;
  TDataNode* GetParentNode(TDataNode*) override { return nullptr; }
  TDataNode* GetNode(std::int32_t) override { return nullptr; }
  TDataNode* GetChildNode(TDataNode*, std::int32_t) override { return nullptr; }
  std::int32_t GetChildNodeCount(TDataNode*) override { return 0; }
  TDataNode* GetRootNode() override { return nullptr; }
  TVariant GetValue(TDataNode*, std::int32_t) override { return {}; }
  std::string GetDisplayValue(TDataNode*, std::int32_t) override { return {}; }
  void SetColumnList(const TColumnList& columns) override { FColumns = &columns; }

  const TColumnList* FColumns = nullptr;
};

struct TChangeCounter {
  void Count(TBaseDataControl* sender) { FSenders.push_back(sender); }
  std::vector<TBaseDataControl*> FSenders;
};

TEST(DataControl, TellsItsViewOfChangesAndOfTheConfigurationUntilItGoes) {
  TEmptyConfig config;
  const TServiceScope<TCustomConfigManager> scope(config);
  TChangeCounter counter;
  {
    TCustomGridDataSource grid(&CreateGridDataControl<TNoRows<TCustomDataControl>>);
    TColumnList columns;
    TCustomTreeDataSource tree(columns, &CreateTreeDataControl<TNoTree>);
    EXPECT_EQ(static_cast<TNoTree*>(tree.GetDataControl())->FColumns, &columns);
    EXPECT_EQ(grid.GetDataControl()->GetOwner(), &grid);
    EXPECT_EQ(config.FHandlers.GetCount(), 2U);

    grid.GetDataControl()->Changed();  // nobody listens yet
    grid.GetDataControl()->SetOnChange(MakeDataChangeEvent<&TChangeCounter::Count>(&counter));
    tree.GetDataControl()->SetOnChange(MakeDataChangeEvent<&TChangeCounter::Count>(&counter));
    config.FHandlers.Notify(nullptr, nullptr);
    tree.GetDataControl()->Changed();
    EXPECT_THAT(counter.FSenders,
                ElementsAre(grid.GetDataControl(), tree.GetDataControl(), tree.GetDataControl()));
  }
  EXPECT_EQ(config.FHandlers.GetCount(), 0U) << "no list names a control that is gone";
}

TEST(DataControl, LivesWithoutAConfiguration) {
  ASSERT_FALSE(TCustomConfigManager::HasInstance());
  EXPECT_NO_THROW(TCustomGridDataSource(&CreateGridDataControl<TNoRows<TCustomDataControl>>));
}

}  // namespace
}  // namespace margindesk
