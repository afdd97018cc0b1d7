#include <set>

#include <gmock/gmock.h>

#include "host/framework/HostFunctions.h"
#include "model/contract/Constdef.h"
#include "model/contract/Icommon.h"

namespace margindesk {
namespace {

class TConnectedHost : public THostFunctions {
 public:
  bool IsChinaConnectOn() const override { return true; }
  bool IsChinaConnectExchange(TCode exchange) const override { return exchange == TCode("SHSE"); }
  TCode GetChinaConnectAccount(TCode account) const override { return TCode(account.Text() + "-CC"); }
  bool OpenCustomView(void* sender, std::int32_t viewID, std::int32_t number, const TBaseData*, bool flag1,
                      bool flag2) override {
    return sender == this && viewID == kViewPositionDetail && number == 1 && flag1 && !flag2;
  }
  void SendViewNotify(TFrame* view, std::int32_t code) override { FNotified.emplace_back(view, code); }

  std::vector<std::pair<TFrame*, std::int32_t>> FNotified;
};

TEST(HostFunctions, AskTheHostThatIsInstalled) {
  TConnectedHost host;
  TFrame frame(nullptr);
  {
    const TServiceScope<THostFunctions> scope(host);
    EXPECT_TRUE(IsChinaConnectOn());
    EXPECT_TRUE(IsChinaConnectExchange(TCode("SHSE")));
    EXPECT_FALSE(IsChinaConnectExchange(TCode("HKEX")));
    EXPECT_EQ(GetChinaConnectAccount(TCode("A1001")), TCode("A1001-CC"));
    EXPECT_TRUE(OpenCustomView(&host, kViewPositionDetail, 1, nullptr, true, false));
    SendViewNotify(&frame, kViewLayoutChanged);
  }
  EXPECT_THAT(host.FNotified, testing::ElementsAre(std::pair(&frame, kViewLayoutChanged)));
}

TEST(HostFunctions, AnswerFalseAndNothingWithoutAHost) {
  EXPECT_FALSE(IsChinaConnectOn());
  EXPECT_FALSE(IsChinaConnectExchange(TCode("SHSE")));
  EXPECT_TRUE(GetChinaConnectAccount(TCode("A1001")).IsEmpty());
  EXPECT_FALSE(OpenCustomView(nullptr, kViewPositionDetail, 1, nullptr, true, false));
  EXPECT_NO_FATAL_FAILURE(SendViewNotify(nullptr, kViewLayoutChanged));
}

TEST(NewGUID, IsARandomIdentifierOfTheFourthVersionAndNeverTheSame) {
  std::set<std::string> seen;
  std::set<char> digits;
  for (int i = 0; i < 1000; ++i) {
    const std::string guid = CreateNewGUID();
    EXPECT_THAT(guid, testing::MatchesRegex(
                          "\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}"));
    EXPECT_TRUE(seen.insert(guid).second) << guid;
    for (const std::size_t place : {1U, 8U, 20U, 36U}) digits.insert(guid[place]);
  }
  EXPECT_EQ(digits.size(), 16U);
}

}  // namespace
}  // namespace margindesk
