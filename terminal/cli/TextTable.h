#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace margindesk {

// Appends a text and blanks up to a display width; a text that is wider stands as it is.
void AppendPadded(std::string& line, std::string_view text, std::size_t width, bool toTheRight);

// Whether the text is a figure below zero.
bool IsNegativeFigure(std::string_view text);

// Appends a figure; one below zero in red where the screen shows colours.
void AppendFigure(std::string& line, std::string_view text, bool colour);

// A table for people: a row of captions, then rows of texts, columns two blanks apart and as wide as their
// widest text.
class TTextTable {
 public:
  // A column of figures is aligned to the right.
  void AddColumn(std::string_view caption, bool figures);
  // One text a column, made fit for a line.
  void AddRow(const std::vector<std::string>& texts);

  // A screen too narrow for the table (width in columns, 0 for no bound) gets a block of lines for each row.
  void Write(std::ostream& out, bool colour, std::size_t screenWidth) const;

 private:
  void WriteTable(std::ostream& out, bool colour) const;
  void WriteBlocks(std::ostream& out, bool colour) const;

  struct TColumn {
    std::string FCaption;
    bool FFigures;
    std::size_t FWidth;
  };

  std::vector<TColumn> FColumns;
  std::vector<std::vector<std::string>> FRows;
};

}  // namespace margindesk
