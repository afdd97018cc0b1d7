#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/LanguageManager.h"
#include "model/contract/Constdef.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsNull;
using testing::Matcher;
using testing::Pointee;

std::string RefusalOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const TLanguageFileError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(LanguageFile, ReadsTextsAndNamedValuesAndKeepsTheOrderOfTheFile) {
  const TLanguageFile file = TLanguageFile::Parse(
      "\xEF\xBB\xBF; a comment\r\n[ Resource ]\r\n\r\nZulu = last = first \r\n  ;Hidden=no\r\nalpha=\r\n"
      "Lines=one\\ntwo\\\\n\\sthree\r\n[Columns]\r\n9.Type=number\r\n7=\xE5\xAD\x96\r\n7.Type=string\r\n"
      "[Resource]\r\nLate=no line end",
      "X.ini");
  EXPECT_THAT(file.Sections(), ElementsAre("Resource", "Columns"));
  EXPECT_THAT(file.Keys("Resource"), ElementsAre("Zulu", "alpha", "Lines", "Late"));
  EXPECT_THAT(file.Keys("Columns"), ElementsAre("9", "7"));
  EXPECT_THAT(file.Text("Resource", "Zulu"), Pointee(std::string("last = first")));
  EXPECT_THAT(file.Text("Resource", "alpha"), Pointee(std::string()));
  EXPECT_THAT(file.Text("Resource", "Lines"), Pointee(std::string("one\ntwo\\n three")));
  EXPECT_THAT(file.Text("Columns", "7"), Pointee(std::string("\xE5\xAD\x96")));
  EXPECT_THAT(file.Value("Columns", "7", "Type"), Pointee(std::string("string")));
  EXPECT_THAT(file.Text("Columns", "9"), IsNull()) << "a key with named values only has no text";
}

TEST(LanguageFile, RefusesABadFileWholeAndNamesTheLine) {
  for (const auto& [text, reason] : std::vector<std::pair<std::string, std::string>>{
           {"[A]\nk=v\nnonsense\n", "3: a line without '='"},
           {"; head\nk=v\n[A]\n", "2: a key outside a section"},
           {"[A]\nk.t=\nk=v\n k . t =x\n", "4: a second text for 'k . t'"},
           {"[A]\n=v", "2: a text without a key"},
           {"[A]\n7.=v", "2: a named value without a name"},
           {"[ ]", "1: a section without a name"},
           {"[A", "1: a section header ends with its first ']'"},
           {"[A]\nk=v\n;\xAE\x69\n", "3: not UTF-8"},
           {"[A]\nk=\\t", "2: an unknown escape; only \\n, \\s and \\\\ are known"}}) {
    EXPECT_EQ(RefusalOf([&, text = text] { TLanguageFile::Parse(text, "X.ini"); }), "X.ini:" + reason);
  }
}

TEST(Languages, AreAllThereAndShowTheKeyWhereAResourceOrErrorHasNoTextAndTheDefaultElsewhere) {
  const TTemporaryFolder folder;
  WriteWholeFile(folder.Path() / "ENG.ini", "[Resource]\nRes_Yes=Yes\nRes_None=\n");
  WriteWholeFile(folder.Path() / "CHS.ini", "[Resource]\nRes_Yes=\xE6\x98\xAF\n");
  EXPECT_THAT(RefusalOf([&] { TLanguageManager{folder.Path()}; }), HasSubstr("ZHH.ini: cannot be read"));
  WriteWholeFile(folder.Path() / "ZHH.ini", "[Resource]\nRes_Yes=\xE6\x98\xAF!\n");

  TLanguageManager languages(folder.Path());
  const std::string& yes = languages.GetLanguageText(Const_ResourceStringTag, "Res_Yes");
  EXPECT_EQ(languages.GetLanguageText(Const_ResourceStringTag, "Res_None"), "");
  EXPECT_TRUE(languages.SetLanguage(kLanguageTraditionalChinese));
  EXPECT_FALSE(languages.SetLanguage(3));
  EXPECT_EQ(languages.GetLanguageText(Const_ResourceStringTag, "Res_Yes"), "\xE6\x98\xAF!");
  EXPECT_EQ(languages.GetLanguageText(Const_ResourceStringTag, "Res_Yes", kLanguageSimplifiedChinese),
            "\xE6\x98\xAF");
  EXPECT_EQ(yes, "Yes") << "a text outlives a change of the language";
  EXPECT_EQ(languages.GetLanguageText(Const_ErrorCodeTag, "DC7"), "DC7");
  EXPECT_EQ(languages.GetLanguageText("RPQLevel", "9"), "");
  const std::string fallback = "?";
  EXPECT_EQ(languages.GetLanguageText("RPQLevel", "9", 3, 0, &fallback), "?");
}

// The places of a text that the program fills in ("%s", "%1s"), in no particular order, for a translation may
// turn them round.
std::multiset<std::string> PlaceHolders(const std::string& text) {
  std::multiset<std::string> result;
  for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1)) {
    // "%s", "%1s" of the package and "%1" of the desktop.
    std::size_t end = std::min(text.find_first_not_of("0123456789", at + 1), text.size());
    if (end < text.size() && (text[end] == 's' || text[end] == 'd')) ++end;
    result.insert(text.substr(at, end - at));
  }
  return result;
}

TEST(ShippedLanguages, HoldTheKeysOfEnglishInItsOrderEachWithATextOfItsOwnAndTheSamePlaceHolders) {
  const std::filesystem::path folder = MARGINDESK_SOURCE_DIR "/resources/languages";
  const TLanguageFile english = LoadLanguageFile(folder / "ENG.ini");
  // A drop-down choice is found again by its text, so that only these may share one.
  const std::map<std::string, std::string> sharedOnPurpose = {{"Res_Precision_FxRatio", "Res_FxRatio"},
                                                              {"Res_Principal_N", "Res_OpenClose_N"},
                                                              {"Res_Principal_C", "Res_Client"}};
  for (const char* name : {"ENG.ini", "CHS.ini", "ZHH.ini"}) {
    const TLanguageFile file = LoadLanguageFile(folder / name);
    ASSERT_EQ(file.Sections(), english.Sections());
    std::map<std::string, std::string> keyOfResource;
    for (const std::string& section : english.Sections()) {
      ASSERT_EQ(file.Keys(section), english.Keys(section)) << name << " " << section;
      for (const std::string& key : english.Keys(section)) {
        SCOPED_TRACE(name + (" " + section) + " " + key);
        const std::string* text = file.Text(section, key);
        ASSERT_TRUE(text != nullptr && !text->empty());
        EXPECT_EQ(PlaceHolders(*text), PlaceHolders(*english.Text(section, key)));
        const std::string* type = english.Value(section, key, "Type");
        EXPECT_THAT(file.Value(section, key, "Type"),
                    type ? Matcher<const std::string*>(Pointee(*type)) : IsNull());
        if (section != Const_ResourceStringTag) continue;
        const auto [first, isNew] = keyOfResource.emplace(*text, key);
        const auto allowed = sharedOnPurpose.find(key);
        EXPECT_TRUE(isNew || (allowed != sharedOnPurpose.end() && allowed->second == first->second))
            << first->second << " reads the same";
      }
    }
    EXPECT_THAT(file.Keys("RPQLevel"), ElementsAre("1", "2", "3", "4", "5"));
  }
}

}  // namespace
}  // namespace margindesk
