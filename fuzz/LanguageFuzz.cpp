// Any text as a language file: it is refused with its place, or its texts can be written as a file that says
// the same.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/FuzzHost.h"
#include "host/services/LanguageFile.h"

namespace {

using namespace margindesk;

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\n') {
      escaped += "\\n";
    } else if (c == ' ') {
      escaped += "\\s";
    } else {
      if (c == '\\') escaped += c;
      escaped += c;
    }
  }
  return escaped;
}

std::string Write(const TLanguageFile& file) {
  std::string written;
  for (const std::string& section : file.Sections()) {
    written.append("[").append(section).append("]\n");
    for (const std::string& key : file.Keys(section)) {
      Require(!key.empty() && key.find_first_of(".=") == std::string::npos, "not a key");
      if (const std::string* text = file.Text(section, key))
        written.append(key).append("=").append(Escaped(*text)).append("\n");
    }
  }
  return written;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string written;
  try {
    written = Write(TLanguageFile::Parse({reinterpret_cast<const char*>(data), size}, "file"));
  } catch (const TLanguageFileError& error) {
    Require(std::string_view(error.what()).starts_with("file:"), "a refusal without a place");
    return 0;
  }
  Require(Write(TLanguageFile::Parse(written, "file")) == written, "the texts have changed when read again");
  return 0;
}
