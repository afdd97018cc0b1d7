#pragma once

#include <memory>
#include <string>
#include <vector>

#include "controls/VirtualTree.h"
#include "model/contract/Basedcdatacontrol.h"

namespace margindesk {

// Figures, each with a row a currency under it. A figure's text is changed by its place.
class TFigureRows : public TCustomTreeDataControl {
 public:
  static constexpr int kFigures = 58;
  static constexpr int kCurrencies = 12;

  explicit TFigureRows(TComponent* owner) : TCustomTreeDataControl(owner) {
    for (int figure = 0; figure < kFigures; ++figure) {
      TNode& parent = Add(nullptr);
      for (int currency = 0; currency < kCurrencies; ++currency) Add(&parent);
    }
  }

  void SetText(std::size_t place, std::string text) {
    FNodes[place]->FText = std::move(text);
    Changed();
  }

  std::int32_t GetCount() override { return static_cast<std::int32_t>(FNodes.size()); }
  const TColumnList* GetColList() override { return nullptr; }
  TVariant GetValue(std::int32_t, std::int32_t) override { return {}; }
  std::string GetDisplayValue(std::int32_t, std::int32_t) override { return {}; }
  bool GetRowValue(std::int32_t, const void*&) override { return false; }
  bool GetColValue(std::int32_t, const void*&) override { return false; }
  TDataNode* GetParentNode(TDataNode* node) override { return node->GetParent(); }
  TDataNode* GetNode(std::int32_t index) override { return FNodes.at(static_cast<std::size_t>(index)).get(); }
  TDataNode* GetRootNode() override { return nullptr; }
  TDataNode* GetChildNode(TDataNode* node, std::int32_t index) override {
    return node == nullptr ? GetNode(index * (kCurrencies + 1))
                           : node->GetChildren()[static_cast<std::size_t>(index)];
  }
  std::int32_t GetChildNodeCount(TDataNode* node) override {
    return node == nullptr ? kFigures : static_cast<std::int32_t>(node->GetChildren().size());
  }
  TVariant GetValue(TDataNode*, std::int32_t) override { return {}; }
  std::string GetDisplayValue(TDataNode* node, std::int32_t column) override {
    auto& row = static_cast<TNode&>(*node);
    return column == 0 ? row.GetKey() : row.FText;
  }
  void SetColumnList(const TColumnList&) override {}

 private:
  struct TNode : TDataNode {
    TNode(TDataNode* parent, int place) : TDataNode(parent), FPlace(place) {}
    std::string GetKey() const override { return "Figure " + std::to_string(FPlace); }
    int FPlace;
    std::string FText = "1,234,567.89";
  };
  TNode& Add(TDataNode* parent) {
    FNodes.push_back(std::make_unique<TNode>(parent, GetCount()));
    return *FNodes.back();
  }

  std::vector<std::unique_ptr<TNode>> FNodes;
};

// A tree over them.
class TFigureTree {
 public:
  TFigureTree() {
    std::vector<TTreeColumn> columns(2);
    columns[0].FCaption = "Account";
    columns[1].FCaption = "Value";
    columns[1].FTag = 1;
    FTree.SetColumns(columns);
    FTree.SetDataSource(&FSource);
  }
  TFigureRows& Figures() { return static_cast<TFigureRows&>(*FSource.GetDataControl()); }

 private:
  TCustomTreeDataSource FSource{{}, &CreateTreeDataControl<TFigureRows>};

 public:
  TVirtualTree FTree{nullptr};
};

}  // namespace margindesk
