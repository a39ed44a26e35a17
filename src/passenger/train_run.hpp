// The two ends of a train's run, from the text "origin - destination".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "ravelinox/error.hpp"

namespace ravelinox {

/// An end that the text does not hold fails (9) when it is asked for, not before: a sentence that
/// does not speak it can still be made.
class TrainRun {
 public:
  TrainRun(std::int32_t train, std::string text) : train_(train), text_(std::move(text)) {}

  [[nodiscard]] std::string origin() const {
    if (text_.empty()) fail("origin");
    return text_.substr(0, text_.find(separator));
  }

  [[nodiscard]] std::string destination() const {
    const std::size_t at = text_.find(separator);
    if (at == std::string::npos) fail("destination");
    const std::string rest = text_.substr(at + separator.size());
    return rest.substr(0, rest.find(separator));
  }

 private:
  static constexpr std::string_view separator = " - ";

  [[noreturn]] void fail(const std::string& end) const {
    throw Error(ErrorNumber::subscript_out_of_range,
                "The run of train " + std::to_string(train_) + " has no " + end + ".");
  }

  std::int32_t train_;
  std::string text_;
};

}  // namespace ravelinox
