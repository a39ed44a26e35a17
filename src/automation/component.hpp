// The creatable class `cmdl1` behind the border, and its factory.
#pragma once

#include <cstddef>
#include <span>

#include "automation/objects.hpp"
#include "ravelinox/cmdl1.hpp"

namespace ravelinox::automation {

/// One object of the engine with its dual interface.
class Component : public Face {
 public:
  Component();
  [[nodiscard]] bool is_also(const rlx_guid& id) const override;
  [[nodiscard]] cmdl1& engine() { return engine_; }

 private:
  cmdl1 engine_;
};

[[nodiscard]] inline cmdl1& engine_behind(Face& face) {
  return static_cast<Component&>(face).engine();
}

/// The properties and methods, for calls by name and by identifier.
[[nodiscard]] std::span<const Member> component_members();

/// The class's one factory; it is no object of its own for the count.
[[nodiscard]] rlx_class_factory& class_factory();

}  // namespace ravelinox::automation
