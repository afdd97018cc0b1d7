#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/SymbolList.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::Field;

// The orders of a batch, as symbol, side, price and quantity; counts the lists that are there.
class TOrderList final : public TCustomDataControl {
 public:
  struct TOrder {
    std::string_view FSymbol, FSide;
    double FPrice, FQuantity;
  };

  TOrderList(int& alive, std::vector<TOrder> orders)
      : TCustomDataControl(nullptr), FAlive(alive), FOrders(std::move(orders)) {
    ++FAlive;
    FColumns.push_back(TColumnInfo::AddColumn(0, "Res_Symbol", 50, {}, false));
    FColumns.push_back(TColumnInfo::AddColumn(3, "Res_OrderPrice", 70, {}, true));
  }
  ~TOrderList() override { --FAlive; }

  std::int32_t GetCount() override { return static_cast<std::int32_t>(FOrders.size()); }
  const TColumnList* GetColList() override { return &FColumns; }
  TVariant GetValue(std::int32_t row, std::int32_t column) override {
    const TOrder& order = FOrders.at(static_cast<std::size_t>(row));
    if (column == 0) return TVariant::Text(std::string(order.FSymbol));
    if (column == 11) return TVariant::Text(std::string(order.FSide));
    return TVariant::Float(column == 3 ? order.FPrice : order.FQuantity);
  }
  std::string GetDisplayValue(std::int32_t row, std::int32_t column) override {
    return "<" + GetValue(row, column).AsText() + ">";
  }
  bool GetRowValue(std::int32_t /*row*/, const void*& /*value*/) override { return false; }
  bool GetColValue(std::int32_t /*column*/, const void*& /*value*/) override { return false; }

 private:
  int& FAlive;
  std::vector<TOrder> FOrders;
  TColumnList FColumns;
};

class Dialogs : public testing::Test {
 protected:
  Dialogs() {
    TTestBook book;
    book.Currency("HKD", 1);
    book.Product("00700", "HKD", 300).FName = "Jade Comet";
    book.Product("07001", "HKD", 300).FName = "范例船务";
    book.Product("HSIF7", "HKD", 300).FName = "Index future 700";
    book.FProducts.back().FContractSize = 50;
    book.Product("70X", "HKD", 300).FListed = false;
    FHost.Data().Replace(book);
    FHost.RunLoop();
  }

  bool Ask(std::vector<TOrderList::TOrder> orders) {
    TOrderTakeActionRecord record;
    record.FDataControl = new TOrderList(FAlive, std::move(orders));
    record.FViewID = 621;
    FHost.Channels().SendChannelMessage(kMessageBatchConfirmation, &record);
    EXPECT_EQ(record.FDataControl, nullptr);
    return record.FResult;
  }

  // A frame that asked for the panel.
  struct TFrameWithPanel : TComponent {
    TFrameWithPanel() : TComponent(nullptr) {}
    void Select(void* /*sender*/, void* data) {
      FChosen = static_cast<TCustomMarketData*>(data)->GetSymbol().Text();
      if (FOnSelect) FOnSelect();
    }
    std::string FChosen;
    std::function<void()> FOnSelect;
  };
  TSymbolListPanel& PanelOf(TFrameWithPanel& frame) {
    TSymbolListRecord record;
    record.FOwner = &frame;
    record.FSelect = MakeHandler<&TFrameWithPanel::Select>(&frame);
    FHost.Channels().SendChannelMessage(kMessageSymbolList, &record);
    return dynamic_cast<TSymbolListPanel&>(*record.FControl);
  }

  TTestHost FHost;
  int FAlive = 0;
};

TEST_F(Dialogs, ABatchIsConfirmedByTheFrontAloneAndItsOrdersLastAsLongAsTheQuestion) {
  EXPECT_FALSE(Ask({{"00700", "Buy", 300, 100}})) << "nobody is there to confirm";
  TBatchQuestion question;
  std::vector<int> alive;
  FHost.Confirmation().SetFront([&](const TBatchQuestion& asked) {
    alive.push_back(FAlive);
    if (alive.size() > 1) return false;
    question = asked;
    EXPECT_FALSE(Ask({{"07001", "Sell", 1, 1}})) << "asked while the first question stands";
    FHost.Confirmation().SetFront({});
    return true;
  });
  EXPECT_TRUE(Ask({{"00700", "Buy", 300, 100},
                   {"HSIF7", "Buy", 20000, 2},
                   {"HSIF7", "Sell", 20010, 1},
                   {"gone", "Buy", 5, 2}}));
  EXPECT_THAT(alive, ElementsAre(1, 2));
  EXPECT_EQ(FAlive, 0);
  EXPECT_EQ(question.FViewID, 621);
  EXPECT_THAT(question.FColumns, ElementsAre(Field(&TBatchColumn::FCaption, "Symbol"),
                                             Field(&TBatchColumn::FCaption, "Order Price")));
  EXPECT_THAT(question.FRows[2], ElementsAre("<HSIF7>", "<20010>"));
  EXPECT_EQ(question.FQuestion, "Place the following 4 orders?");
  std::vector<std::string> totals;
  for (const TBatchTotal& total : question.FTotals) totals.push_back(total.FText);
  EXPECT_THAT(totals, ElementsAre("Buy total: HKD 2,030,000.00 (2)", "Sell total: HKD 1,000,500.00 (1)",
                                  "Buy total:  10.00 (1)"));
  EXPECT_FALSE(Ask({{"00700", "Buy", 300, 100}})) << "the front has gone";
}

TEST_F(Dialogs, ASymbolIsFoundByCodeAndNameAndGoesToTheFrameThatAsked) {
  auto frame = std::make_unique<TFrameWithPanel>();
  TSymbolListPanel& panel = PanelOf(*frame);
  const auto found = [&panel](std::string_view text) {
    panel.Search(text);
    std::vector<std::string> codes;
    for (const TSymbolHit& hit : panel.GetHits()) codes.push_back(hit.FSymbol.Text());
    return codes;
  };
  EXPECT_THAT(found(""), ElementsAre("00700", "07001", "HSIF7"));
  EXPECT_THAT(found(" hsi "), ElementsAre("HSIF7"));
  EXPECT_THAT(found("700"), ElementsAre("00700", "07001", "HSIF7"));
  EXPECT_THAT(found("0700"), ElementsAre("07001", "00700")) << "the code that begins with it comes first";
  EXPECT_THAT(found("COMET"), ElementsAre("00700"));
  EXPECT_THAT(found("船务"), ElementsAre("07001"));
  EXPECT_FALSE(panel.Choose(1));
  frame->FOnSelect = [&frame] { frame.reset(); };
  EXPECT_TRUE(panel.Choose(0)) << "also when the frame goes with its panel meanwhile";
  EXPECT_EQ(frame, nullptr);
}

TEST_F(Dialogs, EveryFrameHasAPanelOfItsOwnThatGoesWithIt) {
  TFrameWithPanel first;
  TFrameWithPanel second;
  PanelOf(first).Search("comet");
  TSymbolListPanel& other = PanelOf(second);
  EXPECT_TRUE(other.Choose(1));
  EXPECT_EQ(second.FChosen, "07001");
  EXPECT_EQ(first.FChosen, "");
  EXPECT_THAT(second.GetComponents(), ElementsAre(&other));
}

}  // namespace
}  // namespace margindesk
