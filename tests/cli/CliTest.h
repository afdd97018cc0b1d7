#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace margindesk {

// What one run of the command line left behind.
struct TCliResult {
  int FCode = 0;
  std::string FOut;
  std::string FErr;
};

// Runs command lines in this process, with a home of their own in a temporary folder. "book.db" there is a
// small book: the master account M1 with its sub-accounts S1 (stocks) and F1 (futures), and B1, which has
// nothing; in HKD (base), USD (8 HKD) and JPY (0.05 HKD, a row of its own).
class TCliTest : public ::testing::Test {
 public:
  TCliTest();
  ~TCliTest() override;

 protected:
  // Against the small book.
  TCliResult Run(std::vector<std::string> arguments);
  // As typed, without --book.
  TCliResult RunBare(const std::vector<std::string>& arguments);
  // The document that a command prints, which must succeed without a word on standard error.
  nlohmann::ordered_json RunJson(std::vector<std::string> arguments);

  std::filesystem::path InHome(const std::string& name) const { return FHome / name; }
  std::filesystem::path DefaultBook() const { return InHome("data/margindesk/book.db"); }

  const std::filesystem::path FHome;  // "csv" holds the small book's files
  std::map<std::string, std::string> FEnvironment;
  std::string FInput;  // on standard input
  bool FColour = false;
  std::size_t FWidth = 0;
};

std::string ReadWholeFile(const std::filesystem::path& file);
void WriteWholeFile(const std::filesystem::path& file, const std::string& text);

// The columns that a UTF-8 text takes on a terminal: ASCII one each, everything else here is Chinese.
std::size_t CountColumns(const std::string& text);

std::vector<std::string> SplitIntoLines(const std::string& text);

}  // namespace margindesk
