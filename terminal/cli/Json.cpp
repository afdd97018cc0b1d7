#include "terminal/cli/Json.h"

namespace margindesk {

TJson MakeJson(const TVariant& value) {
  if (value.IsText()) return value.AsText();
  if (value.IsInteger()) return static_cast<std::int32_t>(value.AsFloat());
  if (value.IsFloat()) return value.AsFloat();
  return nullptr;
}

TJson MakeJsonOrNull(std::string_view text) {
  if (text.empty()) return nullptr;
  return text;
}

void WriteJson(std::ostream& out, const TJson& document) {
  out << document.dump(2, ' ', false, TJson::error_handler_t::replace) << '\n';
}

}  // namespace margindesk
