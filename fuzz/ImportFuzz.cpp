// Any texts as the files of a book: the import takes all of them or leaves the book as it was. A line
// "@accounts.csv" begins a file; files that the input does not name are those of the smallest book.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>

#include <unistd.h>

#include "fuzz/FuzzHost.h"
#include "host/book/Book.h"

namespace {

using namespace margindesk;
namespace fs = std::filesystem;

using TTexts = std::map<std::string, std::string, std::less<>>;

// The folders of this process, gone at its end.
struct TFolders {
  TFolders() { fs::create_directories(FImport); }
  ~TFolders() { fs::remove_all(FRoot); }
  const fs::path FRoot = fs::temp_directory_path() / ("margindesk-fuzz-" + std::to_string(getpid()));
  const fs::path FImport = FRoot / "import";
  const fs::path FExport = FRoot / "export";
};

TTexts SmallestBook() {
  return {{"currencies.csv", "currency,ratio,excluded,base\nHKD,1,N,Y\n"},
          {"accounts.csv",
           "account,name,user,type,master,master_type,margin_type,mobile,email,status_flags,bod_update_time,"
           "margin_class,day_trade_status,online,position_isolation,margin_method\n"
           "M1,,,,,1,1,,,0,,,0,N,,\n"}};
}

// Makes the folder hold the texts and nothing else.
void Write(const fs::path& folder, const TTexts& texts) {
  for (const auto& entry : fs::directory_iterator(folder)) fs::remove(entry);
  for (const auto& [name, text] : texts) std::ofstream(folder / name, std::ios::binary) << text;
}

TTexts Export(TBook& book, const fs::path& folder) {
  book.Export(folder);
  TTexts texts;
  for (const auto& entry : fs::directory_iterator(folder)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    texts[entry.path().filename()] = {std::istreambuf_iterator<char>(stream), {}};
  }
  return texts;
}

TTexts Split(std::string_view input) {
  TTexts texts = SmallestBook();
  for (std::size_t begin = input.find('@'); begin != std::string_view::npos;) {
    const std::size_t next = input.find("\n@", begin);
    const std::string_view part = input.substr(begin + 1, next - begin);
    const std::size_t line = std::min(part.find('\n'), part.size());
    for (const TBookTable& table : kBookTables)
      if (part.substr(0, line) == std::string(table.FName) + ".csv")
        texts[std::string(part.substr(0, line))] = part.substr(std::min(line + 1, part.size()));
    begin = next == std::string_view::npos ? next : next + 1;
  }
  return texts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TFolders folders;
  static TBook book(folders.FRoot / "book.db", TStoreMode::kCreate);
  static TTexts before = Export(book, folders.FExport);  // an empty book, and then what was taken last
  Write(folders.FImport, Split({reinterpret_cast<const char*>(data), size}));
  try {
    book.Import(folders.FImport);
  } catch (const TBookError&) {
    Require(Export(book, folders.FExport) == before, "a refused import has changed the book");
    return 0;
  }
  Require(book.Check().empty(), "the import has taken what the check refuses");
  before = Export(book, folders.FExport);
  book.Import(folders.FExport);
  Require(Export(book, folders.FExport) == before, "an export has changed on its way back");
  return 0;
}
