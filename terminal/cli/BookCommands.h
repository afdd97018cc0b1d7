#pragma once

#include <string>

#include "terminal/cli/Command.h"

namespace margindesk {

// Replaces the book's contents by CSV files, or makes the book of them.
class TBookImportCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "book import"; }
  std::string_view GetHelp() const override { return "Replace the book by the CSV files of a directory"; }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FDirectory;
};

// Writes the book as CSV files.
class TBookExportCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "book export"; }
  std::string_view GetHelp() const override { return "Write the book into a directory, a CSV file a table"; }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FDirectory;
};

// Looks for faults in the stored book.
class TBookCheckCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "book check"; }
  std::string_view GetHelp() const override {
    return "List what is wrong with the book; exit code 1 if anything is";
  }
  void AddOptions(CLI::App& /*app*/) override {}
  int Run(TSession& session, std::ostream& out) override;
};

}  // namespace margindesk
