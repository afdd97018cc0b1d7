// Any text as a formula file: what is read of it can be written as a file that says the same.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/FuzzHost.h"
#include "plugin/FormulaFile.h"

namespace {

margindesk::TFormulaMapList Read(std::string_view text) {
  margindesk::TFormulaMapList formulas;
  for (const std::string_view code : {"ENG", "CHS", "ZHH"})
    margindesk::ReadFormulaSection(text, code, formulas);
  return formulas;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using margindesk::Require;
  const auto formulas = Read({reinterpret_cast<const char*>(data), size});
  std::string written;
  for (const auto& [code, section] : formulas) {
    Require(!section.empty(), "a language without entries");
    written.append("[").append(code).append("]\n");
    for (const auto& [key, formula] : section) {
      Require((key + formula).find_first_of("=[\r\n") == std::string::npos, "a separator in an entry");
      written.append(key).append(" = ").append(formula).append("\r\n");
    }
  }
  Require(Read(written) == formulas, "the entries say something else when they are read again");
  return 0;
}
