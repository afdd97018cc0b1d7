#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "model/contract/Code.h"
#include "terminal/cli/AccountTree.h"

namespace margindesk {

// An account's tree as one command shows it.
struct TAccountView {
  TCode FAccount;
  std::string FName;
  std::vector<std::string> FFlags;  // what is particular about the account or the view, in the language shown
  TCode FBase;
  TCode FConvert;
  TCode FFilter;  // empty: every currency
  bool FAggregated = false;
  std::vector<TAccountTreeRow> FRows;
};

// The lines that say whose figures follow, and in which currencies.
void WriteAccountHeading(std::ostream& out, const TAccountView& view);

// For people: a heading, then captions indented by level and figures aligned to one column. A figure below
// zero is followed by a mark, and red where the screen shows colours.
void WriteAccountText(std::ostream& out, const TAccountView& view, bool colour);

// One document. Fields' own rows have "children", and the total has.
void WriteAccountJson(std::ostream& out, const TAccountView& view);

// One line a row: level (0 a field, 1 a currency or the total, 2 a converted currency), field, key, currency,
// caption, text, value.
void WriteAccountCsv(std::ostream& out, const TAccountView& view);

}  // namespace margindesk
