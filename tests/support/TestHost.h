#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/services/ReferenceHost.h"
#include "tests/support/TestBook.h"

namespace margindesk {

// A reference host over a little book, installed for as long as it lives: a configuration in memory, the
// English texts, a clock that stands still until it is moved, and messages that are kept instead of shown.
//
// A handler that throws fails the test, and so does a registration that is still there when the host goes.
class TTestHost : public TReferenceHost {
 public:
  explicit TTestHost(const TTestBook& book = TTestBook());
  ~TTestHost();

  // Writes a setting of the user's section and notifies its handlers.
  void Configure(std::string_view key, std::string_view value);

  // Runs turns of the loop until nothing is left to do now; publishes what changed.
  void RunLoop();
  void Advance(std::chrono::milliseconds time);  // moves the clock, then runs the loop

  const std::vector<std::string>& Messages() const noexcept { return FMessages; }  // and questions, in order
  void AnswerQuestions(bool yes);

 private:
  using TNow = std::shared_ptr<TUiLoop::TTimePoint>;

  TTestHost(const TTestBook& book, const TNow& now);

  TNow FNow;
  std::vector<std::string> FMessages;
  THandlerFaultSink FPreviousSink;
};

}  // namespace margindesk
