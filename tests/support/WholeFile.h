#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace margindesk {

inline std::string ReadWholeFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

inline void WriteWholeFile(const std::filesystem::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

}  // namespace margindesk
