// When the write-ahead log goes back into the database file.
#pragma once

#include "platform/data/sqlite/file.hpp"

namespace ravelinox::data {

/// Looks at the log after every commit. The engine's own rule tries at each commit once the log is
/// long, and while another program keeps a read open, no attempt can finish: this one backs off.
class Checkpoints {
 public:
  explicit Checkpoints(File& file);
  Checkpoints(const Checkpoints&) = delete;
  Checkpoints& operator=(const Checkpoints&) = delete;

 private:
  void committed(int pages) noexcept;

  File& file_;
  int due_;       ///< log length, in pages, at the next attempt
  int seen_ = 0;  ///< at the last commit
};

}  // namespace ravelinox::data
