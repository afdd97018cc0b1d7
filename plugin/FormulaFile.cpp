#include "plugin/FormulaFile.h"

#include <algorithm>
#include <string>

#include "model/contract/Variant.h"

namespace margindesk {

namespace {

// The lines between a section's header and the next one.
std::string_view FindSection(std::string_view text, std::string_view languageCode) {
  const std::string header = std::string("[").append(languageCode).append("]");
  const std::size_t found = text.find(header);
  if (found == std::string_view::npos) return {};
  const std::size_t begin = found + header.size();
  text = text.substr(begin, text.find('[', begin) - begin);
  // wanted: the character behind the header is dropped whatever it is, be it the line break or not
  text.remove_prefix(std::min<std::size_t>(1, text.size()));
  return text;
}

}  // namespace

void ReadFormulaSection(std::string_view text, std::string_view languageCode, TFormulaMapList& formulas) {
  std::string_view section = FindSection(text, languageCode);
  while (!section.empty()) {
    const std::size_t end = std::min(section.find_first_of("\r\n"), section.size());
    const std::string_view line = TrimText(section.substr(0, end));
    section.remove_prefix(std::min(end + 1, section.size()));
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line.find('=', equals + 1) != std::string_view::npos) continue;
    formulas[std::string(languageCode)].insert_or_assign(std::string(TrimText(line.substr(0, equals))),
                                                         TrimText(line.substr(equals + 1)));
  }
}

}  // namespace margindesk
