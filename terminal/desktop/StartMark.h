#pragma once

#include <filesystem>
#include <string>

namespace margindesk {

// The mark of a package that is being loaded: a file that names it, written before and removed after. One
// that is still there at the start names the package under which the terminal died.
class TStartMark {
 public:
  explicit TStartMark(std::filesystem::path file) : FFile(std::move(file)) {}

  std::string Read() const;  // the package that was left named; "" for none

  // A mark that cannot be written is no reason not to load: the next start then asks nothing.
  void Set(const std::filesystem::path& package) const;
  void Clear() const;

 private:
  const std::filesystem::path FFile;
};

}  // namespace margindesk
