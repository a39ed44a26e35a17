// The interface description, written from the member table.
#include "automation/description.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "automation/description_text.hpp"
#include "automation/identifiers.hpp"
#include "core/members.hpp"

namespace ravelinox::automation {
namespace {

using members::Kind;

constexpr std::string_view kHead =
    R"(// The binary interface of Ravelinox.so, written by the library's build from its table of members.
//
// Slots count from 0, the first function of the root interface; the dispatch interface's own end at
// 6. Each property has its accessors in this order: read, write, set by reference. The write slot
// of a property that holds an object is reserved: it is no member, and a call of it fails with
// E_NOTIMPL.
)";

struct Flag {
  std::string_view name;
  int value;
};

/// The speech platform's own, published for hosts; the component passes none of them.
constexpr std::array<Flag, 11> kSpeakFlags{{
    {"SVSFDefault", 0},
    {"SVSFlagsAsync", 1},
    {"SVSFPurgeBeforeSpeak", 2},
    {"SVSFIsFilename", 4},
    {"SVSFIsXML", 8},
    {"SVSFIsNotXML", 16},
    {"SVSFPersistXML", 32},
    {"SVSFNLPSpeakPunc", 64},
    {"SVSFNLPMask", 64},
    {"SVSFVoiceMask", 127},
    {"SVSFUnusedFlags", -128},
}};

std::string_view type_name(Kind kind) {
  switch (kind) {
    case Kind::none:
      return "void";
    case Kind::boolean:
      return "VARIANT_BOOL";
    case Kind::uint8:
      return "unsigned char";
    case Kind::int16:
      return "short";
    case Kind::int32:
      return "long";
    case Kind::float32:
      return "float";
    case Kind::date_time:
      return "DATE";
    case Kind::text:
      return "BSTR";
    case Kind::variant:
      return "VARIANT";
    case Kind::object:
    case Kind::connection:
    case Kind::recordset:
      break;
  }
  return "IDispatch*";
}

std::string id_text(std::int32_t id) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(id));
  return text.data();
}

/// Writes members with their slots, counting as it goes.
class Writer {
 public:
  void property(std::size_t index);
  void method(std::size_t index);
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  void member(std::int32_t id, std::string_view use, std::string_view name,
              std::string_view parameters) {
    text_ += joined({"    [id(", id_text(id), ")", use, "] HRESULT ", name, "(", parameters,
                     ");  // slot ", std::to_string(slot_++), "\n"});
  }

  std::string text_;
  std::size_t slot_ = sizeof(rlx_dispatch_slots) / sizeof(void*);
};

void Writer::property(std::size_t index) {
  const members::Property& row = members::kProperties[index];
  const std::int32_t id = members::property_id(index);
  const std::string in = joined({"[in] ", type_name(row.kind), " value"});
  member(id, ", propget", row.name, joined({"[out, retval] ", type_name(row.kind), "* value"}));
  if (members::is_object(row.kind)) {
    text_ += joined({"    // slot ", std::to_string(slot_++), " is reserved\n"});
  } else {
    member(id, ", propput", row.name, in);
  }
  if (members::is_set_by_reference(row.kind)) member(id, ", propputref", row.name, in);
}

std::string parameter_text(const members::Parameter& parameter) {
  const bool by_value = parameter.passing == members::Passing::by_value;
  // Only a variant can say that it was left out; any other kind needs a value to stand for it.
  const std::string_view optional = !parameter.optional ? "] "
                                    : parameter.kind == Kind::variant
                                        ? ", optional] "
                                        : ", optional, defaultvalue(0)] ";
  return joined({by_value ? "[in" : "[in, out", optional, type_name(parameter.kind),
                 by_value ? " " : "* ", parameter.name});
}

void Writer::method(std::size_t index) {
  const members::Method& row = members::kMethods[index];
  std::string parameters;
  for (std::size_t at = 0; at < row.parameter_count(); ++at)
    parameters += joined({at == 0 ? "" : ", ", parameter_text(row.parameters[at])});
  if (row.result != Kind::none)
    parameters += joined(
        {parameters.empty() ? "" : ", ", "[out, retval] ", type_name(row.result), "* result"});
  member(members::method_id(index), "", row.name, parameters.empty() ? "void" : parameters);
}

std::string uuid(const rlx_guid& id) {
  const std::string text = text_of(id);
  return joined({"uuid(", std::string_view(text).substr(1, text.size() - 2), ")"});
}

std::string enumeration() {
  std::string text = "  typedef enum SpeechVoiceSpeakFlags {\n";
  for (const Flag& flag : kSpeakFlags)
    text += joined({"    ", flag.name, " = ", std::to_string(flag.value), ",\n"});
  return text + "  } SpeechVoiceSpeakFlags;\n";
}

std::string interface_text() {
  Writer writer;
  for (std::size_t index = 0; index < members::kProperties.size(); ++index) writer.property(index);
  for (std::size_t index = 0; index < members::kMethods.size(); ++index) writer.method(index);
  return joined({"  [", uuid(kInterfaceId), ", object, dual, hidden]\n",
                 "  interface _cmdl1 : IDispatch {\n", writer.text(), "  };\n"});
}

}  // namespace

std::string interface_description() {
  return joined({kHead, "\n[", uuid(kTypeLibraryId), ", version(1.0)]\nlibrary ", kLibraryName,
                 " {\n  importlib(\"stdole2.tlb\");\n\n", enumeration(), "\n", interface_text(),
                 "\n  [", uuid(kClassId),
                 "]\n  coclass cmdl1 {\n    [default] interface _cmdl1;\n  };\n};\n"});
}

}  // namespace ravelinox::automation
