#include "host/track_changes.hpp"

#include <gtest/gtest.h>

#include "host/refusal.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {
namespace {

using ravelinox::testing::Table;

TEST(TrackChanges, LastPieceHoldsAndTheFirstTextIsNone) {
  // Lists, and the track of train 2345 by them.
  for (const auto& [list, track] : Table<const char*, const char*>{{"|2345@3|10271@1", "3"},
                                                                   {"|2345@3|2345@4 tr.", "4 tr."},
                                                                   {"2345@3", "none"},
                                                                   {"|", "none"},
                                                                   {"|12345@3", "none"},
                                                                   {"|2345@|x@2||2345@7", "7"}}) {
    EXPECT_EQ(changed_track(list, 2345).value_or("none"), track) << list;
  }
}

TEST(TrackChanges, TypedChangesMakeAList) {
  EXPECT_EQ(track_change_list({}), "");
  EXPECT_EQ(track_change_list({"2345@3", "7@1 tr."}), "|2345@3|7@1 tr.");
  for (const char* typed : {"", "2345", "2345@", "@3", "x@3", "2345@3|7@1", "99999999999@1"}) {
    EXPECT_THROW(static_cast<void>(track_change_list({typed})), Refusal) << typed;
  }
}

}  // namespace
}  // namespace ravelinox::host
