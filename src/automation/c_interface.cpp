// The dual interface as a structure of C, written from the member table.
#include <array>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "automation/description.hpp"
#include "automation/description_text.hpp"
#include "automation/identifiers.hpp"
#include "core/members.hpp"

namespace ravelinox::automation {
namespace {

using members::Kind;

constexpr std::string_view kHead =
    R"(/* The class `cmdl1` as a structure of C, written by the library's build from its table of members:
 * the functions of an object that was made, or asked, for RLX_CMDL1_ID.
 *
 * cmdl1.hpp says what each function does, automation.h who owns what it gives. Arguments by pointer
 * are never changed; a null pointer leaves an optional one out. A Boolean is -1 or 0, a date the
 * days since 30 December 1899. After a failure the object tells the sentence as rlx_error_info. */
#ifndef RAVELINOX_CMDL1_H
#define RAVELINOX_CMDL1_H

#include "ravelinox/automation.h"

/* clang-format off */

)";

constexpr std::string_view kDeclaration = R"(
typedef struct rlx_cmdl1 rlx_cmdl1;

typedef struct rlx_cmdl1_slots {
  rlx_dispatch_slots dispatch; /* called with the object as an rlx_dispatch */

)";

constexpr std::string_view kEnd = R"(} rlx_cmdl1_slots;

struct rlx_cmdl1 {
  const rlx_cmdl1_slots* slots;
};

#endif
)";

std::string_view type_name(Kind kind) {
  switch (kind) {
    case Kind::boolean:
    case Kind::int16:
      return "int16_t";
    case Kind::uint8:
      return "uint8_t";
    case Kind::int32:
      return "int32_t";
    case Kind::float32:
      return "float";
    case Kind::date_time:
      return "double";
    case Kind::text:
      return "rlx_text";
    case Kind::variant:
      return "rlx_variant";
    case Kind::none:  // no function gives it
    case Kind::object:
    case Kind::connection:
    case Kind::recordset:
      break;
  }
  return "rlx_dispatch*";
}

std::string identifier(const rlx_guid& id) {
  std::array<char, 96> text{};
  const auto& d = id.data4;
  std::snprintf(
      text.data(), text.size(),
      "{0x%08X, 0x%04X, 0x%04X, {0x%02X, 0x%02X, 0x%02X, 0x%02X, 0x%02X, 0x%02X, 0x%02X, 0x%02X}}",
      static_cast<unsigned>(id.data1), static_cast<unsigned>(id.data2),
      static_cast<unsigned>(id.data3), d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
  return text.data();
}

std::string function(std::string_view prefix, std::string_view name, std::string_view parameters) {
  return joined({"  rlx_result (*", prefix, name, ")(rlx_cmdl1* self", parameters, ");\n"});
}

std::string property(const members::Property& row) {
  const std::string in = joined({", ", type_name(row.kind), " value"});
  return function("get_", row.name, joined({", ", type_name(row.kind), "* value"})) +
         function(members::is_object(row.kind) ? "reserved_" : "put_", row.name, in) +
         (members::is_set_by_reference(row.kind) ? function("putref_", row.name, in) : "");
}

std::string method(const members::Method& row) {
  std::string parameters;
  for (std::size_t at = 0; at < row.parameter_count(); ++at) {
    const members::Parameter& parameter = row.parameters[at];
    const bool by_value = parameter.passing == members::Passing::by_value;
    parameters += joined({by_value ? ", " : ", const ", type_name(parameter.kind),
                          by_value ? " " : "* ", parameter.name});
  }
  if (row.result != Kind::none) parameters += joined({", ", type_name(row.result), "* result"});
  return function("", row.name, parameters);
}

}  // namespace

std::string c_interface() {
  std::string text =
      joined({kHead, "#define RLX_CMDL1_CLASS ", identifier(kClassId), "\n#define RLX_CMDL1_ID ",
              identifier(kInterfaceId), "\n", kDeclaration});
  for (const members::Property& row : members::kProperties) text += property(row);
  text += '\n';
  for (const members::Method& row : members::kMethods) text += method(row);
  return text += kEnd;
}

}  // namespace ravelinox::automation
