#include "terminal/session/BookFile.h"

#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "host/book/Book.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Locations.h"

namespace margindesk {

namespace {

namespace fs = std::filesystem;

// The name under which a book is made, and what the store may leave beside it; all gone with this object.
class TDraft {
 public:
  explicit TDraft(fs::path file) : FFile(std::move(file)) {
    FFile += ".new-" + std::to_string(::getpid());
    Remove();
  }
  ~TDraft() { Remove(); }
  TDraft(const TDraft&) = delete;
  TDraft& operator=(const TDraft&) = delete;

  const fs::path& File() const noexcept { return FFile; }

 private:
  void Remove() const noexcept {
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
      std::error_code ignored;
      fs::remove(FFile.native() + suffix, ignored);
    }
  }

  fs::path FFile;
};

// Brings the names in a directory to the disk.
void SyncDirectory(const fs::path& directory) {
  const int handle = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

}  // namespace

bool MakeBookFile(const fs::path& file, const fs::path& csvDirectory) {
  const fs::path directory = fs::absolute(file).parent_path();
  MakePrivateDirectory(directory);
  const TDraft draft(file);
  TBook(draft.File(), TStoreMode::kCreate).Import(csvDirectory);
  std::error_code error;
  // A link never takes the place of a book that another program made meanwhile, as a rename would.
  fs::create_hard_link(draft.File(), file, error);
  if (error && !fs::exists(file)) fs::rename(draft.File(), file, error);
  if (error && fs::exists(file)) return false;
  if (error) throw TCliError("cannot make the book " + file.string() + ": " + error.message());
  SyncDirectory(directory);
  return true;
}

}  // namespace margindesk
