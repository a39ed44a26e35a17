// The library file from C++: nothing left behind by many objects, and objects on several threads.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <array>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>

#include "automation/identifiers.hpp"
#include "ravelinox/cmdl1.h"

namespace ravelinox::automation {
namespace {

template <class Function>
Function entry(const char* name) {
  static void* const library = dlopen(RAVELINOX_SERVER, RTLD_NOW | RTLD_LOCAL);
  return reinterpret_cast<Function>(dlsym(library, name));
}

rlx_class_factory* factory() {
  void* made = nullptr;
  entry<decltype(&DllGetClassObject)>("DllGetClassObject")(&kClassId, &kClassFactoryId, &made);
  return static_cast<rlx_class_factory*>(made);
}

rlx_cmdl1* create() {
  constexpr rlx_guid id = RLX_CMDL1_ID;
  rlx_class_factory* const maker = factory();
  void* made = nullptr;
  maker->slots->CreateInstance(maker, nullptr, &id, &made);
  maker->slots->Release(maker);
  return static_cast<rlx_cmdl1*>(made);
}

rlx_dispatch* dispatch(rlx_cmdl1* engine) {
  return static_cast<rlx_dispatch*>(static_cast<void*>(engine));
}

void release(rlx_cmdl1* engine) { engine->slots->dispatch.Release(dispatch(engine)); }

rlx_result can_unload() { return entry<decltype(&DllCanUnloadNow)>("DllCanUnloadNow")(); }

rlx_variant variant(std::u16string_view text) {
  rlx_variant value{};
  value.kind = RLX_TEXT;
  value.value.text = rlx_text_new(nullptr, static_cast<std::uint32_t>(text.size()));
  std::copy(text.begin(), text.end(), value.value.text);
  return value;
}

/// What a host may do to an object in its life: texts, objects handed out, results.
void live_and_die() {
  rlx_cmdl1* const engine = create();
  rlx_variant name = variant(u"Empoli è qui");
  engine->slots->put_Nome_PdS(engine, name);
  rlx_variant_clear(&name);
  engine->slots->get_Nome_PdS(engine, &name);
  rlx_dispatch* slot = nullptr;
  engine->slots->get_DLLRS(engine, &slot);
  const std::array<std::uint8_t, 5> given{6, 0, 0, 22, 4};
  const std::int16_t year = 2026;
  std::int32_t moment = 0;
  engine->slots->MkTime(engine, &given[0], &given[1], &given[2], &given[3], &given[4], &year,
                        &moment);
  EXPECT_EQ(moment, 1776837600);
  release(engine);
  EXPECT_EQ(rlx_text_length(name.value.text), 12U);
  rlx_variant_clear(&name);
  slot->slots->Release(slot);  // outlives its engine
}

std::size_t entries_of(const char* folder) {
  const std::filesystem::directory_iterator entries(folder);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

TEST(Server, AMillionObjectsLeaveNothing) {
  for (int round = 0; round < 1000; ++round) live_and_die();
  const std::size_t memory = mallinfo2().uordblks;
  const std::size_t descriptors = entries_of("/proc/self/fd");
  const std::size_t threads = entries_of("/proc/self/task");
  for (int round = 0; round < 1'000'000; ++round) release(create());
  for (int round = 0; round < 10'000; ++round) live_and_die();
  EXPECT_LE(mallinfo2().uordblks, memory + 65'536) << "a byte for each would be a million";
  EXPECT_EQ(entries_of("/proc/self/fd"), descriptors);
  EXPECT_EQ(entries_of("/proc/self/task"), threads);
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

TEST(Server, CountsEveryReferenceAndLock) {
  rlx_class_factory* const maker = factory();
  EXPECT_EQ(can_unload(), RLX_S_FALSE);
  maker->slots->LockServer(maker, 1);
  maker->slots->Release(maker);
  EXPECT_EQ(can_unload(), RLX_S_FALSE);
  rlx_cmdl1* const engine = create();
  rlx_dispatch *slot = nullptr, *again = nullptr;
  engine->slots->get_DLLRS(engine, &slot);
  engine->slots->get_DLLRS(engine, &again);
  EXPECT_EQ(slot, again) << "an object keeps its identity";
  again->slots->Release(again);
  maker->slots->LockServer(maker, 0);
  release(engine);
  EXPECT_EQ(can_unload(), RLX_S_FALSE) << "a slot is still held";
  slot->slots->Release(slot);
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

/// An object of the host's that calls the engine as it is let go.
struct HostObject {
  const rlx_dispatch_slots* slots;
  std::int32_t references = 1;
  rlx_cmdl1* engine = nullptr;
  rlx_variant seen{};
};

HostObject& host_object(rlx_dispatch* self) {
  return *static_cast<HostObject*>(static_cast<void*>(self));
}

std::uint32_t let_go(rlx_dispatch* self) {
  HostObject& object = host_object(self);
  const std::int32_t left = --object.references;
  rlx_cmdl1* const engine = std::exchange(object.engine, nullptr);
  if (engine == nullptr) return static_cast<std::uint32_t>(left);
  engine->slots->dispatch.AddRef(dispatch(engine));
  if (left > 0) engine->slots->get_AutItWaitList(engine, &object.seen);
  release(engine);
  return static_cast<std::uint32_t>(left);
}

TEST(Server, LetsAnObjectOfTheHostCallBackAsItGoes) {
  rlx_dispatch_slots slots{};
  slots.AddRef = [](rlx_dispatch* self) {
    return static_cast<std::uint32_t>(++host_object(self).references);
  };
  slots.Release = let_go;
  HostObject object{&slots};
  rlx_variant given{};
  given.kind = RLX_DISPATCH;
  given.value.dispatch = static_cast<rlx_dispatch*>(static_cast<void*>(&object));
  rlx_cmdl1* const engine = create();
  for (rlx_variant& next : std::array{rlx_variant{RLX_I4, {}, {}}, variant(u"more than letters")}) {
    engine->slots->put_AutItWaitList(engine, given);
    EXPECT_EQ(object.references, 2);
    object.engine = engine;
    engine->slots->put_AutItWaitList(engine, next);
    EXPECT_EQ(object.seen.kind, next.kind) << "the new value, never the one that goes";
    EXPECT_EQ(object.references, 1);
    rlx_variant_clear(&object.seen);
    rlx_variant_clear(&next);
  }
  engine->slots->put_AutItWaitList(engine, given);
  rlx_variant_clear(&given);
  object.engine = engine;
  release(engine);
  EXPECT_EQ(object.references, 0);
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

TEST(Server, RefusesWhatItCannotMake) {
  void* made = nullptr;
  const auto get_class = entry<decltype(&DllGetClassObject)>("DllGetClassObject");
  EXPECT_EQ(get_class(&kInterfaceId, &kClassFactoryId, &made), RLX_CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(get_class(&kClassId, &kDispatchId, &made), RLX_E_NOINTERFACE);
  EXPECT_EQ(get_class(&kClassId, &kClassFactoryId, nullptr), RLX_E_POINTER);
  rlx_class_factory* const maker = factory();
  rlx_unknown outer{};
  EXPECT_EQ(maker->slots->CreateInstance(maker, &outer, &kUnknownId, &made),
            RLX_CLASS_E_NOAGGREGATION);
  EXPECT_EQ(maker->slots->CreateInstance(maker, nullptr, &kClassFactoryId, &made),
            RLX_E_NOINTERFACE);
  EXPECT_EQ(made, nullptr);
  maker->slots->Release(maker);
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

TEST(Server, ObjectsOnTwoThreadsDoNotMeet) {
  const auto work = [] {
    for (int round = 0; round < 2000; ++round) {
      live_and_die();
      rlx_cmdl1* const engine = create();
      rlx_variant reason = variant(u"Ritardo Lieve"), cause{};
      engine->slots->CausaRitardo(engine, &reason, &cause);
      EXPECT_EQ(cause.kind, RLX_TEXT);
      rlx_variant_clear(&reason);
      rlx_variant_clear(&cause);
      release(engine);
    }
  };
  std::thread other(work);
  work();
  other.join();
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

}  // namespace
}  // namespace ravelinox::automation
