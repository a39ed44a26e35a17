#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace ravelinox::host {

/// The bytes of one file, read once from front to back: a national feed's files are too large to
/// be held whole.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Fills the buffer as far as the file goes; 0 at its end. Refuses a file that is damaged.
  virtual std::size_t read(std::span<char> buffer) = 0;
};

/// A feed on the disk: a zip archive, whose files may lie in a folder inside it, or a folder.
class Archive {
 public:
  virtual ~Archive() = default;
  [[nodiscard]] virtual bool has(const std::string& file) const = 0;
  /// Refuses a file that is missing or locked by a password.
  [[nodiscard]] virtual std::unique_ptr<ByteSource> open(const std::string& file) const = 0;
};

/// Refuses what is neither a folder nor a zip archive.
[[nodiscard]] std::unique_ptr<Archive> open_archive(const std::filesystem::path& feed);

}  // namespace ravelinox::host
