#pragma once

#include <stdexcept>

namespace ravelinox::host {

/// Something that the person at the terminal can put right: one whole sentence, shown as it
/// stands. Failures of the component are `ravelinox::Error`s and pass unchanged.
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace ravelinox::host
