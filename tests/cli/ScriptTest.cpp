#include <cstdlib>
#include <functional>
#include <sstream>

#include <gmock/gmock.h>

#include "controls/Button.h"
#include "controls/GridTableView.h"
#include "controls/LayoutControl.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/GlobalChannelManager.h"
#include "model/contract/MessageBoxCtrl.h"
#include "terminal/cli/Script.h"
#include "terminal/cli/ScriptLine.h"
#include "terminal/cli/ScriptSteps.h"
#include "tests/cli/CliTest.h"

namespace margindesk {
namespace {

using testing::HasSubstr;
using TJsonLines = std::vector<TJson>;

TJsonLines ParseLines(const std::string& text) {
  TJsonLines lines;
  for (const std::string& line : SplitIntoLines(text)) lines.push_back(TJson::parse(line));
  return lines;
}

// --- the engine, with a view of its own

// What an account view has no use for: a grid to type into, a number, and a button that does as it is told.
class TDeskFrame final : public TViewFrame {
 public:
  TDeskFrame() : TViewFrame(nullptr) {
    TGridColumn price;
    price.FTag = 4;
    price.FCaption = "Price";
    price.FAllowEditing = true;
    price.FOnValidate = MakeEvent<&TDeskFrame::Validate>(this);
    FGrid->SetColumns({price});
    FGrid->SetRecordCount(2);
    FGrid->SetValue(0, 4, TVariant::Integer(9));
    FGrid->SetValue(1, 4, TVariant::Integer(3));
    FGrid->SetSorting(4, TSortOrder::Ascending);
    FButton->SetOnClick(MakeEvent<&TDeskFrame::Click>(this));
    FGroup->AddItem(FPlace);
  }

  std::function<void()> FOnClick = [] {};
  TGridTableView* const FGrid = new TGridTableView(this, "Orders");
  TButton* const FButton = new TButton(this, "Send");
  TLayoutItem* const FPlace = new TLayoutItem(this, "SendPlace", FButton);
  TLayoutGroup* const FGroup = new TLayoutGroup(this, "Bottom", TLayoutDirection::Horizontal);

 private:
  void Click() { FOnClick(); }
  void Validate(TVariant& value, std::string& refusal) {
    if (value.AsFloatOr(-1) < 0) refusal = "Price is not negative";
  }
};

struct TDeskView final : TIBaseView {
  TDeskView() : TIBaseView(nullptr) {}
  TFrame* OpenNewInstance() override { return FindFrame(AddView(std::make_unique<TDeskFrame>())); }
};

class Script : public ::testing::Test {
 protected:
  Script() { FHost.Views().AddClass("TIDesk", FPlugin); }
  ~Script() override { FHost.CloseViews(); }

  TJsonLines Run(const std::string& text, bool strict = false) {
    std::istringstream in(text);
    FOut.str("");
    RunScript(FSession, in, FOut, strict);
    return ParseLines(FOut.str());
  }
  std::string ErrorOf(const std::string& line) { return Run(line).at(0).value("error", ""); }
  TDeskFrame& Frame() { return dynamic_cast<TDeskFrame&>(*FHost.Views().GetViews().back().FFrame); }

  static TReferenceHostOptions MakeOptions(TScriptClock& clock) {
    TReferenceHostOptions options;
    options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
    options.FClock = [&clock] { return clock.Now(); };
    return options;
  }

  std::ostringstream FOut;
  TScriptClock FClock;
  TReferenceHost FHost{THostContents(), MakeOptions(FClock)};
  TDeskView FPlugin;
  TScriptSession FSession{FHost, FClock, [] {}};
};

constexpr const char* kOpen = R"({"step":"open","class":"TIDesk"})";

TEST_F(Script, RefusesLinesThatAreNoStepsAndSaysWhereAndWhy) {
  const std::pair<std::string, std::string> cases[] = {
      {R"({"step":"open")", "no JSON: byte 15"},
      {R"({"step":"dance"})", "no step \"dance\""},
      {R"({"step":"open"})", "needs \"class\""},
      {R"({"step":"open","class":"TIDesk","colour":"red"})", "takes no \"colour\""},
      {R"({"step":"open","class":7})", "\"class\" takes a text"},
      {R"({"step":"open","step":"close"})", "\"step\" is there twice"},
      {R"({"step":"ticks","count":18446744073709551615})", "whole number of 32 bits"},
      {R"({"step":"ticks","count":100001})", "0 to 100000"},
      {R"({"step":"price","symbol":"X","value":1e999})", "number is too large"},
      {R"({"step":"views","view":9})", "view 9 is not open"},
      {"{\"step\":\"\xFF\"}", "not UTF-8"},
      {R"({"step":"open","class":)" + std::string(10'000'000, '['), "nested too deeply"},
      {R"({"step":")" + std::string(10'000'000, 'x') + "\"}", "no step \"xxx"},
      {std::string(TScriptReader::kLongestLine + 1, ' ') + "{}", "too long"},
  };
  for (const auto& [line, reason] : cases) {
    const TJsonLines answers = Run("# a comment\r\n\n" + line + "\n");
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_THAT(answers[0].value("error", ""), HasSubstr(reason)) << line.substr(0, 80);
    EXPECT_EQ(answers[0].value("line", 0), 3);
    EXPECT_LT(answers[0].dump().size(), 600U);
  }
}

TEST_F(Script, AnswersEachStepBeforeTheNextAndGoesOnAfterAFailureUnlessItIsStrict) {
  Run(std::string("\xEF\xBB\xBF") + kOpen);
  std::size_t answered = 0;
  Frame().FOnClick = [&] { answered = ParseLines(FOut.str()).size(); };
  const std::string text = "{\"step\":\"views\"}\n{}\n{\"step\":\"click\",\"name\":\"Send\"}\n";
  EXPECT_EQ(Run(text).size(), 3U);
  EXPECT_EQ(answered, 2U);
  EXPECT_EQ(Run(text, true).size(), 2U);
}

TEST_F(Script, LetsAPersonEditCellsInTheOrderShownAndHearRefusals) {
  Run(kOpen);
  EXPECT_EQ(Run(R"({"step":"grid"})")[0].at("rows").dump(),
            R"([{"record":1,"texts":["3"]},{"record":0,"texts":["9"]}])");
  EXPECT_EQ(ErrorOf(R"({"step":"cell","name":"Orders","row":0,"column":4,"value":10.5})"), "");
  EXPECT_EQ(Frame().FGrid->GetValue(1, 4), TVariant::Float(10.5));
  EXPECT_EQ(ErrorOf(R"({"step":"cell","row":0,"column":4,"value":-1})"), "Price is not negative");
  EXPECT_EQ(ErrorOf(R"({"step":"cell","row":0,"column":5,"value":1})"), "there is no column 5");
}

TEST_F(Script, CannotReachWhatAPersonCannotReach) {
  Run(kOpen);
  const std::string click = R"({"step":"click","name":"Send"})";
  EXPECT_EQ(ErrorOf(click), "");
  Frame().FButton->SetEnabled(false);
  EXPECT_EQ(ErrorOf(click), "\"Send\" is disabled");
  Frame().FGroup->SetVisible(false);
  EXPECT_EQ(ErrorOf(click), "\"Send\" is hidden");
  EXPECT_EQ(ErrorOf(R"({"step":"set","name":"Orders","property":"Visible","value":false})"),
            "\"Visible\" of \"Orders\" is not a person's to change");
}

TEST_F(Script, LetsTimePassByTicksAlone) {
  int ticks = 0;
  FHost.Loop().StartTimer(TTimerControl::kPeriod, [&ticks] { ++ticks; });
  Run(R"({"step":"views"})");
  EXPECT_EQ(ticks, 0);
  Run(R"({"step":"ticks","count":1000})");
  EXPECT_EQ(ticks, 1000);
}

TEST_F(Script, SurvivesViewsThatThrowThatNeverRestAndThatCloseThemselves) {
  Run(kOpen);
  const std::string click = R"({"step":"click","name":"Send"})";
  Frame().FOnClick = [] { throw std::runtime_error("no\nline"); };
  EXPECT_EQ(ErrorOf(click), "no line");
  bool restless = true;
  std::function<void()> post = [&] {
    if (restless) FHost.Loop().Post(post);
  };
  Frame().FOnClick = post;
  EXPECT_EQ(ErrorOf(click), "the views do not come to rest");
  restless = false;
  Frame().FOnClick = [this] {
    FHost.Loop().Post([this] { FHost.Views().Close(FHost.Views().GetViews().back().FHandle); });
  };
  EXPECT_EQ(ErrorOf(click), "");
  EXPECT_EQ(ErrorOf(click), "no view is open");
}

// A batch of one order that says nothing.
class TBlankOrder final : public TCustomDataControl {
 public:
  using TCustomDataControl::TCustomDataControl;
  std::int32_t GetCount() override { return 1; }
  const TColumnList* GetColList() override { return &FColumns; }
  TVariant GetValue(std::int32_t /*row*/, std::int32_t /*column*/) override { return {}; }
  std::string GetDisplayValue(std::int32_t /*row*/, std::int32_t /*column*/) override { return {}; }
  bool GetRowValue(std::int32_t /*row*/, const void*& /*value*/) override { return false; }
  bool GetColValue(std::int32_t /*column*/, const void*& /*value*/) override { return false; }

 private:
  const TColumnList FColumns{};
};

TEST_F(Script, AnswersDialogsOnceEachInTheOrderPreparedAndNoAfterThat) {
  Run(kOpen);
  std::string asked;
  Frame().FOnClick = [&] {
    const auto confirmed = TCustomMessageBoxCtrl::GetInstance().ShowConfirmation("Sure?") == kConfirmationYes;
    TOrderTakeActionRecord record;
    record.FDataControl = new TBlankOrder(nullptr);  // passes to the host
    TCustomGlobalChannelManager::GetInstance().SendChannelMessage(kMessageBatchConfirmation, &record);
    asked += std::string(confirmed ? "y" : "n") + (record.FResult ? "y " : "n ");
  };
  Run(R"({"step":"answer","to":"confirmation","value":"yes"}
{"step":"answer","to":"confirmation","value":"no"}
{"step":"answer","to":"batch","value":"yes"})");
  for (int i = 0; i < 3; ++i) Run(R"({"step":"click","name":"Send"})");
  EXPECT_EQ(asked, "yy nn nn ");
}

// --- the command, with the account information view

class ScriptCommand : public TCliTest {};

TEST_F(ScriptCommand, KeepsNothingBehindUnlessFilesAreNamedForIt) {
  const std::string save = R"({"step":"config","key":"K","value":"V"}
{"step":"open","class":"TIAccountInfo"}
{"step":"account","value":"m1"}
{"step":"reload","account":"M1"}
{"step":"saveworkspace","name":"desk"}
)";
  const std::string load = R"({"step":"loadworkspace","name":"desk"})";
  FInput = save;
  EXPECT_EQ(Run({"script", "-"}).FCode, 0);
  FInput = load;
  EXPECT_THAT(Run({"script", "-"}).FOut, HasSubstr("desk.json"));
  EXPECT_FALSE(std::filesystem::exists(InHome("config")));

  const std::vector<std::string> command = {"--config", InHome("c.db").string(), "script",
                                            "-",        "--workspaces",          InHome("desks").string()};
  FInput = save;
  EXPECT_EQ(Run(command).FCode, 0);
  FInput = load;
  EXPECT_EQ(ParseLines(Run(command).FOut).at(0).at("views").at(0).at("caption"), "Account Information - M1");
  EXPECT_EQ(RunBare({"--config", InHome("c.db").string(), "config", "get", "K"}).FOut, "V\n");
  EXPECT_EQ(Run({"script", InHome("none").string()}).FCode, 2);
}

TEST_F(ScriptCommand, ListsTheMenuInTheLanguageOfTheDayAndNoneOfAnUnloadedPackage) {
  FInput = R"({"step":"language","index":2}
{"step":"menus"}
{"step":"unload"}
{"step":"menus"})";
  const TJsonLines lines = ParseLines(Run({"script", "-"}).FOut);
  EXPECT_EQ(lines.at(1).at("menus").dump(),
            R"([{"id":103,"index":3100,"group":0,"caption":"戶口","class":null,"items":[{"id":601,)"
            R"("index":3100,"group":0,"caption":"戶口資料","class":"TIAccountInfo","items":[]},{"id":621,)"
            R"("index":4000,"group":0,"caption":"按金模擬","class":"TIMarginSimulator","items":[]}]}])");
  EXPECT_EQ(lines.at(3).at("menus").dump(), "[]");

  FInput = R"({"step":"open","class":"TIMarginSimulator"}
{"step":"cell","row":0,"column":0,"value":"700"}
{"step":"config","key":"Function_MarginSim","value":"N"}
{"step":"open","class":"TIMarginSimulator"})";
  const TJsonLines simulator = ParseLines(Run({"script", "-"}).FOut);
  EXPECT_TRUE(simulator.at(1).at("ok")) << "the one grid shown is meant";
  EXPECT_FALSE(simulator.at(3).at("ok")) << "the menu does not offer it";
}

TEST_F(ScriptCommand, SetsPreferencesThatTheViewsFollowOnceTheyAreSavedAndHoversOverFormulas) {
  const std::string config = InHome("f.db").string();
  const std::string address = "file://" MARGINDESK_SOURCE_DIR "/resources/formulas.txt";
  EXPECT_EQ(RunBare({"--config", config, "config", "set", "FormulaURL", address}).FCode, 0);
  FInput = R"({"step":"open","class":"TIAccountInfo"}
{"step":"account","value":"m1"}
{"step":"hover","row":0,"column":21}
{"step":"preferences","action":"set","name":"cbAmount","property":"Checked","value":true}
{"step":"preferences","action":"set","name":"edtAmount","property":"Text","value":"3"}
{"step":"tree"}
{"step":"preferences","action":"execute"}
{"step":"tree"}
{"step":"preferences","action":"set","name":"edtAmount","property":"Text","value":"1"}
{"step":"preferences","action":"reset"}
{"step":"preferences","action":"get","name":"edtAmount","property":"Text"}
{"step":"preferences","action":"get","name":"edtAmount"}
{"step":"preferences","action":"set","name":"edtQty","property":"Text","value":"2"}
{"step":"preferences","action":"factory","name":"edtQty"})";
  const TJsonLines lines = ParseLines(Run({"--config", config, "script", "-"}).FOut);
  EXPECT_THAT(lines.at(2).dump(), HasSubstr("\"Trading Limit=Amount that may still be traded"));
  EXPECT_EQ(lines.at(5).at("rows").at(0).at("text"), "101,900.00");
  EXPECT_EQ(lines.at(7).at("rows").at(0).at("text"), "101,900.000");
  EXPECT_EQ(lines.at(10).at("value"), "3");
  EXPECT_EQ(lines.at(11).at("error"), "the step lacks \"property\"");
  EXPECT_EQ(lines.at(12).at("error"), "\"edtQty\" is disabled");
  EXPECT_EQ(lines.at(13).at("error"), "the action \"factory\" takes no \"name\"");
}

// Every step of the document is in the script, and running it prints what the document shows. In a process of
// its own, in which the first view is view 1, and in a folder of its own.
class DocumentedScript : public TCliTest {
 protected:
  void Check(const std::string& document, const std::string& file) {
    const std::string docs = MARGINDESK_SOURCE_DIR "/docs/";
    std::string steps, answers;
    for (const std::string& line : SplitIntoLines(ReadWholeFile(docs + document))) {
      if (line.starts_with("> {")) steps += line.substr(2) + "\n";
      if (line.starts_with("{\"ok\":")) answers += line + "\n";
    }
    std::string script;
    for (const std::string& line : SplitIntoLines(ReadWholeFile(docs + file))) {
      if (line.starts_with('{')) script += line + "\n";
    }
    EXPECT_EQ(steps, script);

    const std::string book = InHome("demo.db").string();
    ASSERT_EQ(RunBare({"--book", book, "book", "import", docs + "../resources/demo"}).FCode, 0);
    const std::string command = "cd \"" + FHome.string() + "\" && \"" MARGINDESK_PROGRAM "\" --book \"" +
                                book + "\" script --strict \"" + docs + file + "\" >out";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(ReadWholeFile(InHome("out")), answers);
  }
};

TEST_F(DocumentedScript, PrintsATradersMorning) { Check("script.md", "example.script"); }
TEST_F(DocumentedScript, PrintsThePackageFromLoadingToUnloading) { Check("package.md", "package.script"); }

TEST(ScriptDocument, NamesEveryStepWithItsMembers) {
  const std::string text = ReadWholeFile(MARGINDESK_SOURCE_DIR "/docs/script.md");
  for (const TScriptStep& step : GetScriptSteps()) {
    const std::size_t row = text.find("\n| `" + std::string(step.FName) + "` |");
    ASSERT_NE(row, std::string::npos) << step.FName;
    const std::string line = text.substr(row, text.find('\n', row + 1) - row);
    if (line.find("see below") != std::string::npos) continue;
    for (const TScriptMember& member : step.FMembers) {
      EXPECT_THAT(line, HasSubstr("`" + std::string(member.FName) + "`"));
    }
  }
}

}  // namespace
}  // namespace margindesk
