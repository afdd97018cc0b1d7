#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "terminal/cli/Json.h"

namespace margindesk {

// Why a step failed, in words for whoever wrote the script.
class TScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What the value of a step's member may be.
enum class TScriptKind {
  kText,
  kTexts,    // a list of texts
  kInteger,  // a whole number of 32 bits
  kHandle,   // a whole number of 64 bits
  kNumber,
  kScalar,  // a text, a number, true, false or null
};

// A member that a step takes beside "step" and "view".
struct TScriptMember {
  std::string_view FName;
  TScriptKind FKind = TScriptKind::kText;
  bool FRequired = true;
};

// The members of one step, as the line gives them.
class TScriptArguments {
 public:
  // Throws TScriptError for a member that the step does not take, for one that it needs and lacks, and for a
  // value of another kind.
  TScriptArguments(TJson step, std::span<const TScriptMember> members);

  bool Has(std::string_view name) const { return FStep.contains(name); }

  // The value of a member of that kind; what it is when the member is missing stands beside each.
  std::string Text(std::string_view name) const;                // ""
  std::vector<std::string> Texts(std::string_view name) const;  // none
  std::int32_t Integer(std::string_view name) const;            // 0
  double Number(std::string_view name) const;                   // 0
  std::optional<std::int64_t> Handle(std::string_view name) const;
  const TJson& Scalar(std::string_view name) const;  // null

 private:
  const TJson* Find(std::string_view name) const;

  TJson FStep;
};

}  // namespace margindesk
