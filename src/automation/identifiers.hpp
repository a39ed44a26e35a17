// The identifiers of interfaces. The three of our own were drawn once and never change.
#pragma once

#include <algorithm>
#include <iterator>
#include <string>

#include "ravelinox/automation.h"

namespace ravelinox::automation {

/// The library's description: "Ravelinox", version 1.0.
inline constexpr rlx_guid kTypeLibraryId{
    0x9E73ADD0, 0xDA67, 0x4714, {0xBA, 0x86, 0x7C, 0x32, 0x05, 0xEA, 0xF7, 0x16}};
/// The dual interface `_cmdl1`.
inline constexpr rlx_guid kInterfaceId{
    0x8EFB22CF, 0x45A9, 0x42EA, {0x91, 0x23, 0x1B, 0x44, 0x01, 0xDA, 0xFC, 0xC3}};
/// The class `cmdl1`.
inline constexpr rlx_guid kClassId{
    0xAB36EA2E, 0x24D7, 0x4003, {0xA5, 0xB6, 0xEE, 0x73, 0xCA, 0x74, 0xB3, 0x13}};

inline constexpr rlx_guid kNoId{};
inline constexpr rlx_guid kUnknownId{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr rlx_guid kDispatchId{0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr rlx_guid kClassFactoryId{1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr rlx_guid kErrorInfoId{
    0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};

[[nodiscard]] constexpr bool same(const rlx_guid& a, const rlx_guid& b) {
  return a.data1 == b.data1 && a.data2 == b.data2 && a.data3 == b.data3 &&
         std::equal(std::begin(a.data4), std::end(a.data4), std::begin(b.data4));
}

/// "{9E73ADD0-DA67-4714-BA86-7C3205EAF716}"
[[nodiscard]] std::string text_of(const rlx_guid& id);

inline constexpr const char* kLibraryName = "Ravelinox";
inline constexpr const char* kProgramId = "Ravelinox.cmdl1";

}  // namespace ravelinox::automation
