#include "host/services/LocalFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace margindesk {

namespace {

class TDescriptor {
 public:
  explicit TDescriptor(int descriptor) : FDescriptor(descriptor) {}
  ~TDescriptor() {
    if (FDescriptor >= 0) ::close(FDescriptor);
  }
  TDescriptor(const TDescriptor&) = delete;
  TDescriptor& operator=(const TDescriptor&) = delete;

  int Get() const { return FDescriptor; }

 private:
  const int FDescriptor;
};

std::string LastReason() { return std::generic_category().message(errno); }

bool WriteAll(int descriptor, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t count = ::write(descriptor, contents.data(), contents.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    contents.remove_prefix(static_cast<std::size_t>(count));
  }
  return ::fsync(descriptor) == 0;
}

}  // namespace

std::optional<std::string> ReadLocalFile(const std::string& fileName, std::int64_t limit,
                                         std::string& reason) {
  const TDescriptor file(::open(fileName.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (file.Get() < 0 || ::fstat(file.Get(), &status) != 0) {
    reason = LastReason();
    return std::nullopt;
  }
  if (!S_ISREG(status.st_mode)) {
    reason = "not a file";
    return std::nullopt;
  }
  std::string contents;
  std::array<char, 65536> part;
  for (;;) {
    const ssize_t count = ::read(file.Get(), part.data(), part.size());
    if (count < 0) {
      if (errno == EINTR) continue;
      reason = LastReason();
      return std::nullopt;
    }
    if (count == 0) return contents;
    contents.append(part.data(), static_cast<std::size_t>(count));
    if (static_cast<std::int64_t>(contents.size()) > limit) {
      reason = TooLarge(limit);
      return std::nullopt;
    }
  }
}

bool WriteLocalFile(const std::string& fileName, const std::string& contents, std::string& reason) {
  std::FILE* const file = std::fopen(fileName.c_str(), "wxb");
  if (file == nullptr) {
    reason = LastReason();
    return false;
  }
  const bool written = std::fwrite(contents.data(), 1, contents.size(), file) == contents.size();
  if (std::fclose(file) == 0 && written) return true;
  reason = LastReason();
  std::remove(fileName.c_str());
  return false;
}

bool ReplaceLocalFile(const std::string& fileName, const std::string& contents, std::string& reason) {
  const std::filesystem::path path(fileName);
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  // Beside the old file, so that the renaming stays within one file system.
  std::string temporary = folder / ("." + path.filename().string() + ".XXXXXX");
  const TDescriptor inFolder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  const TDescriptor file(inFolder.Get() < 0 ? -1 : ::mkostemp(temporary.data(), O_CLOEXEC));
  if (file.Get() < 0) {
    reason = LastReason();
    return false;
  }
  if (!WriteAll(file.Get(), contents) || ::rename(temporary.c_str(), fileName.c_str()) != 0) {
    reason = LastReason();
    ::unlink(temporary.c_str());
    return false;
  }
  if (::fsync(inFolder.Get()) == 0) return true;
  reason = LastReason();
  return false;
}

std::string TooLarge(std::int64_t limit) { return "larger than " + std::to_string(limit) + " bytes"; }

}  // namespace margindesk
