#pragma once

#include <cstddef>
#include <stdexcept>
#include <vector>

#include "ravelinox/platform.hpp"

namespace ravelinox::testing {

/// Gives the scripted draws in order, then the last one for ever; counts what was taken.
class ScriptedRandom : public RandomSource {
 public:
  explicit ScriptedRandom(std::vector<float> script) : script_(std::move(script)) {}

  float draw() override {
    const std::size_t at = draws < script_.size() ? draws : script_.size() - 1;
    ++draws;
    return script_.at(at);
  }
  void reseed() override { ++reseedings; }

  std::size_t draws = 0;
  std::size_t reseedings = 0;

 private:
  std::vector<float> script_;
};

}  // namespace ravelinox::testing
