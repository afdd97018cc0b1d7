#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/LanguageManager.h"
#include "model/contract/Constdef.h"
#include "tests/host/book/BookTestFiles.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Languages : public testing::Test {
 protected:
  void SetUp() override {
    const std::string shared = "[Columns]\nb.Type=number\na=A\n";
    WriteWholeFile(FFolder.Path() / "ENG.ini",
                   "[Resource]\nRes_Yes=Yes\nRes_None=\n[Currency]\nHKD=Dollar\n" + shared);
    WriteWholeFile(FFolder.Path() / "CHS.ini", "[Resource]\nRes_Yes=\xE6\x98\xAF\n[Currency]\n" + shared);
    WriteWholeFile(FFolder.Path() / "ZHH.ini", "[Resource]\nRes_Yes=\xE6\x98\xAF!\n[Currency]\n" + shared);
  }

  TTemporaryFolder FFolder;
};

TEST_F(Languages, AnswerInTheCurrentLanguageUnlessAnotherIsAskedFor) {
  TLanguageManager languages(FFolder.Path());
  EXPECT_EQ(languages.GetLanguageIndex(), kLanguageEnglish);
  const std::string& yes = languages.GetLanguageText(Const_ResourceStringTag, "Res_Yes");
  EXPECT_TRUE(languages.SetLanguage(kLanguageTraditionalChinese));
  EXPECT_EQ(languages.GetLanguageText(Const_ResourceStringTag, "Res_Yes"), "\xE6\x98\xAF!");
  EXPECT_EQ(languages.GetLanguageText(Const_ResourceStringTag, "Res_Yes", kLanguageSimplifiedChinese),
            "\xE6\x98\xAF");
  EXPECT_EQ(yes, "Yes");
  EXPECT_FALSE(languages.SetLanguage(3));
  EXPECT_EQ(languages.GetLanguageIndex(), kLanguageTraditionalChinese);
  EXPECT_EQ(FindLanguage("zhh"), kLanguageTraditionalChinese);
  EXPECT_FALSE(FindLanguage("FRA"));
}

TEST_F(Languages, ShowTheKeyWhereAResourceOrErrorHasNoTextAndTheDefaultElsewhere) {
  const TLanguageManager languages(FFolder.Path());
  std::string key = "Res_NotThere";
  const std::string& shown = languages.GetLanguageText(Const_ResourceStringTag, key);
  key = "overwritten with something long";
  for (int i = 0; i < 100; ++i) languages.GetLanguageText(Const_ErrorCodeTag, "DC" + std::to_string(i));
  EXPECT_EQ(shown, "Res_NotThere");
  EXPECT_EQ(languages.GetLanguageText(Const_ErrorCodeTag, "DC7"), "DC7");
  EXPECT_EQ(languages.GetLanguageText(Const_ResourceStringTag, "Res_None"), "");
  EXPECT_EQ(languages.GetLanguageText("Currency", "XXX"), "XXX");
  EXPECT_EQ(languages.GetLanguageText("RPQLevel", "9"), "");
  const std::string fallback = "?";
  EXPECT_EQ(languages.GetLanguageText("RPQLevel", "9", 3, 0, &fallback), "?");
  EXPECT_EQ(languages.GetLanguageText("Currency", "HKD", 3, 0, &fallback), "Dollar");
}

TEST_F(Languages, ListTheKeysOfASectionInFileOrderAfterWhatTheListHolds) {
  const TLanguageManager languages(FFolder.Path());
  std::vector<std::string> keys = {"before"};
  languages.GetSectionKeys("Columns", keys);
  languages.GetSectionKeys("No such section", keys);
  EXPECT_THAT(keys, ElementsAre("before", "b", "a"));
  EXPECT_EQ(languages.GetSectionKeyValue("Columns", "b", "Type"), "number");
  EXPECT_EQ(languages.GetSectionKeyValue("Columns", "a", "Type"), "");
}

TEST_F(Languages, AreAllThereOrNotAtAll) {
  std::filesystem::remove(FFolder.Path() / "ZHH.ini");
  try {
    const TLanguageManager languages(FFolder.Path());
    FAIL() << "started with a language missing";
  } catch (const TLanguageFileError& error) {
    EXPECT_THAT(error.what(), HasSubstr("ZHH.ini"));
  }
}

}  // namespace
}  // namespace margindesk
