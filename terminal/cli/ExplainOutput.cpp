#include "terminal/cli/ExplainOutput.h"

#include <array>
#include <charconv>
#include <string_view>

#include "terminal/cli/DisplayWidth.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/TextTable.h"

namespace margindesk {

namespace {

// By kind of term: its name in a document, and what stands before its second term and those after it.
struct TKindRow {
  std::string_view FName;
  std::string_view FSign;
};
constexpr TKindRow kKinds[] = {{"input", ""},     {"sum", "+ "},      {"difference", "- "},
                               {"product", "x "}, {"quotient", "/ "}, {"lower", "or, if lower, "}};

const TKindRow& GetKind(const TTerm& term) { return kKinds[static_cast<std::size_t>(term.FKind)]; }

// To six decimals, which is as many as ratios have; without noughts at the end.
std::string MakeText(std::optional<double> value) {
  if (!value) return "--";
  std::array<char, 400> buffer{};  // the largest double has 309 digits
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), *value, std::chars_format::fixed, 6).ptr;
  std::string text(buffer.data(), end);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

// "3 positions of 30007 in USD", "30007, total", "USD".
std::string MakeOrigin(const TTerm& term) {
  std::string origin;
  if (term.FPositions) {
    origin = std::to_string(*term.FPositions) + (*term.FPositions == 1 ? " position of " : " positions of ");
  }
  origin += term.FAccount.Text();
  if (!term.FCurrency) return origin;
  const std::string_view currency =
      term.FCurrency->IsEmpty() ? std::string_view("total") : std::string_view(term.FCurrency->Text());
  return origin.append(origin.empty() ? "" : term.FPositions ? " in " : ", ").append(currency);
}

void AddRows(const TTerm& term, std::size_t level, std::string_view sign, TTextTable& table) {
  table.AddRow(
      {std::string(2 * level, ' ').append(sign).append(term.FName), MakeOrigin(term), MakeText(term.FValue)});
  for (std::size_t i = 0; i < term.FTerms.size(); ++i) {
    AddRows(term.FTerms[i], level + 1, i == 0 ? "" : GetKind(term).FSign, table);
  }
}

TJson MakeTermJson(const TTerm& term) {
  TJson object;
  object["kind"] = GetKind(term).FName;
  object["name"] = term.FName;
  object["value"] = term.FValue ? TJson(*term.FValue) : TJson();
  if (term.FKind != TTermKind::kInput) {
    object["terms"] = TJson::array();
    for (const TTerm& own : term.FTerms) object["terms"].push_back(MakeTermJson(own));
    return object;
  }
  object["account"] = MakeJsonOrNull(term.FAccount.Text());
  object["currency"] = term.FCurrency ? TJson(term.FCurrency->Text()) : TJson();
  object["positions"] = term.FPositions ? TJson(*term.FPositions) : TJson();
  return object;
}

}  // namespace

void WriteExplanationText(std::ostream& out, const TExplainedFigure& figure, const TTerminal& terminal) {
  WriteAccountText(out, figure.FView, terminal.FColour);
  if (!figure.FFormula.empty()) out << '\n' << MakeOneLine(figure.FFormula) << '\n';
  out << '\n';
  if (!figure.FTerm) {
    out << "Read from " << figure.FSource << ".\n";
    return;
  }
  TTextTable table;
  table.AddColumn("Result, and what it follows from", false);
  table.AddColumn("Read from", false);
  table.AddColumn("Value", true);
  AddRows(*figure.FTerm, 0, "", table);
  table.Write(out, terminal.FColour, terminal.FWidth);
}

void WriteExplanationJson(std::ostream& out, const TExplainedFigure& figure) {
  const TAccountTreeRow& row = figure.FView.FRows.front();
  TJson document;
  document["account"] = figure.FView.FAccount.Text();
  document["base"] = figure.FView.FBase.Text();
  document["convert"] = figure.FView.FConvert.Text();
  document["filter"] = MakeJsonOrNull(figure.FView.FFilter.Text());
  document["aggregated"] = figure.FView.FAggregated;
  document["field"] = row.FField;
  document["key"] = row.FKey;
  document["caption"] = row.FCaption;
  document["text"] = row.FText;
  document["formula"] = MakeJsonOrNull(figure.FFormula);
  document["source"] = figure.FTerm ? TJson() : TJson(figure.FSource);
  document["calculation"] = figure.FTerm ? MakeTermJson(*figure.FTerm) : TJson();
  WriteJson(out, document);
}

}  // namespace margindesk
