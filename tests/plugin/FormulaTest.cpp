// The formula file: read, fetched for all views, and the one that comes with the demo book.
#include <cstdlib>
#include <filesystem>

#include "plugin/AccountInfoInterface.h"
#include "plugin/FormulaFile.h"
#include "tests/accountinfo/ViewFixture.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/support/HttpTestServer.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;

TEST(FormulaFile, IsReadByLinesWithOneEqualSign) {
  const auto read = [](std::string_view text) {
    TFormulaMapList formulas;
    for (const std::string_view code : {"ENG", "CHS", "ZHH"}) ReadFormulaSection(text, code, formulas);
    return formulas;
  };
  using TList = TFormulaMapList;
  EXPECT_EQ(read("out=side\n[CHS]k=v\r\n[ENG]\r\n\tK1 = A / B \r\nK2=b\ra=b=c\nK3=d==e\n=x\nno\n\n"
                 "k1=small\nK2 = last\nK4=[ZHH]\n"),
            (TList{{"CHS", {{"", "v"}}},
                   {"ENG", {{"", "x"}, {"K1", "A / B"}, {"K2", "last"}, {"K4", ""}, {"k1", "small"}}}}))
      << "the character behind a header is dropped; letter case counts";
  EXPECT_EQ(read("[ENG]\nK=a[0]\nL=b\n"), (TList{{"ENG", {{"K", "a"}}}})) << "a bracket ends the section";
  EXPECT_EQ(read("[CHS]\nK=see [ENG]\nL=x\n[ENG]\nM=y"),
            (TList{{"CHS", {{"K", "see"}}}, {"ENG", {{"L", "x"}}}}))
      << "the first header counts, wherever it stands";
  for (const std::string_view none : {"", "[ENG", "[ENG]", "[ENG][CHS][ZHH]", "[ENG]\nnothing\n[eng]\nk=v"})
    EXPECT_EQ(read(none), TList()) << none;
  TList formulas{{"ENG", {{"K", "old"}, {"L", "kept"}}}};
  ReadFormulaSection("[ENG]\nK=new", "ENG", formulas);
  EXPECT_EQ(formulas, (TList{{"ENG", {{"K", "new"}, {"L", "kept"}}}}));
}

// A plug-in object that tells when the file has been fetched.
struct TWatchedPlugin : TIAccountInfo {
  using TIAccountInfo::TIAccountInfo;
  void ProcessLoadFormulaURL(void* sender, const std::string& fileName, const std::string& text,
                             bool success) override {
    TIAccountInfo::ProcessLoadFormulaURL(sender, fileName, text, success);
    FFetched = true;
  }
  bool FFetched = false;
};

// Plug-in objects and views over a file service that waits no longer than 400 ms for 50,000 bytes.
class Formulas : public AccountView {
 protected:
  Formulas() {
    setenv("TMPDIR", FFolder.Path().c_str(), 1);
    setenv("no_proxy", "127.0.0.1", 1);
  }
  ~Formulas() override { unsetenv("TMPDIR"); }

  void UseFile(const std::string& path) { SetConfig("FormulaURL", FServer.Address(path)); }
  void Finish() {
    EXPECT_TRUE(FHost.Loop().RunUntil([this] { return FFiles.GetPendingCount() == 0; }, 20s));
  }
  std::size_t FetchedCount() const {
    namespace fs = std::filesystem;
    const auto isFile = [](const fs::directory_entry& entry) { return entry.is_regular_file(); };
    return static_cast<std::size_t>(
        std::ranges::count_if(fs::recursive_directory_iterator(FFolder.Path()), isFile));
  }
  static TFormulaMapList English(std::string_view formula) {
    return {{"ENG", {{"OMS_TRADE_LIMIT", std::string(formula)}}}};
  }

  TTemporaryFolder FFolder;
  THttpTestServer FServer{{{"/a", HttpAnswer("200 OK", "[ENG]\nOMS_TRADE_LIMIT=A\n")},
                           {"/b", HttpAnswer("200 OK", "\xEF\xBB\xBF[ENG]\r\nOMS_TRADE_LIMIT=B\r\n")},
                           {"/missing", HttpAnswer("404 Not Found", "[ENG]\nOMS_TRADE_LIMIT=404\n")},
                           {"/large", HttpAnswer("200 OK", "[ENG]\nK=v\n" + std::string(50'000, 'x'))},
                           {"/latin", HttpAnswer("200 OK", "[ENG]\nOMS_TRADE_LIMIT=\xE9\n")}}};
  TFileService FFiles{FHost.Loop(), TFileLimits{2s, 400ms, 50'000}};
  TServiceScope<TCustomFileService> FScope{FFiles};
};

TEST_F(Formulas, AreNotFetchedWithoutAnAddress) {
  FFormulaMapList = nullptr;
  const TIAccountInfo plugin(nullptr);
  EXPECT_EQ(FFiles.GetPendingCount(), 0U);
  EXPECT_EQ(*FFormulaMapList, TFormulaMapList());
}

TEST_F(Formulas, StayWhenAFileCannotBeFetchedOrReadAndNoFileStaysBehind) {
  UseFile("/a");
  TIAccountInfo plugin(nullptr);
  EXPECT_TRUE(FFormulaMapList->empty());
  Finish();
  EXPECT_EQ(*FFormulaMapList, English("A"));
  EXPECT_EQ(FetchedCount(), 0U);
  for (const std::string path : {"/missing", "/stalled", "/large", "/latin"}) {
    SCOPED_TRACE(path);
    UseFile(path);
    plugin.LoadFormulaMapURL();
    ASSERT_EQ(FFiles.GetPendingCount(), 1U);
    Finish();
    EXPECT_EQ(*FFormulaMapList, English("A"));
    EXPECT_EQ(FetchedCount(), 0U);
  }
  EXPECT_EQ(FServer.RequestCount(), 5);
}

TEST_F(Formulas, OfASecondPluginReplaceTheFirstOnesUnderAShownHint) {
  SetConfig("Default_AccountInfoColumn", "TradingLimit,Symbol");
  UseFile("/a");
  auto first = std::make_unique<TIAccountInfo>(nullptr);
  Finish();
  TOpenFrame& frame = Open("A1");
  TVirtualTree& tree = *frame.AccountInfoTree;
  const TRect caption = tree.GetCellRect(*frame.Row("TradingLimit"), *tree.FindColumn(kCellCaption));
  const auto hint = [&](std::int32_t step) {
    tree.MouseMove({caption.FLeft + 1 + step, caption.FTop + 1});
    return frame.HintCtrl->IsShowing() ? frame.HintCtrl->GetHintText() : "";
  };
  const std::string name = Text("Res_TradingLimit");
  EXPECT_EQ(hint(0), name + "=A");
  UseFile("/b");
  TIAccountInfo second(nullptr);
  EXPECT_TRUE(FFormulaMapList->empty());
  EXPECT_EQ(hint(1), name + "=A") << "what is shown stays";
  first.reset();
  Finish();
  EXPECT_EQ(*FFormulaMapList, English("B"));
  tree.MouseLeave();
  EXPECT_EQ(hint(0), name + "=B");
  // An entry without a key is no formula of a field without a key.
  second.ProcessFormulaFile("[ENG]\n=x\n", "ENG");
  EXPECT_EQ(frame.GetFormulaByAttr(kFieldSymbol), "");
}

TEST_F(Formulas, DoNotComeAfterTheirPluginHasGone) {
  UseFile("/a");
  std::make_unique<TIAccountInfo>(nullptr).reset();
  auto plugin = std::make_unique<TWatchedPlugin>(nullptr);
  ASSERT_TRUE(FHost.Loop().RunUntil([&] { return plugin->FFetched; }, 20s));
  plugin.reset();
  EXPECT_EQ(FFiles.GetPendingCount(), 0U);
  EXPECT_EQ(FetchedCount(), 0U) << "the file that was being read";
  std::this_thread::sleep_for(50ms);
  FHost.RunLoop();
  EXPECT_EQ(*FFormulaMapList, TFormulaMapList());
}

TEST_F(Formulas, OfTheDemoExplainEveryFieldOfTheBackOfficeInThreeLanguages) {
  const std::string file = MARGINDESK_SOURCE_DIR "/resources/formulas.txt";
  SetConfig("FormulaURL", "file://" + file);
  const TIAccountInfo plugin(nullptr);
  Finish();
  TFormulaMapList& formulas = *FFormulaMapList;
  std::size_t fields = 0;
  for (const TCatalogueRow& row : GetCatalogue()) {
    if (row.FBackOfficeKey.empty()) continue;
    ++fields;
    const std::string key(row.FBackOfficeKey);
    for (const char* code : {"ENG", "CHS", "ZHH"}) EXPECT_NE(formulas[code][key], "") << code << " " << key;
    EXPECT_NE(formulas["ENG"][key], formulas["CHS"][key]) << key;
  }
  std::size_t entries = 0;
  for (const auto& [code, section] : formulas) entries += section.size();
  EXPECT_EQ(entries, 3 * fields) << "keys that no field has";
  const std::string text = ReadWholeFile(file);
  EXPECT_EQ(std::ranges::count(text, '='), std::ptrdiff_t(3 * fields)) << "lines that are passed over";
}

}  // namespace
}  // namespace margindesk
