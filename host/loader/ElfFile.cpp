#include "host/loader/ElfFile.h"

#include <cstring>
#include <fstream>
#include <system_error>
#include <vector>

#include <elf.h>

namespace margindesk {

namespace {

template <class T>
bool ReadAt(std::ifstream& in, std::uint64_t offset, T* values, std::size_t count) {
  in.seekg(static_cast<std::streamoff>(offset));
  in.read(reinterpret_cast<char*>(values), static_cast<std::streamsize>(sizeof(T) * count));
  return static_cast<bool>(in);
}

}  // namespace

std::string FindLibraryFault(const std::filesystem::path& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) return "there is no such file";
  if (!std::filesystem::is_regular_file(status)) return "it is no regular file";
  const std::uint64_t size = std::filesystem::file_size(file, error);
  std::ifstream in(file, std::ios::binary);
  if (error || !in) return "it cannot be read";

  Elf64_Ehdr header{};
  if (size < sizeof(header) || !ReadAt(in, 0, &header, 1) ||
      std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
    return "it is no library";
  }
  if (header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_type != ET_DYN ||
      header.e_phentsize != sizeof(Elf64_Phdr)) {
    return "it is no library for this machine";
  }
  constexpr const char* kCutShort = "it is cut short";
  const auto isInside = [size](std::uint64_t offset, std::uint64_t length) {
    return offset <= size && length <= size - offset;
  };
  // The table of sections is the last part of a library.
  if (!isInside(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize)) return kCutShort;
  std::vector<Elf64_Phdr> segments(header.e_phnum);
  if (!ReadAt(in, header.e_phoff, segments.data(), segments.size())) return kCutShort;
  for (const Elf64_Phdr& segment : segments) {
    if (segment.p_type == PT_LOAD && !isInside(segment.p_offset, segment.p_filesz)) return kCutShort;
  }
  return {};
}

}  // namespace margindesk
