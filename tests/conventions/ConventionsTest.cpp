#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/conventions/IncludeRules.h"
#include "tools/conventions/ResourceKeys.h"
#include "tools/conventions/SourceLists.h"
#include "tools/conventions/SourceTree.h"

namespace margindesk {
namespace {

using testing::HasSubstr;

// The whole tree, read once.
const std::vector<TSourceFile>& Tree() {
  static const auto tree = ReadTree(MARGINDESK_SOURCE_DIR, {".h", ".cpp", "CMakeLists.txt"});
  return tree;
}

std::vector<TSourceFile> Sources() {
  std::vector<TSourceFile> sources = Tree();
  std::erase_if(sources, [](const TSourceFile& file) { return file.FPath.ends_with(".txt"); });
  return sources;
}

// What people may see the texts of: all but the tests, which make up keys of their own.
std::vector<TSourceFile> ShippedSources() {
  std::vector<TSourceFile> sources = Sources();
  std::erase_if(sources, [](const TSourceFile& file) {
    return file.FPath.starts_with("tests/") || file.FPath.starts_with("bench/") ||
           file.FPath.starts_with("fuzz/");
  });
  return sources;
}

std::vector<TSourceFile> Languages() {
  return ReadTree(std::string(MARGINDESK_SOURCE_DIR) + "/resources/languages", {".ini"});
}

// Expects one finding, in that file and line, whose reason holds `reason`.
void ExpectOne(const std::vector<TFinding>& findings, const std::string& file, std::size_t line,
               const std::string& reason) {
  ASSERT_EQ(findings.size(), 1U) << Describe(findings);
  EXPECT_EQ(findings[0].FFile, file);
  EXPECT_EQ(findings[0].FLine, line);
  EXPECT_THAT(findings[0].FReason, HasSubstr(reason));
}

TEST(Includes, KeepToTheTableInTheWholeTree) {
  const auto sources = Sources();
  ASSERT_FALSE(sources.empty());
  const auto findings = CheckIncludes(sources);
  EXPECT_TRUE(findings.empty()) << Describe(findings);
}

TEST(Includes, AreRefusedWhereTheTableForbidsThem) {
  const std::vector<TSourceFile> targets = {{"accountinfo/data/Figures.h", ""}, {"host/book/Book.h", ""},
                                            {"terminal/cli/Tree.h", ""},        {"tests/Tools.h", ""},
                                            {"model/contract/Code.h", ""},      {"controls/Edit.h", ""}};
  struct TCase {
    std::string FFile;
    std::string FInclude;
  };
  const std::vector<TCase> forbidden = {
      {"model/A.cpp", "\"host/book/Book.h\""},
      {"model/A.cpp", "\"accountinfo/data/Figures.h\""},
      {"controls/A.h", "<sqlite3.h>"},
      {"controls/A.h", "<QWidget>"},
      {"accountinfo/A.cpp", "\"host/book/Book.h\""},
      {"accountinfo/A.cpp", "<nlohmann/json.hpp>"},
      {"marginsim/A.cpp", "<unistd.h>"},
      {"plugin/A.cpp", "<curl/curl.h>"},
      {"forms/A.cpp", "\"terminal/cli/Tree.h\""},
      {"host/book/A.cpp", "\"accountinfo/data/Figures.h\""},
      {"host/book/A.cpp", "<nlohmann/json.hpp>"},
      {"host/framework/A.cpp", "\"terminal/cli/Tree.h\""},
      {"host/services/A.cpp", "<CLI/CLI.hpp>"},
      {"host/services/A.cpp", "<QtCore/QString>"},
      {"terminal/cli/A.cpp", "<QApplication>"},
      {"terminal/cli/A.cpp", "\"accountinfo/data/Figures.h\""},
      {"terminal/desktop/A.cpp", "\"terminal/cli/Tree.h\""},
      {"terminal/desktop/A.cpp", "\"accountinfo/data/Figures.h\""},
      {"host/book/A.cpp", "\"tests/Tools.h\""},
      {"host/book/A.cpp", "<gtest/gtest.h>"},
  };
  for (const TCase& example : forbidden) {
    SCOPED_TRACE(example.FFile + " " + example.FInclude);
    auto sources = targets;
    sources.push_back({example.FFile, "#pragma once\n\n # include  " + example.FInclude + "  // why\n"});
    ExpectOne(CheckIncludes(sources), example.FFile, 3, "may not include " + example.FInclude);
  }
}

TEST(Includes, AreAllowedWhereTheTableAllowsThem) {
  const std::vector<TSourceFile> sources = {
      {"model/Code.h", "#include <string_view>\n"},
      {"accountinfo/Figures.h", "#include \"model/Code.h\"\n"},
      {"host/book/Book.h", "#include <sqlite3.h>\n#include <sys/stat.h>\n#include \"model/Code.h\"\n"},
      {"terminal/cli/A.cpp", "#include <CLI/CLI.hpp>\n#include \"host/book/Book.h\"\n"},
      {"terminal/desktop/A.cpp", "#include <QWidget>\n"},
      {"tests/A.cpp",
       "#include <gtest/gtest.h>\n#include \"accountinfo/Figures.h\"\n#include \"host/book/Book.h\"\n"},
  };
  EXPECT_EQ(Describe(CheckIncludes(sources)), "");
}

TEST(Includes, AreRefusedWhenNobodyKnowsWhatTheyReach) {
  ExpectOne(CheckIncludes({{"host/A.cpp", "#include \"Neighbour.h\"\n"}, {"host/Neighbour.h", ""}}),
            "host/A.cpp", 1, "paths begin at its root");
  ExpectOne(CheckIncludes({{"host/A.cpp", "#include \"host/Missing.h\"\n"}}), "host/A.cpp", 1, "is no file");
  ExpectOne(CheckIncludes({{"tests/A.cpp", "#include <boost/any.hpp>\n"}}), "tests/A.cpp", 1, "is unknown");
  ExpectOne(CheckIncludes({{"host/A.cpp", "#include HEADER\n"}}), "host/A.cpp", 1, "names no header");
  ExpectOne(CheckIncludes({{"elsewhere/A.cpp", ""}}), "elsewhere/A.cpp", 1, "its folder is in no row");
}

TEST(ResourceKeys, OfTheWholeTreeHaveATextInEveryLanguage) {
  const auto languages = Languages();
  ASSERT_EQ(languages.size(), 3U);
  const auto findings = CheckKeysAreTranslated(ShippedSources(), languages);
  EXPECT_TRUE(findings.empty()) << Describe(findings);
}

TEST(ResourceKeys, AreTheSameInEveryLanguage) {
  const auto findings = CheckLanguagesAgree(Languages());
  EXPECT_TRUE(findings.empty()) << Describe(findings);
}

TEST(ResourceKeys, AreRefusedWhenALanguageLacksThemInTheirSection) {
  const std::vector<TSourceFile> languages = {
      {"ENG.ini", "[Resource]\nRes_Here=Here\nDC1001=Wrong section\n[ErrorCode]\nDCBOND003=Bond\n"},
      {"CHS.ini", "[Resource]\nRes_Here=\xE5\x9C\xA8\n[ErrorCode]\nDC1001=Right section\n"}};
  const auto check = [&](const std::string& text) {
    return CheckKeysAreTranslated({{"A.cpp", text}}, languages);
  };

  EXPECT_EQ(Describe(check("Show(\"Res_Here\");\n")), "");
  ExpectOne(check("char quote = '\"';\nShow(\"DCBOND003\");\n"), "A.cpp", 2,
            "CHS.ini lacks DCBOND003 in [ErrorCode]");
  ExpectOne(check("int n = 1'000;\nShow(\"a \\\" b\", \"DC1001\");\n"), "A.cpp", 2, "ENG.ini lacks DC1001");
  ExpectOne(check("Show(R\"x(\n)\" \"Res_Here\n)x\");\nAsk(\"Res_\" + key);"), "A.cpp", 4,
            "must be written whole");
  EXPECT_EQ(Describe(check("return key.starts_with(\"Res_\");\n")), "");
  EXPECT_EQ(check("Ask(\"10,res_here,80\");").size(), 2U) << "letter case counts, in every language";
  EXPECT_EQ(Describe(check("// \"Res_Gone\"\n/* \"Res_Gone\" */ int Res_Gone; // it's \"Res_Gone\"\n")), "");
}

TEST(ResourceKeys, AreRefusedWhenTheLanguageFilesDisagreeOrCannotBeRead) {
  const auto check = [](const std::string& other) {
    return CheckLanguagesAgree({{"ENG.ini", "; comment\n\n[Resource]\nRes_A=A\n"}, {"CHS.ini", other}});
  };
  EXPECT_EQ(Describe(check("[Resource]\nRes_A=\n")), "");
  ExpectOne(check("[Resource]\n"), "ENG.ini", 4, "CHS.ini lacks Res_A in [Resource]");
  ExpectOne(check("[Resource]\nRes_A=A\nRes_B=B\n"), "CHS.ini", 3, "ENG.ini lacks Res_B in [Resource]");
  ExpectOne(check("[Resource]\nRes_A=A\nRes_A=B\n"), "CHS.ini", 3, "stands twice");
  ExpectOne(check("[Resource]\nRes_A=A\nRes_B\n"), "CHS.ini", 3, "is neither");
  ExpectOne(check("Res_B=B\n[Resource]\nRes_A=A\n"), "CHS.ini", 1, "is neither");
  ExpectOne(check("[Resource]\nRes_A=\xC3\n"), "CHS.ini", 2, "is not UTF-8");
  EXPECT_EQ(check("[ErrorCode]\nRes_A=A\n").size(), 2U) << "a key of another section is another key";
}

TEST(SourceLists, NameEverySourceOfTheTree) {
  const auto findings = CheckSourceLists(Tree());
  EXPECT_TRUE(findings.empty()) << Describe(findings);
}

TEST(SourceLists, AreRefusedWhenASourceOrAFolderIsNotNamedAbove) {
  const TSourceFile top{"CMakeLists.txt", "add_subdirectory(host)\n"};
  EXPECT_EQ(
      Describe(CheckSourceLists({top,
                                 {"host/CMakeLists.txt", "add_library(host\n  Book.cpp book/Store.cpp)"},
                                 {"host/Book.cpp", ""},
                                 {"host/book/Store.cpp", ""}})),
      "");
  ExpectOne(CheckSourceLists({top,
                              {"host/CMakeLists.txt", "add_library(host NoteBook.cpp) # Book.cpp\n"},
                              {"host/Book.cpp", ""}}),
            "host/Book.cpp", 1, "host/CMakeLists.txt does not name Book.cpp");
  ExpectOne(CheckSourceLists({{"CMakeLists.txt", "add_library(all host/Book.cpp)"}, {"host/Book.cpp", ""}}),
            "host/Book.cpp", 1, "no folder above it has a CMakeLists.txt");
  ExpectOne(CheckSourceLists({top, {"bench/speed/CMakeLists.txt", ""}}), "bench/speed/CMakeLists.txt", 1,
            "CMakeLists.txt does not name bench/speed");
  ExpectOne(CheckSourceLists({top, {"host/CMakeLists.txt", "# book\n"}, {"host/book/CMakeLists.txt", ""}}),
            "host/book/CMakeLists.txt", 1, "host/CMakeLists.txt does not name book");
}

}  // namespace
}  // namespace margindesk
