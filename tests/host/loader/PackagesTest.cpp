#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include "host/loader/Packages.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string Miniature(int fault) {
  return std::string(MINIATURE_FOLDER "/miniature_") + std::to_string(fault) + ".so";
}

bool IsMapped(std::string_view file) {
  std::ifstream maps("/proc/self/maps");
  std::stringstream text;
  text << maps.rdbuf();
  return text.str().find(file) != std::string::npos;
}

TEST(Packages, ThatAreUnfitAreRefusedByNameAndReasonAndLeaveNothing) {
  TTestHost host;
  TPackages packages(host);
  struct TRefusal {
    int FFault;
    const char* FReason;
  };
  for (const TRefusal& refusal :
       {TRefusal{1, "it was built for version 6 of the contract, this is version 5"},
        TRefusal{2, "it was built by cc-of-another-age, this by "},
        TRefusal{3, "it has no information table"}, TRefusal{4, "it cannot start: no licence"},
        TRefusal{5, "it threw: out of the border"}, TRefusal{6, "it is no package: it lacks one of "},
        TRefusal{7, "class TMiniature makes no object"}, TRefusal{8, "its information table is damaged"},
        TRefusal{9, "it threw: no view today"}}) {
    const std::string file = Miniature(refusal.FFault);
    EXPECT_THAT(packages.Load(file), StartsWith(file + ": " + refusal.FReason));
    EXPECT_FALSE(IsMapped(file)) << file;
    EXPECT_TRUE(host.Views().GetClasses().empty()) << file;
  }
  EXPECT_EQ(packages.Load(Miniature(0)), "") << "the host goes on";
  EXPECT_THAT(packages.GetPackages().at(0)->GetUnits(), ElementsAre("First", "Second"));
}

TEST(Packages, ThatAreNoWholeLibrariesAreRefusedBeforeTheyAreOpened) {
  TTestHost host;
  TPackages packages(host);
  const fs::path folder = fs::path(testing::TempDir()) / "margindesk-packages";
  fs::create_directories(folder);
  const auto refusal = [&packages](const fs::path& file) { return packages.Load(file); };
  EXPECT_THAT(refusal(folder / "missing.so"), EndsWith("missing.so: there is no such file"));
  EXPECT_THAT(refusal(folder), EndsWith(": it is no regular file"));
  const fs::path text = folder / "text.so";
  std::ofstream(text) << "a text that is long enough to be a header of a library, and then some more of it";
  EXPECT_THAT(refusal(text), EndsWith("text.so: it is no library"));
  const auto whole = fs::file_size(ACCOUNTVIEWS);
  for (const auto size : {whole / 100, whole / 10, whole - 1}) {
    const fs::path cut = folder / "cut.so";
    fs::copy_file(ACCOUNTVIEWS, cut, fs::copy_options::overwrite_existing);
    fs::resize_file(cut, size);
    EXPECT_THAT(refusal(cut), EndsWith("cut.so: it is cut short")) << size;
  }
  fs::remove_all(folder);
}

TEST(Packages, OfTheAccountViewsComeAndGoWithoutATrace) {
  TTestHost host;
  TPackages packages(host);
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(packages.Load(ACCOUNTVIEWS), "");
    EXPECT_TRUE(IsMapped(ACCOUNTVIEWS));
    EXPECT_THAT(packages.Load(ACCOUNTVIEWS), EndsWith(": it is loaded already"));
    EXPECT_EQ(packages.GetPackages().at(0)->GetUnits().back(), "MarginSimulatorInterface");
    const TViewHandle first = host.Views().Open("TIAccountInfo");
    ASSERT_NE(first, 0);
    ASSERT_NE(host.Views().Open("TIAccountInfo"), 0);
    EXPECT_TRUE(host.Views().Close(first));
    host.RunLoop();
    EXPECT_EQ(host.Views().Find(host.Views().GetViews().at(0).FHandle)->FCaption, "Account Information");
    packages.UnloadAll();
    EXPECT_EQ(host.CountRegistrations(), 0U);
    EXPECT_TRUE(host.Views().GetViews().empty());
    EXPECT_FALSE(host.Views().HasClass("TIAccountInfo"));
    EXPECT_FALSE(IsMapped(ACCOUNTVIEWS)) << "it is still mapped";
  }
}

}  // namespace
}  // namespace margindesk
