#include <gmock/gmock.h>

#include "host/book/Sqlite.h"
#include "terminal/session/BookFile.h"
#include "tests/cli/CliTest.h"

namespace margindesk {

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

// The user's files: the book and the configuration.
class Stores : public TCliTest {
 protected:
  static std::size_t CountFiles(const fs::path& directory) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(directory), {}));
  }
};

TEST_F(Stores, MakeTheDemoBookOnFirstUseAndSayItOnce) {
  const TCliResult first = RunBare({"accounts"});
  EXPECT_EQ(first.FCode, 0);
  EXPECT_EQ(first.FErr, "margindesk: made the demo book " + DefaultBook().string() + "\n");
  EXPECT_THAT(first.FOut, HasSubstr("Amber Lantern Family Office"));
  EXPECT_EQ(CountFiles(DefaultBook().parent_path()), 1U);  // nothing half made beside it
  const TCliResult second = RunBare({"accounts"});
  EXPECT_EQ(second.FErr, "");
  EXPECT_EQ(second.FOut, first.FOut);
}

TEST_F(Stores, LieBelowTheHomeDirectoryWhereNothingElseIsSaid) {
  FEnvironment.erase("XDG_DATA_HOME");
  FEnvironment["XDG_CONFIG_HOME"] = "relative/counts/for/nothing";
  EXPECT_EQ(RunBare({"accounts"}).FCode, 0);
  EXPECT_EQ(RunBare({"config", "set", "K", "v"}).FCode, 0);
  EXPECT_TRUE(fs::exists(InHome(".local/share/margindesk/book.db")));
  EXPECT_TRUE(fs::exists(InHome(".config/margindesk/config.db")));
}

TEST_F(Stores, TakeAFirstImportInThePlaceOfTheDemoBook) {
  const TCliResult import = RunBare({"book", "import", InHome("csv").string()});
  EXPECT_EQ(import.FCode, 0);
  EXPECT_EQ(import.FErr, "");
  EXPECT_EQ(import.FOut, "imported 4 accounts, 6 figures, 2 positions\n");
  EXPECT_THAT(RunBare({"accounts"}).FOut, HasSubstr("范例船务"));
}

TEST_F(Stores, KeepTheBookAsItWasWhenAFileIsBad) {
  std::string figures = ReadWholeFile(InHome("csv/figures.csv"));
  figures.replace(figures.find("-100.0625"), 9, "nan");
  WriteWholeFile(InHome("csv/figures.csv"), figures);
  const std::string before = Run({"accounts"}).FOut;
  const TCliResult import = Run({"book", "import", InHome("csv").string()});
  EXPECT_EQ(import.FCode, 2);
  EXPECT_EQ(import.FOut, "");
  EXPECT_THAT(import.FErr,
              StartsWith("margindesk: " + InHome("csv/figures.csv").string() + ":4:cash_balance: "));
  EXPECT_EQ(SplitIntoLines(import.FErr).size(), 1U);
  EXPECT_EQ(Run({"accounts"}).FOut, before);

  // A book that would have been new is not there afterwards, nor anything else.
  EXPECT_EQ(RunBare({"book", "import", InHome("csv").string()}).FCode, 2);
  EXPECT_EQ(CountFiles(DefaultBook().parent_path()), 0U);
}

TEST_F(Stores, NeverReplaceABookThatAnotherProgramMadeMeanwhile) {
  EXPECT_FALSE(MakeBookFile(InHome("book.db"), MARGINDESK_SOURCE_DIR "/resources/demo"));
  EXPECT_THAT(Run({"accounts"}).FOut, HasSubstr("范例船务"));
}

TEST_F(Stores, ExportABookThatImportsAsTheSame) {
  EXPECT_EQ(Run({"book", "export", InHome("out").string()}).FOut,
            "exported 4 accounts, 6 figures, 2 positions\n");
  const std::string copy = InHome("copy.db").string();
  EXPECT_EQ(RunBare({"book", "import", InHome("out").string(), "--book", copy}).FCode, 0);
  EXPECT_EQ(RunBare({"--book", copy, "account", "M1", "--columns", "all", "--format", "json"}).FOut,
            Run({"account", "M1", "--columns", "all", "--format", "json"}).FOut);
}

TEST_F(Stores, TellWhatACheckFound) {
  const TCliResult sound = Run({"book", "check"});
  EXPECT_EQ(sound.FCode, 0);
  EXPECT_EQ(sound.FOut, "sound: 4 accounts, 6 figures, 2 positions\n");
  TSqliteConnection(InHome("book.db"), TStoreMode::kExisting)
      .Execute("PRAGMA foreign_keys=OFF; UPDATE accounts SET master = 'M1' WHERE account = 'M1'");
  const TCliResult faulty = Run({"book", "check"});
  EXPECT_EQ(faulty.FCode, 1);
  EXPECT_THAT(faulty.FOut, StartsWith("accounts:1:master: "));
  EXPECT_EQ(faulty.FErr, "");
}

TEST_F(Stores, GiveBackWhatWasConfiguredUntilItIsTakenOut) {
  EXPECT_EQ(Run({"config", "get", "AmountDecimal"}).FOut, "\n");
  EXPECT_FALSE(fs::exists(InHome("config")));  // reading makes nothing
  EXPECT_EQ(Run({"config", "set", "AmountDecimal", "N"}).FOut, "");
  EXPECT_EQ(Run({"config", "set", "ScaleSize", "-5", "--section", "OMS_TRADEPLATFORM"}).FCode, 0);
  EXPECT_EQ(Run({"config", "get", "AmountDecimal"}).FOut, "N\n");
  EXPECT_EQ(Run({"config", "get", "ScaleSize"}).FOut, "\n");
  EXPECT_EQ(Run({"config", "get", "ScaleSize", "--section", "OMS_TRADEPLATFORM"}).FOut, "-5\n");
  EXPECT_EQ(Run({"config", "list"}).FOut, "[OMS_TRADEPLATFORM]\nScaleSize=-5\n\n[User]\nAmountDecimal=N\n");
  EXPECT_EQ(Run({"config", "set", "AmountDecimal", ""}).FCode, 0);
  EXPECT_EQ(Run({"config", "list"}).FOut, "[OMS_TRADEPLATFORM]\nScaleSize=-5\n");
}

TEST_F(Stores, UseTheConfigurationThatIsNamed) {
  const std::string file = InHome("elsewhere/mine.db").string();
  EXPECT_EQ(Run({"--config", file, "config", "set", "Default_AccountInfoColumn", "Equity"}).FCode, 0);
  EXPECT_THAT(Run({"--config", file, "account", "M1"}).FOut, HasSubstr("\nNet Equity"));
  EXPECT_THAT(Run({"--config", file, "account", "M1"}).FOut, Not(HasSubstr("\nCash Balance")));
  EXPECT_THAT(Run({"account", "M1"}).FOut, HasSubstr("\nCash Balance"));
}

}  // namespace

}  // namespace margindesk
