#include "host/services/BookChange.h"

#include "host/book/Book.h"
#include "host/services/FactColumns.h"

namespace margindesk {

namespace {

template <class TFacts, std::size_t N>
void SetNumbers(TBookRow& row, const TNumberColumn<TFacts> (&columns)[N], const TFacts& facts) {
  for (const TNumberColumn<TFacts>& column : columns) {
    row.SetNumber(column.FColumn, facts.*column.FNumber);
  }
}

TBookRow FigureRow(TTable table, const TFigureFacts& facts) {
  TBookRow row(table);
  row.SetText(At(table, "account"), facts.FAccount.Text());
  row.SetText(At(table, "currency"), facts.FCurrency.Text());
  if (table == TTable::kFigures) row.SetFlag(At(TTable::kFigures, "separate_row"), facts.FSeparateRow);
  const std::size_t first = At(table, kFigureList[0].FColumn);
  for (std::size_t i = 0; i < kFigureCount; ++i) row.SetNumber(first + i, facts.FFigures[i]);
  return row;
}

TBookRow PositionKey(TCode account, const std::string& key) {
  constexpr auto table = TTable::kPositions;
  TBookRow row(table);
  return row.SetText(At(table, "account"), account.Text()).SetText(At(table, "key"), key);
}

TBookRow PositionRow(const TPositionFacts& facts) {
  constexpr auto table = TTable::kPositions;
  TBookRow row = PositionKey(facts.FAccount, facts.FKey);
  row.SetText(At(table, "symbol"), facts.FSymbol.Text());
  row.SetFlag(At(table, "price_based"), facts.FPriceBased);
  row.SetText(At(table, "side"), facts.FShort ? "S" : "L");
  SetNumbers(row, kPositionNumbers, facts);
  return row;
}

TBookRow OrderRow(const TOrderFacts& facts) {
  constexpr auto table = TTable::kOrders;
  TBookRow row(table);
  row.SetText(At(table, "order_id"), facts.FOrderID);
  row.SetText(At(table, "account"), facts.FAccount.Text());
  row.SetText(At(table, "symbol"), facts.FSymbol.Text());
  for (const TOrderChoice& choice : kOrderChoices) {
    const auto index = static_cast<std::size_t>(facts.*choice.FNumber - choice.FFirst);
    if (index < choice.FNames.size()) row.SetText(choice.FColumn, choice.FNames[index]);
  }
  SetNumbers(row, kOrderNumbers, facts);
  row.SetFlag(At(table, "market"), facts.FMarket);
  row.SetText(At(table, "state"), kBookOrderStates[static_cast<std::size_t>(facts.FState)]);
  row.SetText(At(table, "entered"), facts.FEntered);
  return row;
}

TBookRow FillRow(const TFillFacts& facts) {
  constexpr auto table = TTable::kFills;
  TBookRow row(table);
  row.SetText(At(table, "fill_id"), facts.FFillID);
  row.SetText(At(table, "order_id"), facts.FOrderID);
  row.SetText(At(table, "time"), facts.FTime);
  SetNumbers(row, kFillNumbers, facts);
  return row;
}

}  // namespace

void WriteBookChange(TBook& book, const TBookChange& change) {
  TBookTransaction transaction(book);
  transaction.RequireUnchanged();
  for (const TFigureFacts& facts : change.FFigures) transaction.Upsert(FigureRow(TTable::kFigures, facts));
  for (const TFigureFacts& facts : change.FConsolidated) {
    transaction.Upsert(FigureRow(TTable::kConsolidated, facts));
  }
  for (const TPositionFacts& facts : change.FPositions) transaction.Upsert(PositionRow(facts));
  for (const auto& [account, key] : change.FRemovedPositions) transaction.Remove(PositionKey(account, key));
  for (const TOrderFacts& facts : change.FOrders) transaction.Upsert(OrderRow(facts));
  for (const TFillFacts& facts : change.FFills) transaction.Upsert(FillRow(facts));
  transaction.Commit();
}

}  // namespace margindesk
