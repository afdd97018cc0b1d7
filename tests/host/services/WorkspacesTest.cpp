#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "host/services/Workspaces.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/services/FakeViews.h"
#include "tests/support/TestHost.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class Workspaces : public testing::Test {
 protected:
  Workspaces() { FHost.Views().AddClass("TIFake", FPlugin); }
  ~Workspaces() override {
    FWorkspaces.Release();
    FHost.Views().RemoveClass("TIFake");
  }

  TViewHandle Open(const std::string& layout, const std::string& group = "") {
    const TViewHandle handle = FHost.Views().Open("TIFake");
    FHost.Views().SetLayout(handle, layout);
    FHost.Views().SetGroup(handle, group);
    return handle;
  }
  // "layout@group " of the open views.
  std::string Views() {
    std::string text;
    for (const TOpenView& view : FHost.Views().GetViews()) {
      const auto* frame = static_cast<const TFakeFrame*>(view.FFrame);
      text += frame->FLayout + "@" + frame->FGroup + " ";
    }
    return text;
  }
  void After(std::chrono::milliseconds time) {
    FNow += time;
    FLoop.RunOnce();
  }
  // The layouts that are stored.
  std::string Stored(const std::string& name) {
    std::string text;
    for (const TWorkspaceView& view : FStore.Load(name)) text += view.FLayout + " ";
    return text;
  }
  std::string LastMessage() { return FHost.Messages().empty() ? "" : FHost.Messages().back(); }

  TTemporaryFolder FFolder;
  TFakeView FPlugin;
  TTestHost FHost;
  TUiLoop::TTimePoint FNow{};
  TUiLoop FLoop{[this] { return FNow; }};
  const std::filesystem::path FPath = FFolder.Path() / "workspaces";
  TWorkspaceStore FStore{FPath};
  TWorkspaces FWorkspaces{FPath, FHost.Views(), FLoop};
};

TEST_F(Workspaces, ComeBackWithOrderGroupsAndLayoutsWhateverTheirBytes) {
  const std::string odd("a,\"b\"\n\0\xFF\xC3 \xE4\xB8\xAD", 14);
  Open("one", "red");
  Open(odd, "\xE7\xBB\x84");
  const std::string before = Views();
  ASSERT_TRUE(FWorkspaces.Save("my \xE4\xB8\xAD"));
  FHost.Views().CloseAll();
  Open("other");
  ASSERT_TRUE(FWorkspaces.Load("my \xE4\xB8\xAD"));
  EXPECT_EQ(Views(), before);
  EXPECT_THAT(FWorkspaces.List(), ElementsAre("my \xE4\xB8\xAD"));
  for (const char* name : {"", ".hidden", "a/b", "\xFF", "a\nb"}) {
    EXPECT_FALSE(FWorkspaces.Save(name));
    EXPECT_THAT(LastMessage(), EndsWith(": no name for a workspace"));
  }
  EXPECT_FALSE(FWorkspaces.Load("absent"));
  EXPECT_THAT(LastMessage(), EndsWith("absent.json: No such file or directory"));
  EXPECT_THAT(FHost.Messages(), testing::Each(Not(HasSubstr("\n"))));
}

TEST_F(Workspaces, ThatAreDamagedAreReportedAndSetAsideAndNothingChanges) {
  Open("one");
  ASSERT_TRUE(FWorkspaces.Save("day"));
  const std::string sound = ReadWholeFile(FPath / "day.json");
  const std::string head = R"({"margindesk_workspace":1,"views":)";
  std::string many = head + "[";
  for (int i = 0; i < 501; ++i) many += R"({"class":"TIFake","group":"","layout":""},)";
  many.back() = ']';
  int number = 0;
  for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>>{
           {sound.substr(0, sound.size() / 2), "no JSON from byte"},
           {sound + sound, "no JSON from byte"},
           {head + "[{\"class\":\"\xFF\"}]}", "no JSON from byte"},
           {head + R"([],"n":1e999})", "no JSON"},
           {std::string(10 << 20, '['), "nested too deep"},
           {std::string(17 << 20, ' '), "larger than"},
           {R"({"margindesk_workspace":2,"views":[]})", "unknown version"},
           {head + "{}}", "no list of views"},
           {head + R"([{"class":"TIFake","group":"","layout":7}]})", "view 1: no layout"},
           {head + R"([{"class":"TIFake","group":{"hex":"f"},"layout":""}]})", "view 1: no group"},
           {many + "}", "more than 500 views"}}) {
    WriteWholeFile(FPath / "bad.json", text);
    EXPECT_FALSE(FWorkspaces.Load("bad"));
    const std::string aside = "bad.damaged-" + std::to_string(++number);
    EXPECT_THAT(LastMessage(), AllOf(HasSubstr("bad.json: " + reason), EndsWith("; set aside as " + aside)));
    EXPECT_TRUE(ReadWholeFile(FPath / aside) == text);
  }
  EXPECT_EQ(Views() + FPlugin.FLog + FWorkspaces.GetName(), "one@ day");
  EXPECT_THAT(FWorkspaces.List(), ElementsAre("day"));
}

TEST_F(Workspaces, OpenWhatTheyCanAndKeepWhatNobodyKnows) {
  FStore.Save("day", {{"TIGone", "blue", "kept"}, {"TIFake", "red", "bad one"}, {"TIFake", "", "two"}});
  ASSERT_TRUE(FWorkspaces.Load("day"));
  EXPECT_EQ(Views(), "bad one@red two@ ");
  EXPECT_THAT(FHost.Messages(),
              ElementsAre("\"TIGone\": unknown view; kept in the workspace",
                          "\"TIFake\": its layout is not applied whole: \"no flag: \\x0abad one\""));
  After(2000ms);
  EXPECT_EQ(FPlugin.FLog, "") << "loading saves nothing and closes nothing of its own";
  Open("three");
  FWorkspaces.Flush();
  EXPECT_THAT(ReadWholeFile(FPath / "day.damaged-1"), HasSubstr("bad one")) << "nothing of it is lost";
  EXPECT_THAT(
      FStore.Load("day"),
      ElementsAre(TWorkspaceView{"TIGone", "blue", "kept"}, TWorkspaceView{"TIFake", "red", "bad one"},
                  TWorkspaceView{"TIFake", "", "two"}, TWorkspaceView{"TIFake", "", "three"}));
}

TEST_F(Workspaces, AreSavedOnceForABurstOfChangesAndWhenTheHostLetsGo) {
  const TViewHandle view = Open("one");
  After(2000ms);
  EXPECT_THAT(FWorkspaces.List(), ElementsAre()) << "no workspace has a name yet";
  ASSERT_TRUE(FWorkspaces.Save("day"));
  FHost.Views().SetLayout(view, "two");
  After(999ms);
  FHost.Views().SetLayout(view, "three");
  EXPECT_EQ(Stored("day"), "one ");
  After(1ms);
  EXPECT_EQ(Stored("day"), "three ");
  std::filesystem::remove(FPath / "day.json");
  After(2000ms);
  EXPECT_THAT(FWorkspaces.List(), ElementsAre()) << "once for the burst";
  static_cast<TFakeFrame*>(FHost.Views().Find(view)->FFrame)->FLayout = "quiet";
  After(1000ms);
  EXPECT_EQ(Stored("day"), "quiet ") << "a view does not tell of every change";
  FHost.Views().SetLayout(view, "four");
  FWorkspaces.Release();
  FHost.Views().CloseAll();
  After(2000ms);
  EXPECT_EQ(Stored("day"), "four ") << "and not emptied by views that close for good";
}

TEST_F(Workspaces, ThatCannotBeSavedSayItOnceAndKeepTheOldFile) {
  const TViewHandle view = Open("one");
  ASSERT_TRUE(FWorkspaces.Save("day"));
  struct rlimit old {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  const struct rlimit full { 10, old.rlim_max };
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
  for (const char* layout : {"two", "mute", "three"}) {
    FHost.Views().SetLayout(view, layout);
    After(1000ms);
  }
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_THAT(FHost.Messages(), ElementsAre(EndsWith("day.json: File too large")));
  EXPECT_EQ(Stored("day"), "one ");
  const std::filesystem::directory_iterator files(FPath);
  EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "a temporary file was left";
  FWorkspaces.Flush();
  EXPECT_EQ(Stored("day"), "three ");
}

}  // namespace
}  // namespace margindesk
