#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>

#include "model/contract/Handlers.h"
#include "tests/framework/Listener.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The three ways of notifying, which keep the same promises.
struct TGlobal {
  THandlerList FList;
  void Add(THandler handler, const void* owner) { FList.Add(handler, owner); }
  void Notify(void* sender, void* data) { FList.Notify(sender, data); }
};

struct TKeyed {
  TKeyedHandlerList FList;
  TCode FKey{"HK0700"};
  void Add(THandler handler, const void* owner) { FList.Register(FKey, handler, owner); }
  void Notify(void* sender, void* data) { FList.Notify(FKey, sender, data); }
};

struct TOnce {
  TKeyedHandlerList FList;
  std::vector<TCode> FKeys{TCode("HK0005"), TCode("HK0700"), TCode("HK0941")};
  void Add(THandler handler, const void* owner) { FList.Register(FKeys[1], handler, owner); }
  void Notify(void* sender, void* data) { FList.NotifyOnce(FKeys, sender, data); }
};

template <class T>
class HandlerListPromises : public testing::Test {
 public:
  ~HandlerListPromises() override { SetHandlerFaultSink(FSinkBefore); }

 protected:
  void Notify() { FSubject->Notify(nullptr, nullptr); }
  auto& List() { return FSubject->FList; }

  // Every listener is an owner of its own.
  void AddAll(std::initializer_list<TListener*> listeners) {
    for (TListener* listener : listeners) FSubject->Add(listener->GetHandler(), listener);
  }

  static void KeepFault(std::string_view what) { FFaults.emplace_back(what); }

  std::unique_ptr<T> FSubject = std::make_unique<T>();
  TCallLog FLog;
  TListener FFirst{"first", &FLog, {}};
  TListener FSecond{"second", &FLog, {}};
  TListener FThird{"third", &FLog, {}};
  TListener FFourth{"fourth", &FLog, {}};
  static inline std::vector<std::string> FFaults;

 private:
  THandlerFaultSink FSinkBefore = (FFaults.clear(), SetHandlerFaultSink(&KeepFault));
};

using TWays = testing::Types<TGlobal, TKeyed, TOnce>;
TYPED_TEST_SUITE(HandlerListPromises, TWays, );

TYPED_TEST(HandlerListPromises, HandlersRunInTheOrderOfTheirRegistrationWithSenderAndData) {
  int sender = 0;
  int data = 0;
  this->AddAll({&this->FSecond, &this->FFirst, &this->FThird});
  this->FSubject->Add(THandler(), this);  // no handler is no registration
  this->FSubject->Notify(&sender, &data);
  EXPECT_THAT(this->FLog, ElementsAre("second", "first", "third"));
  EXPECT_EQ(this->FThird.FSender, &sender);
  EXPECT_EQ(this->FThird.FData, &data);
  EXPECT_EQ(this->List().GetCount(), 3U);
}

TYPED_TEST(HandlerListPromises, AHandlerMayRemoveItselfItsNeighboursAndItsWholeOwner) {
  auto& list = this->List();
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FSecond.FAction = [&] { list.RemoveOwner(&this->FSecond); };
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("first", "second", "third")) << "a handler that removes itself";
  EXPECT_EQ(list.GetCountOf(&this->FSecond), 0U);

  this->FLog.clear();
  this->AddAll({&this->FSecond, &this->FFourth});
  this->FThird.FAction = [&] {
    list.RemoveOwner(&this->FFirst);
    list.RemoveOwner(&this->FSecond);
    EXPECT_EQ(list.GetCount(), 2U) << "gone at once, though the pass still runs";
  };
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("first", "third", "fourth")) << "the neighbours before and after";

  this->FLog.clear();
  this->FThird.FAction = nullptr;
  this->FSubject->Add(this->FFirst.GetHandler(), this);
  this->FSubject->Add(this->FSecond.GetHandler(), this);
  this->AddAll({&this->FSecond});
  this->FFirst.FAction = [&] { list.RemoveOwner(this); };
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("third", "fourth", "first", "second"))
      << "the whole owner, and it alone";

  for (TListener* owner : {&this->FSecond, &this->FThird, &this->FFourth}) list.RemoveOwner(owner);
  EXPECT_EQ(list.GetCount(), 0U);
  this->FLog.clear();
  this->Notify();
  EXPECT_THAT(this->FLog, IsEmpty());
}

TYPED_TEST(HandlerListPromises, OneAddedDuringAPassWaitsForTheNext) {
  this->AddAll({&this->FFirst, &this->FSecond});
  this->FFirst.FAction = [&] {
    for (int i = 0; i < 100; ++i) this->AddAll({&this->FThird});
    this->List().RemoveOwner(&this->FThird);
    this->AddAll({&this->FThird});
    this->List().RemoveOwner(&this->FSecond);
    this->AddAll({&this->FSecond});  // registered again: it waits as well
    this->FFirst.FAction = nullptr;
  };
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("first"));
  this->FLog.clear();
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("first", "third", "second"));
}

TYPED_TEST(HandlerListPromises, AnExceptionReachesNeitherTheListNorTheOtherHandlers) {
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FFirst.FAction = [&] {
    this->List().RemoveOwner(&this->FFirst);
    throw std::runtime_error("no such account");
  };
  this->FSecond.FAction = [] { throw 1; };
  EXPECT_NO_THROW(this->Notify());
  EXPECT_THAT(this->FLog, ElementsAre("first", "second", "third"));
  EXPECT_THAT(this->FFaults, ElementsAre("no such account", "unknown exception"));
  EXPECT_EQ(this->List().GetCount(), 2U);

  SetHandlerFaultSink([](std::string_view) { throw std::runtime_error("a sink that fails itself"); });
  EXPECT_NO_THROW(this->Notify());
  SetHandlerFaultSink(nullptr);
  EXPECT_NO_THROW(this->Notify());
  EXPECT_EQ(this->FLog.size(), 7U);
}

TYPED_TEST(HandlerListPromises, ANestedPassWorks) {
  this->AddAll({&this->FFirst, &this->FSecond, &this->FThird});
  this->FFirst.FAction = [&] {
    this->FFirst.FAction = nullptr;
    this->AddAll({&this->FFourth});  // waits for the next pass, and the nested one is the next
    this->FThird.FAction = [&] { this->List().RemoveOwner(&this->FSecond); };
    this->Notify();
    this->FLog.push_back("outer");
  };
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("first", "first", "second", "third", "fourth", "outer", "third"));
  EXPECT_EQ(this->List().GetCount(), 3U);
}

TYPED_TEST(HandlerListPromises, TheListMayGoDuringAPass) {
  this->AddAll({&this->FFirst, &this->FSecond});
  this->FFirst.FAction = [&] {
    if (this->FLog.size() == 1) {
      this->Notify();
    } else {
      this->FSubject.reset();  // inside the nested pass: both passes end
    }
  };
  this->Notify();
  EXPECT_THAT(this->FLog, ElementsAre("first", "first"));
}

}  // namespace
}  // namespace margindesk
