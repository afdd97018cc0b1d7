#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace margindesk {

// The one exception of the book. what() is one line in the form "file:line:column: reason" where a CSV file
// is at fault (line is the physical line of the file, counted from 1; column is the column's name), and
// "file: reason" where the fault has no place in a file: a missing file, a store that cannot be opened, a
// change that breaks a rule of the book. Whatever throws it leaves the stored book as it was.
class TBookError : public std::runtime_error {
 public:
  TBookError(std::string_view file, std::string_view reason);
  TBookError(std::string_view file, std::size_t line, std::string_view column, std::string_view reason);
};

// Another program has changed the book since it was read.
class TBookChangedError : public TBookError {
 public:
  explicit TBookChangedError(std::string_view file);
};

// Text of unknown origin made fit for a message: in double quotes, on one line, with anything that is not
// printable written as \xNN, and cut after 40 bytes.
std::string QuotedForMessage(std::string_view text);

}  // namespace margindesk
