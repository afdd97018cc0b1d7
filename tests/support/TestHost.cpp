#include "tests/support/TestHost.h"

#include <gtest/gtest.h>

namespace margindesk {

namespace {

TReferenceHostOptions MakeOptions(const std::shared_ptr<TUiLoop::TTimePoint>& now) {
  TReferenceHostOptions options;
  options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
  options.FUser = "tester";
  options.FClock = [now] { return *now; };
  return options;
}

void FailOnFault(std::string_view what) { ADD_FAILURE() << "a handler threw: " << what; }

}  // namespace

TTestHost::TTestHost(const TTestBook& book) : TTestHost(book, std::make_shared<TUiLoop::TTimePoint>()) {}

TTestHost::TTestHost(const TTestBook& book, const TNow& now)
    : TReferenceHost(book.Contents(), MakeOptions(now)),
      FNow(now),
      FPreviousSink(SetHandlerFaultSink(&FailOnFault)) {
  MessageBox().SetSink([this](std::string_view text) { FMessages.emplace_back(text); });
}

TTestHost::~TTestHost() {
  EXPECT_EQ(CountRegistrations(), 0U) << "registrations outlive what made them";
  SetHandlerFaultSink(FPreviousSink);
}

void TTestHost::Configure(std::string_view key, std::string_view value) {
  Config().WriteString(Config().GetUserSection(), key, value, true);
}

void TTestHost::RunLoop() {
  while (Loop().RunOnce()) {
  }
}

void TTestHost::Advance(std::chrono::milliseconds time) {
  *FNow += time;
  RunLoop();
}

void TTestHost::AnswerQuestions(bool yes) {
  MessageBox().SetPolicy([yes](std::string_view) { return yes; });
}

}  // namespace margindesk
