// Connections, recordsets and fields as a host sees them: so that it can close a slot that a
// failure left open, and read and write rows of its own.
#pragma once

#include <memory>
#include <span>

#include "automation/objects.hpp"

namespace ravelinox::automation {

/// The face of an object of the data layer; it keeps the object.
class DataFace : public Face {
 public:
  DataFace(std::shared_ptr<Object> object, std::span<const Member> members);
  std::uint32_t release() override;
  [[nodiscard]] const std::shared_ptr<Object>& object() const { return object_; }

 private:
  std::shared_ptr<Object> object_;
};

/// A face with the members of the object's class. `object` is a connection, a recordset or a field
/// of one.
[[nodiscard]] Face* new_data_face(const std::shared_ptr<Object>& object);

}  // namespace ravelinox::automation
