// What table-driven tests share.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <tuple>

#include "ravelinox/error.hpp"

namespace ravelinox::testing {

/// Rows of cells, for a loop that takes each row apart: for (const auto& [in, out] : Table<…>{…}).
template <class... Cells>
using Table = std::initializer_list<std::tuple<Cells...>>;

/// The error that a call ends with, if it ends with one. Each says what failed.
template <class Call>
[[nodiscard]] std::optional<ErrorNumber> error_of(Call&& call) {
  try {
    (void)call();
  } catch (const Error& error) {
    EXPECT_STRNE(error.what(), "");
    return error.code();
  }
  return std::nullopt;
}

}  // namespace ravelinox::testing
