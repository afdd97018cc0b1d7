#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "terminal/cli/AccountOutput.h"
#include "terminal/cli/Explanation.h"
#include "terminal/session/Terminal.h"

namespace margindesk {

// One figure of an account and how it comes about.
struct TExplainedFigure {
  TAccountView FView;    // with the figure's row alone
  std::string FFormula;  // as the view shows it; empty for none
  std::optional<TTerm> FTerm;
  std::string FSource;  // where there is no term: what the figure is read from
};

// For people: the figure, its formula, and the calculation with each result above what it follows from.
void WriteExplanationText(std::ostream& out, const TExplainedFigure& figure, const TTerminal& terminal);

// One document. "calculation" is null where the figure is only read, and "source" where it is calculated.
void WriteExplanationJson(std::ostream& out, const TExplainedFigure& figure);

}  // namespace margindesk
