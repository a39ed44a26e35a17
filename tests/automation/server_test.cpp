// The library file from C++: nothing left behind by many objects, and objects on several threads.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <array>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "automation/identifiers.hpp"
#include "ravelinox/automation.h"

namespace ravelinox::automation {
namespace {

constexpr std::int32_t kMkTime = 0x60030006;
constexpr std::int32_t kNomePdS = 0x40030014;
constexpr std::int32_t kDllrs = 0x40030004;
constexpr std::int32_t kCausaRitardo = 0x60030009;

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

rlx_dispatch* create() {
  rlx_class_factory* const maker = factory();
  void* made = nullptr;
  maker->slots->CreateInstance(maker, nullptr, &kInterfaceId, &made);
  maker->slots->Release(maker);
  return static_cast<rlx_dispatch*>(made);
}

rlx_result can_unload() { return entry<decltype(&DllCanUnloadNow)>("DllCanUnloadNow")(); }

rlx_variant variant(std::int32_t number) {
  rlx_variant value{};
  value.kind = RLX_I4;
  value.value.int32 = number;
  return value;
}

rlx_variant variant(std::u16string_view text) {
  rlx_variant value{};
  value.kind = RLX_TEXT;
  value.value.text = rlx_text_new(nullptr, static_cast<std::uint32_t>(text.size()));
  std::copy(text.begin(), text.end(), value.value.text);
  return value;
}

/// One call, with arguments from the last to the first, which are cleared.
rlx_variant call(rlx_dispatch* object, std::int32_t member, std::uint16_t use,
                 std::vector<rlx_variant> values = {}) {
  std::int32_t name = RLX_ID_PUT;
  rlx_arguments block{values.data(), &name, static_cast<std::uint32_t>(values.size()),
                      use == RLX_USE_PUT ? 1U : 0U};
  rlx_variant result{};
  EXPECT_EQ(
      object->slots->Invoke(object, member, &kNoId, 0, use, &block, &result, nullptr, nullptr),
      RLX_S_OK);
  for (rlx_variant& value : values) rlx_variant_clear(&value);
  return result;
}

/// What a host may do to an object in its life: texts, objects handed out, results.
void live_and_die() {
  rlx_dispatch* const engine = create();
  call(engine, kNomePdS, RLX_USE_PUT, {variant(u"Empoli è qui")});
  rlx_variant name = call(engine, kNomePdS, RLX_USE_GET);
  rlx_variant slot = call(engine, kDllrs, RLX_USE_GET);
  const rlx_variant moment =
      call(engine, kMkTime, RLX_USE_METHOD,
           {variant(2026), variant(4), variant(22), variant(0), variant(0), variant(6)});
  EXPECT_EQ(moment.value.int32, 1776837600);
  engine->slots->Release(engine);
  rlx_variant_clear(&name);
  rlx_variant_clear(&slot);  // outlives its engine
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
  for (int round = 0; round < 1'000'000; ++round) {
    rlx_dispatch* const engine = create();
    engine->slots->Release(engine);
  }
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
  rlx_dispatch* const engine = create();
  rlx_variant slot = call(engine, kDllrs, RLX_USE_GET);
  rlx_variant again = call(engine, kDllrs, RLX_USE_GET);
  EXPECT_EQ(slot.value.dispatch, again.value.dispatch) << "an object keeps its identity";
  rlx_variant_clear(&again);
  maker->slots->LockServer(maker, 0);
  engine->slots->Release(engine);
  EXPECT_EQ(can_unload(), RLX_S_FALSE) << "a slot is still held";
  rlx_variant_clear(&slot);
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

/// An object of the host's that calls the engine as it is let go.
struct HostObject {
  const rlx_dispatch_slots* slots;
  std::int32_t references = 1;
  rlx_dispatch* engine = nullptr;
  rlx_variant seen{};
};

constexpr std::int32_t kAutItWaitList = 0x40030016;

HostObject& host_object(rlx_dispatch* self) {
  return *static_cast<HostObject*>(static_cast<void*>(self));
}

std::uint32_t let_go(rlx_dispatch* self) {
  HostObject& object = host_object(self);
  const std::int32_t left = --object.references;
  rlx_dispatch* const engine = std::exchange(object.engine, nullptr);
  if (engine == nullptr) return static_cast<std::uint32_t>(left);
  engine->slots->AddRef(engine);
  if (left > 0) object.seen = call(engine, kAutItWaitList, RLX_USE_GET);
  engine->slots->Release(engine);
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
  rlx_dispatch* const engine = create();
  for (const rlx_variant& next : {variant(7), variant(u"a text of more than a few letters")}) {
    object.references = 2;
    call(engine, kAutItWaitList, RLX_USE_PUT, {given});  // gives up its own reference: one is left
    EXPECT_EQ(object.references, 2);
    object.engine = engine;
    call(engine, kAutItWaitList, RLX_USE_PUT, {next});
    EXPECT_EQ(object.seen.kind, next.kind) << "the new value, never the one that goes";
    EXPECT_EQ(object.references, 1);
    rlx_variant_clear(&object.seen);
  }
  object.references = 1;
  call(engine, kAutItWaitList, RLX_USE_PUT, {given});
  object.engine = engine;
  engine->slots->Release(engine);
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
      rlx_dispatch* const engine = create();
      rlx_variant cause = call(engine, kCausaRitardo, RLX_USE_METHOD, {variant(u"Ritardo Lieve")});
      EXPECT_EQ(cause.kind, RLX_TEXT);
      rlx_variant_clear(&cause);
      engine->slots->Release(engine);
    }
  };
  std::thread other(work);
  work();
  other.join();
  EXPECT_EQ(can_unload(), RLX_S_OK);
}

}  // namespace
}  // namespace ravelinox::automation
