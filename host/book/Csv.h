#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace margindesk {

// What is wrong with a CSV text and where.
struct TCsvFault {
  std::size_t FLine;   // physical line, from 1
  std::size_t FField;  // field of its record, from 0
  std::string FReason;
};

// Reads CSV as RFC 4180 has it: fields separated by commas, records by LF or CRLF, a field in double quotes
// may hold commas, line ends and doubled double quotes. A byte order mark at the start is skipped; the last
// record needs no line end. Everything is UTF-8.
class TCsvReader {
 public:
  // The text must outlive the reader.
  explicit TCsvReader(std::string_view text);

  // Reads the next record; false when there is none left. Throws TCsvFault at a byte that is not UTF-8, a
  // zero byte, a misplaced or unclosed quote or a carriage return on its own; the reader is of no use after
  // that.
  bool Next();

  // The record read last; the texts are valid until the next call of Next.
  std::size_t FieldCount() const { return FFields.size(); }
  std::string_view Field(std::size_t index) const { return FFields[index].FText; }
  // Line on which a field begins (a field in quotes may run over several).
  std::size_t FieldLine(std::size_t index) const { return FFields[index].FLine; }

 private:
  struct TField {
    std::string_view FText;
    std::size_t FLine;
  };

  void ReadField();
  std::string_view ReadPlainText();
  std::string_view ReadQuotedText();
  bool EndsRecord();
  [[noreturn]] void Fail(std::size_t line, std::string reason) const;

  std::string_view FText;
  std::size_t FPosition = 0;
  std::size_t FLine = 1;
  std::vector<TField> FFields;
  std::deque<std::string> FUnquoted;  // texts that differ from their bytes in the file
};

// Appends one field, in quotes only where it needs them.
void AppendCsvField(std::string& out, std::string_view field);

}  // namespace margindesk
