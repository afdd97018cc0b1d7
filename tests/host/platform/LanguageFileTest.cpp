#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/LanguageFile.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::Pointee;

const std::filesystem::path kLanguageFolder =
    std::filesystem::path(MARGINDESK_SOURCE_DIR) / "resources" / "languages";

std::string RefusalOf(std::string_view text) {
  try {
    TLanguageFile::Parse(text, "X.ini");
  } catch (const TLanguageFileError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(LanguageFile, ReadsTextsAndNamedValuesAndKeepsTheOrderOfTheFile) {
  const TLanguageFile file = TLanguageFile::Parse(
      "\xEF\xBB\xBF; a comment\r\n"
      "[ Resource ]\r\n"
      "\r\n"
      "Zulu = last = first \r\n"
      "  ;Hidden=no\r\n"
      "alpha=\r\n"
      "Lines=one\\ntwo\\\\n\\sthree\r\n"
      "[Columns]\r\n"
      "9.Type=number\r\n"
      "7=\xE5\xAD\x96\xE5\xB1\x95\r\n"
      "7.Type=string\r\n"
      "[Resource]\r\n"
      "Late=no line end",
      "X.ini");

  EXPECT_THAT(file.Sections(), ElementsAre("Resource", "Columns"));
  EXPECT_THAT(file.Keys("Resource"), ElementsAre("Zulu", "alpha", "Lines", "Late"));
  EXPECT_THAT(file.Keys("Columns"), ElementsAre("9", "7"));
  EXPECT_THAT(file.Keys("columns"), IsEmpty());

  EXPECT_THAT(file.Text("Resource", "Zulu"), Pointee(std::string("last = first")));
  EXPECT_THAT(file.Text("Resource", "alpha"), Pointee(std::string()));
  EXPECT_THAT(file.Text("Resource", "Lines"), Pointee(std::string("one\ntwo\\n three")));
  EXPECT_THAT(file.Text("Resource", "Late"), Pointee(std::string("no line end")));
  EXPECT_THAT(file.Text("Resource", "Alpha"), IsNull());
  EXPECT_THAT(file.Text("Nowhere", "alpha"), IsNull());

  EXPECT_THAT(file.Text("Columns", "7"), Pointee(std::string("\xE5\xAD\x96\xE5\xB1\x95")));
  EXPECT_THAT(file.Value("Columns", "7", "Type"), Pointee(std::string("string")));
  EXPECT_THAT(file.Value("Columns", "7", "type"), IsNull());
  EXPECT_THAT(file.Text("Columns", "9"), IsNull()) << "a key with named values only has no text";
  EXPECT_THAT(file.Value("Columns", "9", "Type"), Pointee(std::string("number")));
  EXPECT_THAT(file.Text("Columns", "7.Type"), IsNull());
}

TEST(LanguageFile, RefusesABadFileWholeAndNamesTheLine) {
  EXPECT_EQ(RefusalOf("[A]\nk=v\nnonsense\n"), "X.ini:3: a line without '='");
  EXPECT_EQ(RefusalOf("; head\nk=v\n[A]\n"), "X.ini:2: a key outside a section");
  EXPECT_EQ(RefusalOf("[A]\n\nk=v\nl=w\nk=x\n"), "X.ini:5: a second text for 'k'");
  EXPECT_EQ(RefusalOf("[A]\nk.t=\nk=v\n k . t =x\n"), "X.ini:4: a second text for 'k . t'");
  EXPECT_EQ(RefusalOf("[A]\nk=v\n[B]\nk=v\n[A]\nk=v"), "X.ini:6: a second text for 'k'");
  EXPECT_EQ(RefusalOf("[A]\n=v"), "X.ini:2: a text without a key");
  EXPECT_EQ(RefusalOf("[A]\n.Type=v"), "X.ini:2: a text without a key");
  EXPECT_EQ(RefusalOf("[A]\n7.=v"), "X.ini:2: a named value without a name");
  EXPECT_EQ(RefusalOf("[ ]"), "X.ini:1: a section without a name");
  for (const std::string_view header : {"[A", "[", "[A] k=v", "[A]]"}) {
    EXPECT_EQ(RefusalOf(header), "X.ini:1: a section header ends with its first ']'") << header;
  }
  // Big5, and UTF-16 with its byte order mark.
  EXPECT_EQ(RefusalOf("[A]\nk=v\n;\xAE\x69\n"), "X.ini:3: not UTF-8");
  EXPECT_EQ(RefusalOf(std::string_view("\xFF\xFE[\0A\0]\0", 8)), "X.ini:1: not UTF-8");
  for (const std::string_view text : {"\\t", "\\N", "C:\\new\\", "\\"}) {
    EXPECT_EQ(RefusalOf("[A]\nk=" + std::string(text)),
              "X.ini:2: an unknown escape; only \\n, \\s and \\\\ are known")
        << text;
  }
}

TEST(LanguageFile, SaysWhichFileCannotBeRead) {
  for (const std::filesystem::path& path : {kLanguageFolder / "XXX.ini", kLanguageFolder}) {
    try {
      LoadLanguageFile(path);
      ADD_FAILURE() << path << " was read";
    } catch (const TLanguageFileError& error) {
      EXPECT_EQ(error.what(), path.string() + ": cannot be read");
    }
  }
}

// The three files that the terminal ships.
class ShippedLanguages : public testing::TestWithParam<std::string> {
 protected:
  const TLanguageFile FEnglish = LoadLanguageFile(kLanguageFolder / "ENG.ini");
  const TLanguageFile FFile = LoadLanguageFile(kLanguageFolder / (GetParam() + ".ini"));
};

// The places of a text that the program fills in ("%s", "%d", "%1s", "%2s"), in no particular order, for a
// translation may turn them round.
std::multiset<std::string> PlaceHolders(const std::string& text) {
  std::multiset<std::string> result;
  for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1)) {
    result.insert(text.substr(at, text.find_first_not_of("0123456789", at + 1) + 1 - at));
  }
  return result;
}

TEST_P(ShippedLanguages, HoldsTheKeysOfEnglishInItsOrderEachWithATextAndTheSamePlaceHolders) {
  ASSERT_EQ(FFile.Sections(), FEnglish.Sections());
  for (const std::string& section : FEnglish.Sections()) {
    EXPECT_EQ(FFile.Keys(section), FEnglish.Keys(section)) << section;
    for (const std::string& key : FEnglish.Keys(section)) {
      const std::string* english = FEnglish.Text(section, key);
      const std::string* text = FFile.Text(section, key);
      ASSERT_TRUE(english != nullptr && text != nullptr) << section << " " << key;
      EXPECT_FALSE(text->empty()) << section << " " << key;
      EXPECT_EQ(PlaceHolders(*text), PlaceHolders(*english)) << section << " " << key;
      const std::string* type = FEnglish.Value(section, key, "Type");
      EXPECT_EQ(FFile.Value(section, key, "Type") == nullptr, type == nullptr) << section << " " << key;
      if (type != nullptr) {
        EXPECT_THAT(FFile.Value(section, key, "Type"), Pointee(*type)) << key;
      }
    }
  }
}

// A drop-down choice is found again by its text and a column of the column dialog by its caption, so a text
// that two keys share would pick the wrong one.
TEST_P(ShippedLanguages, GivesEveryResourceATextOfItsOwnUnlessTwoMeanTheSame) {
  const std::map<std::string, std::string> sharedOnPurpose = {{"Res_Precision_FxRatio", "Res_FxRatio"},
                                                              {"Res_Principal_N", "Res_OpenClose_N"},
                                                              {"Res_Principal_C", "Res_Client"}};
  std::map<std::string, std::string> keyOfText;
  for (const std::string& key : FFile.Keys("Resource")) {
    const auto [first, isNew] = keyOfText.emplace(*FFile.Text("Resource", key), key);
    if (isNew) continue;
    const auto allowed = sharedOnPurpose.find(key);
    EXPECT_TRUE(allowed != sharedOnPurpose.end() && allowed->second == first->second)
        << key << " and " << first->second << " both read " << first->first;
  }
}

TEST_P(ShippedLanguages, NamesTheRiskLevelsTheCurrenciesAndTheTypedCustomColumns) {
  EXPECT_THAT(FFile.Keys("RPQLevel"), ElementsAre("1", "2", "3", "4", "5"));
  for (const std::string_view currency : {"HKD", "CNY", "USD", "EUR", "GBP", "JPY"}) {
    EXPECT_NE(FFile.Text("Currency", currency), nullptr) << currency;
  }
  ASSERT_FALSE(FFile.Keys("Columns_AccountInfo").empty());
  for (const std::string& key : FFile.Keys("Columns_AccountInfo")) {
    EXPECT_TRUE(std::ranges::all_of(key, [](char digit) { return digit >= '0' && digit <= '9'; })) << key;
    EXPECT_NE(FFile.Value("Columns_AccountInfo", key, "Type"), nullptr) << key;
  }
}

INSTANTIATE_TEST_SUITE_P(All, ShippedLanguages, testing::Values("ENG", "CHS", "ZHH"),
                         [](const auto& instance) { return instance.param; });

}  // namespace
}  // namespace margindesk
