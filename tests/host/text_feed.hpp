#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>

#include "host/import/archive.hpp"
#include "host/refusal.hpp"
#include "support/cases.hpp"

namespace ravelinox::host {

/// Why a call is refused; empty when it is not.
template <class Call>
[[nodiscard]] std::string refusal_of(Call call) {
  try {
    (void)call();
  } catch (const Refusal& refusal) {
    return refusal.what();
  }
  return "";
}

/// A feed that stands as text in a test. Its files come in small pieces, so that what a reader
/// must keep together is cut apart somewhere.
class TextFeed : public Archive {
 public:
  explicit TextFeed(std::map<std::string, std::string> files) : files_(std::move(files)) {}

  [[nodiscard]] bool has(const std::string& file) const override { return files_.contains(file); }

  [[nodiscard]] std::unique_ptr<ByteSource> open(const std::string& file) const override {
    return std::make_unique<Source>(files_.at(file));
  }

 private:
  struct Source : ByteSource {
    explicit Source(std::string text) : rest(std::move(text)) {}
    std::size_t read(std::span<char> buffer) override {
      constexpr std::size_t piece = 2;
      const std::size_t count = rest.copy(buffer.data(), std::min(piece, buffer.size()));
      rest.erase(0, count);
      return count;
    }
    std::string rest;
  };

  std::map<std::string, std::string> files_;
};

}  // namespace ravelinox::host
