#include "terminal/desktop/StartMark.h"

#include <fstream>

namespace margindesk {

std::string TStartMark::Read() const {
  std::ifstream in(FFile);
  std::string package;
  std::getline(in, package);
  return package;
}

void TStartMark::Set(const std::filesystem::path& package) const {
  std::ofstream(FFile, std::ios::trunc) << package.string() << '\n';
}

void TStartMark::Clear() const {
  std::error_code ignored;
  std::filesystem::remove(FFile, ignored);
}

}  // namespace margindesk
