#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

#include "terminal/cli/Json.h"

namespace margindesk {

// Reads the lines of a script that hold a step: blank ones and those that begin with "#" are passed over.
class TScriptReader {
 public:
  static constexpr std::size_t kLongestLine = std::size_t{32} << 20U;  // bytes; memory is finite

  explicit TScriptReader(std::istream& in) : FIn(in) {}

  // False at the end of the script.
  bool Next();

  const std::string& GetLine() const noexcept { return FLine; }
  std::size_t GetNumber() const noexcept { return FNumber; }  // of the line, from 1
  bool IsTooLong() const noexcept { return FTooLong; }        // and the line is what fits

 private:
  bool ReadLine();

  std::istream& FIn;
  std::string FLine;
  std::size_t FNumber = 0;
  bool FTooLong = false;
};

// The object on a line. Throws TScriptError, with the place in the line where it can tell one, for what is no
// JSON object, is no UTF-8, is nested deeper than any step or names a member twice.
TJson ParseScriptLine(std::string_view line);

}  // namespace margindesk
