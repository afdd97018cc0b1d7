#include "terminal/cli/TextTable.h"

#include <algorithm>

#include "terminal/cli/DisplayWidth.h"

namespace margindesk {

namespace {

constexpr std::string_view kRed = "\x1b[31m";
constexpr std::string_view kPlain = "\x1b[0m";

std::size_t GetPadding(std::string_view text, std::size_t width) {
  const std::size_t own = GetDisplayWidth(text);
  return own < width ? width - own : 0;
}

void WriteLine(std::ostream& out, std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  out << line << '\n';
}

}  // namespace

void AppendPadded(std::string& line, std::string_view text, std::size_t width, bool toTheRight) {
  if (toTheRight) line.append(GetPadding(text, width), ' ');
  line.append(text);
  if (!toTheRight) line.append(GetPadding(text, width), ' ');
}

bool IsNegativeFigure(std::string_view text) {
  return text.size() > 1 && text.front() == '-' && text[1] >= '0' && text[1] <= '9';
}

void AppendFigure(std::string& line, std::string_view text, bool colour) {
  const bool red = colour && IsNegativeFigure(text);
  if (red) line.append(kRed);
  line.append(text);
  if (red) line.append(kPlain);
}

void TTextTable::AddColumn(std::string_view caption, bool figures) {
  std::string shown = MakeOneLine(caption);
  const std::size_t width = GetDisplayWidth(shown);
  FColumns.push_back({std::move(shown), figures, width});
}

void TTextTable::AddRow(const std::vector<std::string>& texts) {
  std::vector<std::string> row;
  row.reserve(FColumns.size());
  for (std::size_t i = 0; i < FColumns.size(); ++i) {
    row.push_back(MakeOneLine(texts[i]));
    FColumns[i].FWidth = std::max(FColumns[i].FWidth, GetDisplayWidth(row.back()));
  }
  FRows.push_back(std::move(row));
}

void TTextTable::Write(std::ostream& out, bool colour, std::size_t screenWidth) const {
  std::size_t width = 0;
  for (const TColumn& column : FColumns) width += column.FWidth + (width > 0 ? 2 : 0);
  screenWidth > 0 && width > screenWidth ? WriteBlocks(out, colour) : WriteTable(out, colour);
}

void TTextTable::WriteBlocks(std::ostream& out, bool colour) const {
  std::size_t captionWidth = 0;
  std::size_t textWidth = 0;
  for (std::size_t i = 0; i < FColumns.size(); ++i) {
    captionWidth = std::max(captionWidth, GetDisplayWidth(FColumns[i].FCaption));
    for (const auto& row : FRows) textWidth = std::max(textWidth, GetDisplayWidth(row[i]));
  }
  for (const auto& row : FRows) {
    if (&row != &FRows.front()) out << '\n';
    for (std::size_t i = 0; i < FColumns.size(); ++i) {
      std::string line;
      AppendPadded(line, FColumns[i].FCaption, captionWidth + 2, false);
      line.append(GetPadding(row[i], textWidth), ' ');
      AppendFigure(line, row[i], colour);
      WriteLine(out, std::move(line));
    }
  }
}

void TTextTable::WriteTable(std::ostream& out, bool colour) const {
  std::string captions;
  for (const TColumn& column : FColumns) {
    if (!captions.empty()) captions += "  ";
    AppendPadded(captions, column.FCaption, column.FWidth, column.FFigures);
  }
  WriteLine(out, std::move(captions));
  for (const auto& row : FRows) {
    std::string line;
    for (std::size_t i = 0; i < FColumns.size(); ++i) {
      if (i > 0) line += "  ";
      if (FColumns[i].FFigures) {
        line.append(GetPadding(row[i], FColumns[i].FWidth), ' ');
        AppendFigure(line, row[i], colour);
      } else {
        AppendPadded(line, row[i], FColumns[i].FWidth, false);
      }
    }
    WriteLine(out, std::move(line));
  }
}

}  // namespace margindesk
