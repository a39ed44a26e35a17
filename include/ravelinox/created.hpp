#pragma once

#include <memory>
#include <utility>

namespace ravelinox {

/// An object property: a shared reference that makes its object on first use. It can be replaced
/// by another reference or cleared; after a clear the next use makes a fresh object. Objects that
/// others still hold (a slot its old connection) live on.
template <class T>
class Created {
 public:
  /// The object, made now if there is none.
  [[nodiscard]] const std::shared_ptr<T>& get() {
    if (!object_) object_ = std::make_shared<T>();
    return object_;
  }
  T& operator*() { return *get(); }
  T* operator->() { return get().get(); }

  void set(std::shared_ptr<T> object) { object_ = std::move(object); }
  void clear() { object_.reset(); }
  [[nodiscard]] bool has_object() const noexcept { return object_ != nullptr; }

 private:
  std::shared_ptr<T> object_;
};

}  // namespace ravelinox
