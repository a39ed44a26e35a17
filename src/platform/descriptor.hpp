#pragma once

#include <unistd.h>

#include <utility>

namespace ravelinox {

/// A file descriptor, closed with the object.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) noexcept : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }

  explicit operator bool() const noexcept { return number_ >= 0; }
  [[nodiscard]] int get() const noexcept { return number_; }

 private:
  int number_ = -1;
};

}  // namespace ravelinox
