#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace margindesk {

struct TWorkspaceView {
  std::string FClass;
  std::string FGroup;
  std::string FLayout;  // any bytes, as are the other two

  friend bool operator==(const TWorkspaceView&, const TWorkspaceView&) = default;
};

using TWorkspace = std::vector<TWorkspaceView>;  // in the order of opening

// A workspace that cannot be read or written; the text is one line, "file: reason".
class TWorkspaceError : public std::runtime_error {
 public:
  TWorkspaceError(const std::string& text, bool damaged) : std::runtime_error(text), FDamaged(damaged) {}

  // The file is there and could be read, but is no workspace of this version.
  bool IsDamaged() const noexcept { return FDamaged; }

 private:
  bool FDamaged;
};

// Workspaces by name, a file NAME.json each in one folder, which is made with the first of them. A file is
// replaced as a whole or not at all, whenever the process or the machine stops.
//
// A name has 1 to 100 bytes of UTF-8 without control characters, "/" and "\", and begins with neither a dot
// nor a blank.
class TWorkspaceStore {
 public:
  explicit TWorkspaceStore(std::filesystem::path folder) : FFolder(std::move(folder)) {}

  static bool IsName(const std::string& name);

  // Throws TWorkspaceError; the file that was there is then as it was.
  void Save(const std::string& name, const TWorkspace& workspace) const;
  TWorkspace Load(const std::string& name) const;  // throws TWorkspaceError
  std::vector<std::string> List() const;           // in ascending order; empty while there is no folder

  // Renames a damaged workspace to NAME.damaged-N with the first N from 1 that is free, and answers the new
  // name. Throws TWorkspaceError when that fails.
  std::string SetAside(const std::string& name) const;

 private:
  std::filesystem::path FileOf(const std::string& name) const;

  std::filesystem::path FFolder;
};

}  // namespace margindesk
