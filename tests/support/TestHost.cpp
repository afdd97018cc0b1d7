#include "tests/support/TestHost.h"

#include <gtest/gtest.h>

namespace margindesk {

namespace {

TReferenceHostOptions MakeOptions() {
  TReferenceHostOptions options;
  options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
  options.FUser = "tester";
  options.FClock = [] { return TUiLoop::TTimePoint(); };
  return options;
}

void FailOnFault(std::string_view what, const void* /*owner*/) {
  ADD_FAILURE() << "a handler threw: " << what;
}

}  // namespace

TTestHost::TTestHost(const THostContents& contents)
    : TReferenceHost(contents, MakeOptions()), FPreviousSink(SetHandlerFaultSink(&FailOnFault)) {
  MessageBox().SetSink([this](std::string_view text) { FMessages.emplace_back(text); });
}

TTestHost::~TTestHost() {
  EXPECT_EQ(CountRegistrations(), 0U) << "registrations outlive what made them";
  SetHandlerFaultSink(FPreviousSink);
}

void TTestHost::RunLoop() {
  while (Loop().RunOnce()) {
  }
}

}  // namespace margindesk
