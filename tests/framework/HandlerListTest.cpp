#include <functional>
#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>

#include "bench/Allocations.h"
#include "model/contract/Handlers.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

using TCallLog = std::vector<std::string>;

// Writes its name into a log when it is notified, and then does what the test wants.
struct TListener {
  std::string FName;
  TCallLog& FLog;
  std::function<void()> FAction;
  std::pair<void*, void*> FArguments;

  void Handle(void* sender, void* data) {
    FLog.push_back(FName);
    FArguments = {sender, data};
    if (FAction) FAction();
  }
  THandler GetHandler() { return MakeHandler<&TListener::Handle>(this); }
};

const std::vector<TCode> kKeys{TCode("A1001"), TCode("A1002"), TCode("A1003")};

// The three ways of notifying, which keep the same promises.
struct TGlobal {
  THandlerList FList;
  void Add(THandler handler, const void* owner) { FList.Add(handler, owner); }
  void Notify(void* sender, void* data) { FList.Notify(sender, data); }
};

struct TKeyed {
  TKeyedHandlerList FList;
  std::vector<TCode> FKeys = kKeys;  // they go with the list
  void Add(THandler handler, const void* owner) { FList.Register(FKeys[1], handler, owner); }
  void Notify(void* sender, void* data) { FList.Notify(FKeys[1], sender, data); }
};

struct TOnce : TKeyed {
  void Notify(void* sender, void* data) { FList.NotifyOnce(FKeys, sender, data); }
};

template <class T>
struct HandlerListPromises : testing::Test {
  TCallLog Notify() {
    FLog.clear();
    FSubject->Notify(nullptr, nullptr);
    return FLog;
  }
  // Every listener is an owner of its own.
  void AddAll(std::initializer_list<TListener*> listeners) {
    for (TListener* listener : listeners) FSubject->Add(listener->GetHandler(), listener);
  }

  std::unique_ptr<T> FSubject = std::make_unique<T>();
  TCallLog FLog;
  TListener FFirst{"first", FLog, {}, {}};
  TListener FSecond{"second", FLog, {}, {}};
  TListener FThird{"third", FLog, {}, {}};
  TListener FFourth{"fourth", FLog, {}, {}};
  static inline TCallLog FFaults;
  static inline std::vector<const void*> FFaultOwners;
};

using TWays = testing::Types<TGlobal, TKeyed, TOnce>;
TYPED_TEST_SUITE(HandlerListPromises, TWays, );

TYPED_TEST(HandlerListPromises, HandlersRunInOrderAndMayRemoveThemselvesTheirNeighboursAndTheirOwner) {
  auto& list = this->FSubject->FList;
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FSubject->Add(THandler(), this);  // no handler is no registration
  this->FSecond.FAction = [&] { list.RemoveOwner(&this->FSecond); };
  this->FSubject->Notify(this, &list);
  EXPECT_THAT(this->FLog, ElementsAre("first", "second", "third")) << "one that removes itself";
  EXPECT_EQ(this->FThird.FArguments, (std::pair<void*, void*>(this, &list)));

  this->AddAll({&this->FSecond, &this->FFourth});
  this->FThird.FAction = [&] {
    list.RemoveOwner(&this->FFirst);
    list.RemoveOwner(&this->FSecond);
  };
  EXPECT_THAT(this->Notify(), ElementsAre("first", "third", "fourth")) << "the neighbours before and after";

  this->FThird.FAction = nullptr;
  this->FSubject->Add(this->FFirst.GetHandler(), this);
  this->FSubject->Add(this->FSecond.GetHandler(), this);
  this->AddAll({&this->FSecond});
  this->FFirst.FAction = [&] { list.RemoveOwner(this); };
  EXPECT_THAT(this->Notify(), ElementsAre("third", "fourth", "first", "second")) << "the owner, it alone";

  for (TListener* owner : {&this->FSecond, &this->FThird, &this->FFourth}) list.RemoveOwner(owner);
  EXPECT_EQ(list.GetCount(), 0U);
}

TYPED_TEST(HandlerListPromises, OneAddedDuringAPassWaitsForTheNextWhichMayBeNested) {
  auto& list = this->FSubject->FList;
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FFirst.FAction = [&] {
    for (int i = 0; i < 100; ++i) this->AddAll({&this->FFourth});  // the list's memory moves
    list.RemoveOwner(&this->FFourth);
    list.RemoveOwner(&this->FSecond);
    this->AddAll({&this->FFourth, &this->FSecond});  // registered again: it waits as well
    this->FFirst.FAction = nullptr;
  };
  EXPECT_THAT(this->Notify(), ElementsAre("first", "third"));

  this->FFirst.FAction = [&] {
    this->FFirst.FAction = nullptr;
    this->FFourth.FAction = [&] { list.RemoveOwner(&this->FThird); };
    this->FSubject->Notify(nullptr, nullptr);
    this->FLog.push_back("outer");
  };
  EXPECT_THAT(this->Notify(),
              ElementsAre("first", "first", "third", "fourth", "second", "outer", "fourth", "second"));
}

TYPED_TEST(HandlerListPromises, AnExceptionReachesNeitherTheListNorTheOtherHandlers) {
  this->FFaults.clear();
  this->FFaultOwners.clear();
  const auto before = SetHandlerFaultSink([](auto what, const void* owner) {
    TestFixture::FFaults.emplace_back(what);
    TestFixture::FFaultOwners.push_back(owner);
  });
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FFirst.FAction = [&] {
    this->FSubject->FList.RemoveOwner(&this->FFirst);
    throw std::runtime_error("no such account");
  };
  this->FSecond.FAction = [] { throw 1; };
  EXPECT_THAT(this->Notify(), ElementsAre("first", "second", "third"));
  EXPECT_THAT(this->FFaults, ElementsAre("no such account", "unknown exception"));
  EXPECT_THAT(this->FFaultOwners, ElementsAre(&this->FFirst, &this->FSecond));
  SetHandlerFaultSink(
      [](std::string_view, const void*) { throw std::runtime_error("a sink that fails itself"); });
  EXPECT_THAT(this->Notify(), ElementsAre("second", "third"));
  SetHandlerFaultSink(before);
}

TYPED_TEST(HandlerListPromises, TheListMayGoDuringANestedPassAndBothPassesEnd) {
  this->AddAll({&this->FFirst, &this->FSecond});
  this->FFirst.FAction = [&] {
    if (this->FLog.size() == 1) return this->FSubject->Notify(nullptr, nullptr);
    this->FSubject.reset();
  };
  EXPECT_THAT(this->Notify(), ElementsAre("first", "first"));
}

TYPED_TEST(HandlerListPromises, APassOfAListThatHasRunBeforeAllocatesNothing) {
  this->FLog.reserve(6);
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FSubject->Notify(nullptr, nullptr);
  const std::size_t before = GetAllocationCount();
  this->FSubject->Notify(nullptr, nullptr);
  EXPECT_EQ(GetAllocationCount(), before);
  EXPECT_EQ(this->FLog.size(), 6U);
}

struct KeyedHandlerList : testing::Test {
  TCallLog NotifyOnce(const std::vector<TCode>& keys) {
    FLog.clear();
    FList.NotifyOnce(keys, nullptr, nullptr);
    return FLog;
  }

  const TCode kA = kKeys[0], kB = kKeys[1], kC = kKeys[2];
  TCallLog FLog;
  TKeyedHandlerList FList;
  TListener FTree{"tree", FLog, {}, {}};
  TListener FGrid{"grid", FLog, {}, {}};
};

TEST_F(KeyedHandlerList, APreviousKeyMovesTheOwnersSubscriptionsInOneStep) {
  FList.Register(kA, FTree.GetHandler(), &FTree);
  FList.Register(kA, FTree.GetHandler(), &FTree);
  FList.Register(kA, FGrid.GetHandler(), &FGrid);
  FList.Register(kB, FTree.GetHandler(), &FTree, kA);
  FList.Notify(kA, nullptr, nullptr);
  EXPECT_THAT(FLog, ElementsAre("grid")) << "every one of the owner's has left, nobody else's";
  FList.Register(kB, FTree.GetHandler(), &FTree, kB);
  EXPECT_THAT(NotifyOnce({kB}), ElementsAre("tree")) << "moved to where it was";
  FList.Register(kC, FTree.GetHandler(), &FTree, kA);
  FList.Unregister(kC, &FTree);
  EXPECT_TRUE(!FList.HasKey(kC) && FList.HasKey(kB)) << "only the one key was named";
  FGrid.FAction = [&] { FList.Register(kC, FTree.GetHandler(), &FTree, kB); };
  EXPECT_THAT(NotifyOnce({kA, kB, kC}), ElementsAre("grid")) << "moved in a pass, it waits";
  FList.Register(TCode(), FTree.GetHandler(), &FTree, kC);
  EXPECT_EQ(FList.GetCountOf(&FTree), 0U) << "an empty key only ends";
  FList.RemoveOwner(&FGrid);
  EXPECT_EQ(FList.GetCount(), 0U);
}

TEST_F(KeyedHandlerList, NotifyOnceCallsEachHandlerAndOwnerTheFirstTimeItIsMet) {
  FList.Register(kA, FTree.GetHandler(), &FTree);
  FList.Register(kA, FTree.GetHandler(), &FTree);
  FList.Register(kB, FGrid.GetHandler(), &FGrid);
  FList.Register(kB, FTree.GetHandler(), &FTree);
  FList.Register(kC, FTree.GetHandler(), &FGrid);
  EXPECT_THAT(NotifyOnce({kC, kA, kB, kA}), ElementsAre("tree", "tree", "grid")) << "once an owner";
}

}  // namespace
}  // namespace margindesk
