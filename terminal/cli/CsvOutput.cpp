#include "terminal/cli/CsvOutput.h"

#include <string>

#include "host/book/Csv.h"

namespace margindesk {

void WriteCsvLine(std::ostream& out, std::span<const std::string_view> fields) {
  std::string line;
  for (const std::string_view field : fields) {
    AppendCsvField(line, field);
    line += ',';
  }
  line.back() = '\n';
  out << line;
}

void WriteCsvLine(std::ostream& out, std::initializer_list<std::string_view> fields) {
  WriteCsvLine(out, std::span(fields.begin(), fields.size()));
}

}  // namespace margindesk
