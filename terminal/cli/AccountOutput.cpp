#include "terminal/cli/AccountOutput.h"

#include <algorithm>
#include <string_view>

#include "model/ResourceText.h"
#include "model/contract/LanguageManager.h"
#include "terminal/cli/CsvOutput.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/TextTable.h"

namespace margindesk {

namespace {

constexpr std::string_view kNegativeMark = " <";

struct TLine {
  std::string FCaption;  // with its indentation
  std::string FText;
};

void AddLines(const std::vector<TAccountTreeRow>& rows, std::size_t level, std::vector<TLine>& lines) {
  for (const TAccountTreeRow& row : rows) {
    lines.push_back({std::string(2 * level, ' ') + MakeOneLine(row.FCaption), MakeOneLine(row.FText)});
    AddLines(row.FChildren, level + 1, lines);
  }
}

std::string MakeHeading(const TAccountView& view) {
  std::string heading = view.FAccount.Text();
  if (!view.FName.empty()) heading.append("  ").append(view.FName);
  for (const std::string& flag : view.FFlags) heading.append("  [").append(flag).append("]");
  return MakeOneLine(heading);
}

std::string MakeCurrencyLine(const TAccountView& view) {
  const std::string& base = TCustomLanguageManager::GetInstance().GetLanguageText("Host", "AccountTree_Base");
  const std::string& filter =
      view.FFilter.IsEmpty() ? GetResourceText("Res_Filter_All") : view.FFilter.Text();
  std::string line = base;
  line.append(": ").append(view.FBase.Text());
  line.append("  ").append(GetResourceText("Res_Convert")).append(": ").append(view.FConvert.Text());
  line.append("  ").append(GetResourceText("Res_Filter")).append(": ").append(filter);
  return MakeOneLine(line);
}

TJson MakeJsonRows(const std::vector<TAccountTreeRow>& rows);

TJson MakeJsonRow(const TAccountTreeRow& row, bool isField) {
  TJson object;
  if (isField) {
    object["field"] = row.FField;
    object["key"] = row.FKey;
  } else {
    object["currency"] = row.FCurrency.Text();
  }
  object["caption"] = row.FCaption;
  object["text"] = row.FText;
  object["value"] = MakeJson(row.FValue);
  if (isField || row.FIsTotal) object["children"] = MakeJsonRows(row.FChildren);
  return object;
}

TJson MakeJsonRows(const std::vector<TAccountTreeRow>& rows) {
  TJson array = TJson::array();
  for (const TAccountTreeRow& row : rows) array.push_back(MakeJsonRow(row, false));
  return array;
}

void WriteCsvRows(std::ostream& out, const std::vector<TAccountTreeRow>& rows, std::int32_t level) {
  for (const TAccountTreeRow& row : rows) {
    WriteCsvLine(out, {IntegerToText(level), IntegerToText(row.FField), row.FKey, row.FCurrency.Text(),
                       row.FCaption, row.FText, row.FValue.AsText()});
    WriteCsvRows(out, row.FChildren, level + 1);
  }
}

}  // namespace

void WriteAccountHeading(std::ostream& out, const TAccountView& view) {
  out << MakeHeading(view) << '\n' << MakeCurrencyLine(view) << "\n\n";
}

void WriteAccountText(std::ostream& out, const TAccountView& view, bool colour) {
  std::vector<TLine> lines;
  AddLines(view.FRows, 0, lines);
  std::size_t captionWidth = 0;
  std::size_t textWidth = 0;
  for (const TLine& line : lines) {
    captionWidth = std::max(captionWidth, GetDisplayWidth(line.FCaption));
    textWidth = std::max(textWidth, GetDisplayWidth(line.FText));
  }
  WriteAccountHeading(out, view);
  for (const TLine& line : lines) {
    std::string shown;
    if (line.FText.empty()) {
      shown = line.FCaption;
    } else {
      AppendPadded(shown, line.FCaption, captionWidth + 2, false);
      shown.append(textWidth - GetDisplayWidth(line.FText), ' ');
      AppendFigure(shown, line.FText, colour);
      if (IsNegativeFigure(line.FText)) shown.append(kNegativeMark);
    }
    out << shown << '\n';
  }
}

void WriteAccountJson(std::ostream& out, const TAccountView& view) {
  TJson document;
  document["account"] = view.FAccount.Text();
  document["base"] = view.FBase.Text();
  document["convert"] = view.FConvert.Text();
  document["filter"] = MakeJsonOrNull(view.FFilter.Text());
  document["aggregated"] = view.FAggregated;
  document["rows"] = TJson::array();
  for (const TAccountTreeRow& row : view.FRows) document["rows"].push_back(MakeJsonRow(row, true));
  WriteJson(out, document);
}

void WriteAccountCsv(std::ostream& out, const TAccountView& view) {
  WriteCsvLine(out, {"level", "field", "key", "currency", "caption", "text", "value"});
  WriteCsvRows(out, view.FRows, 0);
}

}  // namespace margindesk
