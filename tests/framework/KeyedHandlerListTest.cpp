#include <array>
#include <deque>
#include <memory>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "model/contract/Handlers.h"
#include "tests/framework/Listener.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyedHandlerList : public testing::Test {
 protected:
  TCallLog Notify(TCode key) {
    FLog.clear();
    FList->Notify(key, nullptr, nullptr);
    return FLog;
  }
  TCallLog NotifyOnce(const std::vector<TCode>& keys) {
    FLog.clear();
    FList->NotifyOnce(keys, nullptr, nullptr);
    return FLog;
  }

  const TCode kA{"A1001"};
  const TCode kB{"A1002"};
  const TCode kC{"A1003"};
  TCallLog FLog;
  std::unique_ptr<TKeyedHandlerList> FList = std::make_unique<TKeyedHandlerList>();
  TListener FTree{"tree", &FLog, {}};
  TListener FGrid{"grid", &FLog, {}};
};

TEST_F(KeyedHandlerList, AKeyKnowsItsOwnHandlersAndTheEmptyKeyNone) {
  FList->Register(kA, FTree.GetHandler(), &FTree);
  FList->Register(kB, FGrid.GetHandler(), &FGrid);
  FList->Register(kB, FTree.GetHandler(), &FTree);
  FList->Register(TCode(), FTree.GetHandler(), &FTree);
  EXPECT_EQ(FList->GetCount(), 3U);
  EXPECT_EQ(FList->GetCountOf(&FTree), 2U);
  EXPECT_THAT(Notify(kA), ElementsAre("tree"));
  EXPECT_THAT(Notify(kB), ElementsAre("grid", "tree"));
  EXPECT_THAT(Notify(TCode()), IsEmpty());
  EXPECT_THAT(Notify(kC), IsEmpty());

  FList->Unregister(kB, &FTree);
  EXPECT_THAT(Notify(kB), ElementsAre("grid"));
  EXPECT_TRUE(FList->HasKey(kA)) << "only the one key was named";
  FList->RemoveOwner(&FTree);
  EXPECT_FALSE(FList->HasKey(kA));
  FList->RemoveOwner(&FGrid);
  EXPECT_EQ(FList->GetCount(), 0U);
}

TEST_F(KeyedHandlerList, APreviousKeyMovesTheOwnersSubscriptionsInOneStep) {
  FList->Register(kA, FTree.GetHandler(), &FTree);
  FList->Register(kA, FTree.GetHandler(), &FTree);
  FList->Register(kA, FGrid.GetHandler(), &FGrid);
  FList->Register(kB, FTree.GetHandler(), &FTree, kA);
  EXPECT_THAT(Notify(kA), ElementsAre("grid")) << "every one of the owner's has left, nobody else's";
  EXPECT_THAT(Notify(kB), ElementsAre("tree"));

  FList->Register(kB, FTree.GetHandler(), &FTree, kB);
  EXPECT_THAT(Notify(kB), ElementsAre("tree")) << "moved to where it was";
  FList->Register(kC, FTree.GetHandler(), &FTree, kA);
  EXPECT_EQ(FList->GetCountOf(&FTree), 2U) << "there was nothing to end under the previous key";
  FList->Register(TCode(), FTree.GetHandler(), &FTree, kC);
  FList->Register(TCode(), FTree.GetHandler(), &FTree, kB);
  EXPECT_EQ(FList->GetCountOf(&FTree), 0U) << "an empty key only ends";
}

TEST_F(KeyedHandlerList, AMoveDuringAPassEndsThereAndWaitsWhereItGoes) {
  FList->Register(kA, FGrid.GetHandler(), &FGrid);
  FList->Register(kA, FTree.GetHandler(), &FTree);
  FGrid.FAction = [&] { FList->Register(kB, FTree.GetHandler(), &FTree, kA); };
  EXPECT_THAT(NotifyOnce({kA, kB}), ElementsAre("grid"));
  FGrid.FAction = nullptr;
  EXPECT_THAT(NotifyOnce({kA, kB}), ElementsAre("grid", "tree"));
}

TEST_F(KeyedHandlerList, NotifyOnceCallsEachHandlerAndOwnerTheFirstTimeItIsMet) {
  FList->Register(kA, FTree.GetHandler(), &FTree);
  FList->Register(kA, FTree.GetHandler(), &FTree);
  FList->Register(kB, FGrid.GetHandler(), &FGrid);
  FList->Register(kB, FTree.GetHandler(), &FTree);
  FList->Register(kC, FTree.GetHandler(), &FGrid);
  EXPECT_THAT(NotifyOnce({kC, kA, kB, kA}), ElementsAre("tree", "tree", "grid")) << "once an owner";
  EXPECT_THAT(NotifyOnce({kB, kA}), ElementsAre("grid", "tree"));
  EXPECT_THAT(NotifyOnce({}), IsEmpty());

  FGrid.FAction = [&] {
    FGrid.FAction = nullptr;
    FList->NotifyOnce({kB}, nullptr, nullptr);
  };
  EXPECT_THAT(NotifyOnce({kA, kB}), ElementsAre("tree", "grid", "grid", "tree"))
      << "a nested pass calls everybody again and leaves the outer one its memory";
}

TEST_F(KeyedHandlerList, TheKeysOfAPassMayGoWithTheList) {
  struct THost {
    std::vector<TCode> FKeys;
    TKeyedHandlerList FList;
  };
  auto host = std::make_unique<THost>();
  host->FKeys = {kA, kB, kC};
  for (const TCode key : host->FKeys) host->FList.Register(key, FTree.GetHandler(), &key);
  FTree.FAction = [&] { host.reset(); };
  host->FList.NotifyOnce(host->FKeys, nullptr, nullptr);
  EXPECT_THAT(FLog, ElementsAre("tree"));
}

// Random registrations, removals, moves and passes out of handlers out of handlers, beside the plainest model
// that keeps the promises: a pass copies what is registered when it starts.
class TRandomWorld {
 public:
  explicit TRandomWorld(unsigned seed) : FRandom(seed) {
    for (auto& visitor : FVisitors) visitor.FWorld = this;
  }

  void Run() {
    for (int step = 0; step < 60; ++step) Act();
    EXPECT_EQ(FList.GetCount(), CountLive());
    for (const int& owner : FOwners) FList.RemoveOwner(&owner);
    EXPECT_EQ(FList.GetCount(), 0U);
  }

 private:
  struct TVisitor {
    TRandomWorld* FWorld = nullptr;
    void Handle(void*, void*) { FWorld->OnCall(this); }
  };
  struct TRegistration {
    TCode FKey;
    TVisitor* FVisitor;
    const int* FOwner;
    bool FIsLive = true;
  };
  struct TPass {
    std::vector<TRegistration*> FDue;
    std::size_t FNext = 0;
    bool FOnce = false;
    std::set<std::pair<TVisitor*, const int*>> FCalled;
  };

  std::size_t Pick(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(FRandom);
  }

  // The next registration that the innermost pass must call, or null.
  TRegistration* NextDue() {
    TPass& pass = *FPasses.back();
    while (pass.FNext < pass.FDue.size()) {
      TRegistration* due = pass.FDue[pass.FNext++];
      if (!due->FIsLive) continue;
      if (!pass.FOnce || pass.FCalled.emplace(due->FVisitor, due->FOwner).second) return due;
    }
    return nullptr;
  }

  void OnCall(TVisitor* visitor) {
    const TRegistration* due = NextDue();
    ASSERT_NE(due, nullptr) << "called though nobody is due";
    EXPECT_EQ(due->FVisitor, visitor);
    for (std::size_t action = Pick(3); action > 0; --action) Act();
  }

  void Act() {
    const TCode key = FKeys[Pick(FKeys.size())];
    const int* owner = &FOwners[Pick(FOwners.size())];
    switch (Pick(6)) {
      case 0:
      case 1:
        return Register(key, owner, TCode());
      case 2:
        return Register(key, owner, FKeys[Pick(FKeys.size())]);
      case 3:
        FList.Unregister(key, owner);
        return End([&](const TRegistration& each) { return each.FKey == key && each.FOwner == owner; });
      case 4:
        if (Pick(3) != 0) return;
        FList.RemoveOwner(owner);
        return End([&](const TRegistration& each) { return each.FOwner == owner; });
      default:
        return Notify(key);
    }
  }

  void Register(TCode key, const int* owner, TCode previous) {
    if (CountLive() > 40) return;
    TVisitor* visitor = &FVisitors[Pick(FVisitors.size())];
    FList.Register(key, MakeHandler<&TVisitor::Handle>(visitor), owner, previous);
    End([&](const TRegistration& each) { return each.FKey == previous && each.FOwner == owner; });
    if (!key.IsEmpty()) FRegistrations.push_back({key, visitor, owner});
  }

  void Notify(TCode key) {
    if (FPasses.size() == 3) return;
    TPass pass;
    pass.FOnce = Pick(2) == 0;
    const std::vector<TCode> keys = pass.FOnce ? std::vector{key, FKeys[0], FKeys[1]} : std::vector{key};
    for (const TCode each : keys) {
      for (TRegistration& registration : FRegistrations) {
        if (registration.FIsLive && registration.FKey == each) pass.FDue.push_back(&registration);
      }
    }
    FPasses.push_back(&pass);
    if (pass.FOnce) {
      FList.NotifyOnce(keys, nullptr, nullptr);
    } else {
      FList.Notify(key, nullptr, nullptr);
    }
    EXPECT_EQ(NextDue(), nullptr) << "one that was due has not been called";
    FPasses.pop_back();
  }

  template <class TPredicate>
  void End(TPredicate isEnded) {
    for (TRegistration& each : FRegistrations) {
      if (isEnded(each)) each.FIsLive = false;
    }
  }

  std::size_t CountLive() const {
    std::size_t count = 0;
    for (const TRegistration& each : FRegistrations) count += each.FIsLive ? 1U : 0U;
    return count;
  }

  std::mt19937 FRandom;
  TKeyedHandlerList FList;
  std::array<TCode, 4> FKeys{TCode("K1"), TCode("K2"), TCode("K3"), TCode()};
  std::array<int, 3> FOwners{};
  std::array<TVisitor, 4> FVisitors;
  std::deque<TRegistration> FRegistrations;
  std::vector<TPass*> FPasses;
};

TEST(KeyedHandlerListAtRandom, CallsExactlyWhatACopyingListWouldCall) {
  for (unsigned seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    TRandomWorld(seed).Run();
  }
}

}  // namespace
}  // namespace margindesk
