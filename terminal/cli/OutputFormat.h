#pragma once

#include <string>

namespace CLI {
class App;
}

namespace margindesk {

enum class TOutputFormat { kText, kJson, kCsv };

// The option --format of a command that shows something.
class TFormatOption {
 public:
  void AddTo(CLI::App& app);
  TOutputFormat Get() const;

 private:
  std::string FName = "text";
};

}  // namespace margindesk
