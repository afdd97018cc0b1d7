#include "tests/cli/CliTest.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "host/book/Book.h"
#include "terminal/cli/Application.h"

namespace margindesk {

namespace {

using TCells = std::map<std::string, std::string>;

// A CSV file of a table: the cells that matter, the others 0, N or empty.
std::string MakeCsv(TTable table, const std::vector<TCells>& rows) {
  std::string text;
  for (const TBookColumn& column : BookTable(table).FColumns) text.append(column.FName).append(",");
  text.back() = '\n';
  for (const TCells& row : rows) {
    for (const TBookColumn& column : BookTable(table).FColumns) {
      const auto cell = row.find(std::string(column.FName));
      if (cell != row.end()) {
        text += cell->second;
      } else if (!column.FNullable) {
        text += column.FKind == TColumnKind::kFlag ? "N" : "0";
      }
      text += ',';
    }
    text.back() = '\n';
  }
  return text;
}

void WriteSmallBook(const std::filesystem::path& directory) {
  std::filesystem::create_directory(directory);
  const auto add = [&directory](TTable table, const std::vector<TCells>& rows) {
    WriteWholeFile(directory / (std::string(BookTable(table).FName) + ".csv"), MakeCsv(table, rows));
  };
  add(TTable::kCurrencies, {{{"currency", "HKD"}, {"ratio", "1"}, {"base", "Y"}},
                            {{"currency", "USD"}, {"ratio", "8"}},
                            {{"currency", "JPY"}, {"ratio", "0.05"}}});
  add(TTable::kExchanges, {{{"exchange", "HK"}, {"name", "Hong Kong"}, {"period_order", "0"}}});
  add(TTable::kProducts, {{{"symbol", "90101"},
                           {"name", "Lantern Bay"},
                           {"exchange", "HK"},
                           {"currency", "HKD"},
                           {"lot_size", "100"},
                           {"contract_size", "1"}},
                          {{"symbol", "ZZOB"},
                           {"exchange", "HK"},
                           {"currency", "USD"},
                           {"lot_size", "1"},
                           {"contract_size", "1"}}});
  add(TTable::kPrices, {{{"symbol", "90101"}, {"last", "62.5"}, {"bid", "62.5"}, {"ask", "62.6"}}});
  add(TTable::kAccounts,
      {{{"account", "M1"}, {"name", "Amber Lantern Family"}, {"type", "M"}, {"master_type", "10"}},
       {{"account", "S1"}, {"name", "范例船务（香港）"}, {"type", "S"}, {"master", "M1"}},
       {{"account", "F1"}, {"name", "Amber \x1b[31m futures"}, {"type", "F"}, {"master", "M1"}},
       {{"account", "B1"}, {"status_flags", "1024"}}});
  const std::string tl = "trading_limit";
  const std::string cash = "cash_balance";
  const std::string margin = "initial_margin";
  add(TTable::kFigures,
      {{{"account", "M1"}, {"currency", ""}, {tl, "1900"}, {cash, "-500.5"}, {margin, "100"}},
       {{"account", "M1"}, {"currency", "HKD"}, {tl, "1100"}, {cash, "300"}},
       {{"account", "M1"}, {"currency", "USD"}, {tl, "100"}, {cash, "-100.0625"}},
       {{"account", "M1"}, {"currency", "JPY"}, {"separate_row", "Y"}, {tl, "2000000"}, {cash, "0"}},
       {{"account", "S1"}, {"currency", ""}, {tl, "50"}, {cash, "1000"}},
       {{"account", "S1"}, {"currency", "HKD"}, {tl, "50"}, {cash, "1000"}}});
  add(TTable::kPositions, {{{"account", "S1"},
                            {"key", ""},
                            {"symbol", "90101"},
                            {"holding_quantity", "2000"},
                            {"excluded_quantity", "400"},
                            {"completed_buy_amount", "6250"},
                            {"pl_first_part", "-700"},
                            {"pl_second_part", "100"},
                            {"realized_pl", "150.5"},
                            {"quantity", "2000"},
                            {"side", "L"},
                            {"average_price", "62.85"}},
                           {{"account", "S1"},
                            {"key", "ZZOB"},
                            {"symbol", "ZZOB"},
                            {"holding_quantity", "-5"},
                            {"quantity", "-5"},
                            {"side", "S"},
                            {"price_based", "Y"}}});
}

std::filesystem::path MakeTemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "margindesk-cli-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  return name;
}

}  // namespace

TCliTest::TCliTest() : FHome(MakeTemporaryFolder()) {
  FEnvironment = {{"HOME", FHome.string()},
                  {"XDG_DATA_HOME", InHome("data").string()},
                  {"XDG_CONFIG_HOME", InHome("config").string()},
                  {"MARGINDESK_RESOURCES", MARGINDESK_SOURCE_DIR "/resources"}};
  WriteSmallBook(InHome("csv"));
  TBook(InHome("book.db"), TStoreMode::kCreate).Import(InHome("csv"));
}

TCliTest::~TCliTest() { std::filesystem::remove_all(FHome); }

TCliResult TCliTest::RunBare(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const auto environment = [this](const std::string& name) -> std::optional<std::string> {
    const auto found = FEnvironment.find(name);
    return found == FEnvironment.end() ? std::nullopt : std::optional(found->second);
  };
  std::istringstream in(FInput);
  TTerminal terminal{in, out, err, environment, FColour, FWidth};
  const int code = RunApplication(arguments, terminal);
  return {code, out.str(), err.str()};
}

TCliResult TCliTest::Run(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"--book", InHome("book.db").string()});
  return RunBare(arguments);
}

nlohmann::ordered_json TCliTest::RunJson(std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), {"--format", "json"});
  const TCliResult result = Run(std::move(arguments));
  EXPECT_EQ(result.FCode, 0);
  EXPECT_EQ(result.FErr, "");
  return nlohmann::ordered_json::parse(result.FOut);
}

std::string ReadWholeFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteWholeFile(const std::filesystem::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

std::size_t CountColumns(const std::string& text) {
  std::size_t columns = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) columns += 1;
    if (byte >= 0xC0) columns += 2;
  }
  return columns;
}

std::vector<std::string> SplitIntoLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace margindesk
