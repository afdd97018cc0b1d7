#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/contract/AccountDataControl.h"
#include "model/contract/Code.h"

namespace margindesk {

// How a term comes by its value.
enum class TTermKind {
  kInput,       // it is read
  kSum,         // of all its terms
  kDifference,  // the first less the others
  kProduct,
  kQuotient,  // the first by the second
  kLower,     // the lowest of its terms
};

// One step of a calculation. Every term but an input follows from its own terms.
struct TTerm {
  TTermKind FKind = TTermKind::kInput;
  std::string FName;
  std::optional<double> FValue;  // none: a quotient by nothing, or what follows from one
  std::vector<TTerm> FTerms;

  // Of an input: whose it is (an empty account for what belongs to none), in which currency (none: in no
  // particular one; empty: the total row), and over how many positions it was summed.
  TCode FAccount;
  std::optional<TCode> FCurrency;
  std::optional<std::size_t> FPositions;
};

// How the first line of a field in the control's tree comes about, down to what is read from the host's
// records. None where the line is a text or shows no figure.
std::optional<TTerm> ExplainFigure(TCustomAccountInfoDataControl& control, const TCustomAccount& account,
                                   std::int32_t field, bool threeLevels);

// What a field that has no calculation is read from, in words.
std::string GetSourceOfField(const TCustomAccountInfoDataControl& control, std::int32_t field);

}  // namespace margindesk
