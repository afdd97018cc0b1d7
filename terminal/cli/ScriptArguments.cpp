#include "terminal/cli/ScriptArguments.h"

#include <algorithm>
#include <array>
#include <limits>

#include "host/book/BookError.h"

namespace margindesk {

namespace {

constexpr std::array<TScriptMember, 2> kEverywhere = {
    {{"step", TScriptKind::kText, true}, {"view", TScriptKind::kHandle, false}}};

bool IsWhole(const TJson& value, std::int64_t minimum, std::int64_t maximum) {
  if (!value.is_number_integer()) return false;
  if (value.is_number_unsigned() && value.get<std::uint64_t>() > std::uint64_t(maximum)) return false;
  const auto number = value.get<std::int64_t>();
  return number >= minimum && number <= maximum;
}

bool IsScalar(const TJson& value) { return value.is_primitive(); }

template <class TNumber>
bool IsWholeNumber(const TJson& value) {
  return IsWhole(value, std::numeric_limits<TNumber>::min(), std::numeric_limits<TNumber>::max());
}

struct TKindRow {
  TScriptKind FKind;
  bool (*FIsOf)(const TJson& value);
  std::string_view FName;
};
constexpr TKindRow kKinds[] = {
    {TScriptKind::kText, [](const TJson& value) { return value.is_string(); }, "a text"},
    {TScriptKind::kTexts,
     [](const TJson& value) {
       return value.is_array() &&
              std::ranges::all_of(value, [](const TJson& item) { return item.is_string(); });
     },
     "a list of texts"},
    {TScriptKind::kInteger, &IsWholeNumber<std::int32_t>, "a whole number of 32 bits"},
    {TScriptKind::kHandle, &IsWholeNumber<std::int64_t>, "a whole number"},
    {TScriptKind::kNumber, [](const TJson& value) { return value.is_number(); }, "a number"},
    {TScriptKind::kScalar, &IsScalar, "a text, a number, true, false or null"},
};

const TScriptMember* FindMember(std::span<const TScriptMember> members, std::string_view name) {
  const auto found = std::ranges::find(members, name, &TScriptMember::FName);
  return found == members.end() ? nullptr : &*found;
}

void CheckValue(const TScriptMember& member, const TJson& value) {
  const TKindRow& kind = *std::ranges::find(kKinds, member.FKind, &TKindRow::FKind);
  if (kind.FIsOf(value)) return;
  throw TScriptError("\"" + std::string(member.FName) + "\" takes " + std::string(kind.FName));
}

}  // namespace

TScriptArguments::TScriptArguments(TJson step, std::span<const TScriptMember> members)
    : FStep(std::move(step)) {
  for (const auto& [name, value] : FStep.items()) {
    const TScriptMember* member = FindMember(members, name);
    if (member == nullptr) member = FindMember(kEverywhere, name);
    if (member == nullptr) throw TScriptError("the step takes no " + QuotedForMessage(name));
    CheckValue(*member, value);
  }
  for (const TScriptMember& member : members) {
    if (!member.FRequired || Has(member.FName)) continue;
    throw TScriptError("the step needs \"" + std::string(member.FName) + "\"");
  }
}

const TJson* TScriptArguments::Find(std::string_view name) const {
  const auto found = FStep.find(name);
  return found == FStep.end() ? nullptr : &*found;
}

std::string TScriptArguments::Text(std::string_view name) const {
  const TJson* value = Find(name);
  return value == nullptr ? std::string() : value->get<std::string>();
}

std::vector<std::string> TScriptArguments::Texts(std::string_view name) const {
  const TJson* value = Find(name);
  return value == nullptr ? std::vector<std::string>() : value->get<std::vector<std::string>>();
}

std::int32_t TScriptArguments::Integer(std::string_view name) const {
  const TJson* value = Find(name);
  return value == nullptr ? 0 : value->get<std::int32_t>();
}

double TScriptArguments::Number(std::string_view name) const {
  const TJson* value = Find(name);
  return value == nullptr ? 0 : value->get<double>();
}

std::optional<std::int64_t> TScriptArguments::Handle(std::string_view name) const {
  const TJson* value = Find(name);
  return value == nullptr ? std::nullopt : std::optional(value->get<std::int64_t>());
}

const TJson& TScriptArguments::Scalar(std::string_view name) const {
  static const TJson kNothing;
  const TJson* value = Find(name);
  return value == nullptr ? kNothing : *value;
}

}  // namespace margindesk
