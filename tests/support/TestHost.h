#pragma once

#include <string>
#include <vector>

#include "host/services/ReferenceHost.h"
#include "tests/support/TestBook.h"

namespace margindesk {

// A reference host over contents of a test's own, installed for as long as it lives: a configuration in
// memory, the English texts, a clock that stands still, and messages that are kept instead of shown.
//
// A handler that throws fails the test, and so does a registration that is still there when the host goes.
class TTestHost : public TReferenceHost {
 public:
  explicit TTestHost(const THostContents& contents = {});
  ~TTestHost();

  // Runs turns of the loop until nothing is left to do now; publishes what changed.
  void RunLoop();

  const std::vector<std::string>& Messages() const noexcept { return FMessages; }  // and questions, in order

 private:
  std::vector<std::string> FMessages;
  THandlerFaultSink FPreviousSink;
};

}  // namespace margindesk
