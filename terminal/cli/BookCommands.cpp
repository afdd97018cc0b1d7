#include "terminal/cli/BookCommands.h"

#include <CLI/CLI.hpp>

#include "host/book/Book.h"
#include "model/contract/Variant.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/session/BookFile.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

// "24 accounts, 73 figures, 105 positions": enough to see that it is the right book.
std::string CountRows(TBook& book) {
  std::string counts;
  for (const TTable table : {TTable::kAccounts, TTable::kFigures, TTable::kPositions}) {
    std::int64_t count = 0;
    for (TBookRows rows = book.Read(table); rows.Next();) ++count;
    if (!counts.empty()) counts += ", ";
    counts.append(IntegerToText(count)).append(" ").append(BookTable(table).FName);
  }
  return counts;
}

void AddDirectoryOption(CLI::App& app, std::string& directory, std::string help) {
  app.add_option("DIR", directory, std::move(help))->required();
}

}  // namespace

void TBookImportCommand::AddOptions(CLI::App& app) {
  AddDirectoryOption(app, FDirectory, "The directory with the CSV files");
}

int TBookImportCommand::Run(TSession& session, std::ostream& out) {
  const std::filesystem::path file = session.GetBookFile();
  const bool isNew = !std::filesystem::exists(file) && MakeBookFile(file, FDirectory);
  TBook book(file, TStoreMode::kCreate);  // an empty file becomes a book too
  if (!isNew) book.Import(FDirectory);
  out << "imported " << CountRows(book) << '\n';
  return kExitFine;
}

void TBookExportCommand::AddOptions(CLI::App& app) {
  AddDirectoryOption(app, FDirectory, "The directory for the CSV files, made where it is missing");
}

int TBookExportCommand::Run(TSession& session, std::ostream& out) {
  TBook& book = session.Book();
  book.Export(FDirectory);
  out << "exported " << CountRows(book) << '\n';
  return kExitFine;
}

int TBookCheckCommand::Run(TSession& session, std::ostream& out) {
  TBook& book = session.Book();
  const std::vector<TBookFinding> findings = book.Check();
  for (const TBookFinding& finding : findings) out << MakeOneLine(finding.Text()) << '\n';
  if (!findings.empty()) return kExitFault;
  out << "sound: " << CountRows(book) << '\n';
  return kExitFine;
}

}  // namespace margindesk
