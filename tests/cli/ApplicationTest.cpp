#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <sstream>

#include <gmock/gmock.h>

#include "terminal/cli/Application.h"
#include "tests/cli/CliTest.h"

namespace margindesk {

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Application : public TCliTest {
 protected:
  void ExpectRefused(const TCliResult& result, const std::string& reason) {
    EXPECT_EQ(result.FCode, 2);
    EXPECT_EQ(result.FOut, "");
    EXPECT_THAT(result.FErr, StartsWith("margindesk: "));
    EXPECT_THAT(result.FErr, HasSubstr(reason));
    EXPECT_EQ(SplitIntoLines(result.FErr).size(), 1U) << result.FErr;
  }
};

TEST_F(Application, RefusesWhatItDoesNotKnowInOneLine) {
  ExpectRefused(Run({}), "no command given");
  ExpectRefused(Run({"acounts"}), "unknown command \"acounts\"");
  ExpectRefused(Run({"book"}), "no command given; see \"margindesk book --help\"");
  ExpectRefused(Run({"book", "accounts"}), "unknown command \"book accounts\"");
  ExpectRefused(Run({"accounts", "M1"}), "unexpected argument \"M1\"");
  ExpectRefused(Run({"accounts", "--all"}), "unknown option \"--all\"");
  ExpectRefused(Run({"accounts", "--format", "xml"}), "xml");
  ExpectRefused(Run({"--lang", "FRA", "accounts"}), "FRA");
  ExpectRefused(Run({"account"}), "ACCOUNT");
  ExpectRefused(Run({"account", "m1"}), "unknown account \"m1\"");
  ExpectRefused(Run({"account", "two\nlines\xff"}), "unknown account");
  ExpectRefused(Run({"positions", "X"}), "unknown account \"X\"");
  ExpectRefused(Run({"account", "M1", "--convert", "EUR"}), "unknown currency \"EUR\"");
  ExpectRefused(Run({"account", "M1", "--filter", "EUR"}), "unknown currency \"EUR\"");
  ExpectRefused(Run({"account", "M1", "--columns", "PL,Profit"}), "unknown column \"Profit\"");
  ExpectRefused(Run({"account", "M1", "--columns", "OMS_NETAV"}), "unknown column \"OMS_NETAV\"");
  ExpectRefused(Run({"account", "M1", "--columns", ""}), "names no column");
  ExpectRefused(Run({"account", "M1", "--columns", "PL,Symbol"}), "\"Symbol\" belongs to positions");
  ExpectRefused(Run({"account", "M1", "--columns", "PL,pl"}), "\"pl\" is named twice");
  ExpectRefused(Run({"account", "M1", "--columns", "2,2"}), "\"2\" is named twice");
  ExpectRefused(Run({"account", "M1", "--layout", "4"}), "4");
  ExpectRefused(Run({"account", "S1", "--aggregate"}), "\"S1\" is no master account");
  ExpectRefused(RunBare({"--book", "", "accounts"}), "--book names no file");
  ExpectRefused(RunBare({"--book", InHome("none.db").string(), "accounts"}), "there is no book");
  ExpectRefused(RunBare({"--book", InHome("csv/accounts.csv").string(), "accounts"}), "accounts.csv: ");
  ExpectRefused(Run({"--config", InHome("csv/accounts.csv").string(), "accounts"}), "accounts.csv: ");
  ExpectRefused(Run({"book", "import", InHome("none").string()}), "none: ");
}

TEST_F(Application, SaysWhatIsMissingAroundIt) {
  FEnvironment["MARGINDESK_RESOURCES"] = FHome.string();
  ExpectRefused(Run({"accounts"}), "MARGINDESK_RESOURCES");
  FEnvironment.clear();
  ExpectRefused(RunBare({"accounts"}), "nor HOME is set");
  const std::string config = InHome("config.db").string();
  EXPECT_EQ(Run({"--config", config, "accounts"}).FCode, 0);  // nothing else is needed
}

TEST_F(Application, TakesTheOptionsBeforeTheCommandAfterItToo) {
  const std::string book = InHome("book.db").string();
  EXPECT_EQ(RunBare({"accounts", "--lang", "zhh", "--book", book}).FOut,
            RunBare({"--book", book, "--lang", "ZHH", "accounts"}).FOut);
  // The name of a command is an argument like any other where one is wanted.
  EXPECT_EQ(Run({"config", "set", "book", "accounts"}).FCode, 0);
  EXPECT_EQ(Run({"config", "get", "book"}).FOut, "accounts\n");
}

TEST_F(Application, ExplainsEveryCommand) {
  const TCliResult help = RunBare({"--help"});
  EXPECT_EQ(help.FCode, 0);
  EXPECT_EQ(help.FErr, "");
  for (const std::string command : {"accounts", "account", "positions", "config", "book", "--lang"}) {
    EXPECT_THAT(help.FOut, HasSubstr("\n  " + command));
  }
  EXPECT_THAT(RunBare({"account", "--help"}).FOut, HasSubstr("account [OPTIONS] ACCOUNT"));
  EXPECT_THAT(RunBare({"account", "--help"}).FOut, HasSubstr("--convert CUR"));
  for (const std::string command : {"import", "export", "check"}) {
    EXPECT_THAT(RunBare({"book", "--help"}).FOut, HasSubstr("\n  " + command));
    EXPECT_THAT(RunBare({"book", command, "--help"}).FOut, HasSubstr("margindesk book " + command));
  }
  EXPECT_THAT(RunBare({"--version"}).FOut, ::testing::MatchesRegex("margindesk [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

// Numbers as some countries write them.
class TForeignNumbers : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST_F(Application, WritesTheSameWhateverTheLocale) {
  const std::vector<std::vector<std::string>> commands = {
      {"account", "M1", "--columns", "all"},
      {"account", "M1", "--columns", "all", "--format", "json"},
      {"account", "M1", "--columns", "all", "--format", "csv"},
      {"positions", "S1", "--format", "json"},
      {"book", "check"}};
  std::vector<std::string> before;
  before.reserve(commands.size());
  for (const auto& command : commands) before.push_back(Run(command).FOut);
  const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new TForeignNumbers));
  for (std::size_t i = 0; i < commands.size(); ++i) EXPECT_EQ(Run(commands[i]).FOut, before[i]);
  std::locale::global(previous);
}

// A screen that takes nothing.
class TFullDevice : public std::streambuf {
 public:
  explicit TFullDevice(int error) : FError(error) {}

 protected:
  int_type overflow(int_type /*c*/) override {
    errno = FError;
    return traits_type::eof();
  }

 private:
  const int FError;
};

TEST_F(Application, FailsOverAFullDiskButNotOverAClosedPipe) {
  const auto run = [this](int error, std::ostringstream& err) {
    TFullDevice device(error);
    std::ostream out(&device);
    TTerminal terminal{std::cin, out, err, [this](const std::string& name) { return FEnvironment.at(name); }};
    return RunApplication({"--book", InHome("book.db").string(), "accounts"}, terminal);
  };
  std::ostringstream closed;
  EXPECT_EQ(run(EPIPE, closed), 0);
  EXPECT_EQ(closed.str(), "");
  std::ostringstream full;
  EXPECT_EQ(run(ENOSPC, full), 1);
  EXPECT_EQ(full.str(), "margindesk: cannot write to the standard output\n");
}

TEST_F(Application, EndsQuietlyWhenItsReaderHasGone) {
  // The program itself: a signal would end it before it could give an exit code.
  const std::string command = "bash -c '(sleep 0.3; exec \"" MARGINDESK_PROGRAM "\" --book \"" +
                              InHome("book.db").string() + "\" --config \"" + InHome("c.db").string() +
                              "\" account M1 --columns all) 2>\"" + InHome("err").string() +
                              "\" | true; exit ${PIPESTATUS[0]}'";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_EQ(ReadWholeFile(InHome("err")), "");
}

}  // namespace

}  // namespace margindesk
