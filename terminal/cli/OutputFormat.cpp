#include "terminal/cli/OutputFormat.h"

#include <CLI/CLI.hpp>

namespace margindesk {

void TFormatOption::AddTo(CLI::App& app) {
  app.add_option("--format", FName, "How to show it: text, json or csv (default: text)")
      ->option_text("text|json|csv")
      ->check(CLI::IsMember({"text", "json", "csv"}));
}

TOutputFormat TFormatOption::Get() const {
  if (FName == "json") return TOutputFormat::kJson;
  return FName == "csv" ? TOutputFormat::kCsv : TOutputFormat::kText;
}

}  // namespace margindesk
