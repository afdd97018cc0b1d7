#include <iomanip>
#include <sstream>

#include "tests/cli/CliTest.h"

namespace margindesk {

namespace {

// A command of the README as it is typed there, and what it says that the command prints.
struct TExample {
  std::string FCommand;
  std::string FOutput;
};

// The examples of the ```console blocks: commands begin with "$ ", everything up to the next one is output.
std::vector<TExample> ReadExamples(const std::string& markdown) {
  std::vector<TExample> examples;
  bool inside = false;
  for (const std::string& line : SplitIntoLines(markdown)) {
    if (line.starts_with("```")) {
      inside = line == "```console";
    } else if (inside && line.starts_with("$ ")) {
      examples.push_back({line.substr(2), ""});
    } else if (inside) {
      examples.back().FOutput += line + "\n";
    }
  }
  return examples;
}

// The words of a command; what stands between double quotes is one.
std::vector<std::string> SplitIntoWords(const std::string& command) {
  std::vector<std::string> words;
  std::istringstream stream(command);
  for (std::string word; stream >> std::quoted(word);) words.push_back(word);
  return words;
}

// The command line that run.sh runs when it is given none.
std::vector<std::string> ReadDemoCommand() {
  const std::string script = ReadWholeFile(MARGINDESK_SOURCE_DIR "/run.sh");
  const std::string start = "\nDEMO=(";
  const std::size_t begin = script.find(start) + start.size();
  return SplitIntoWords(script.substr(begin, script.find(')', begin) - begin));
}

class Readme : public TCliTest {
 public:
  Readme() { std::filesystem::current_path(FHome); }
  ~Readme() override { std::filesystem::current_path(FPrevious); }

 private:
  const std::filesystem::path FPrevious = std::filesystem::current_path();
};

TEST_F(Readme, ShowsWhatItsExamplesPrint) {
  const std::vector<TExample> examples = ReadExamples(ReadWholeFile(MARGINDESK_SOURCE_DIR "/README.md"));
  ASSERT_GE(examples.size(), 9U);
  for (const TExample& example : examples) {
    std::vector<std::string> words = SplitIntoWords(example.FCommand);
    ASSERT_EQ(words.front(), "./run.sh");
    words.erase(words.begin());
    const TCliResult result = RunBare(words.empty() ? ReadDemoCommand() : words);
    EXPECT_EQ(result.FCode, 0) << example.FCommand << "\n" << result.FErr;
    EXPECT_EQ(result.FOut, example.FOutput) << example.FCommand;
  }
}

// Its orders would be refused, which is the point of it.
TEST_F(Readme, TellsOfASimulationThatCanBeCheckedByHand) {
  const std::string docs = MARGINDESK_SOURCE_DIR "/docs/";
  std::filesystem::create_directory("docs");
  std::filesystem::copy(docs + "spread.csv", "docs/spread.csv");
  const std::string document = ReadWholeFile(docs + "simulate.md");
  const TExample example = ReadExamples(document).at(0);
  std::vector<std::string> words = SplitIntoWords(example.FCommand);
  words.erase(words.begin());
  RunBare({"accounts"});  // makes the demo book, and says so
  const TCliResult result = RunBare(words);
  EXPECT_EQ(result.FCode, 3);
  EXPECT_EQ(result.FOut, example.FOutput);
  EXPECT_NE(document.find("    " + result.FErr), std::string::npos) << result.FErr;
  EXPECT_NE(document.find("```\n" + ReadWholeFile(docs + "spread.csv") + "```"), std::string::npos);
}

}  // namespace

}  // namespace margindesk
