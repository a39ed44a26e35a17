// A checkpoint that has moved all pages lets the next writer start the log over, and the engine
// then cuts the file back to the size limit.
#include "platform/data/sqlite/checkpoints.hpp"

#include <algorithm>

namespace ravelinox::data {
namespace {

constexpr int kUsualLength = 4000;  // pages of 1024 bytes
constexpr int kLongestWait = 4 * kUsualLength;
constexpr const char* kCutBack = "PRAGMA journal_size_limit = 4194304";

}  // namespace

Checkpoints::Checkpoints(File& file) : file_(file), due_(kUsualLength) {
  file_.execute(kCutBack);
  sqlite3_wal_hook(
      file_.handle(),
      [](void* self, sqlite3* /*handle*/, const char* /*database*/, int pages) noexcept {
        static_cast<Checkpoints*>(self)->committed(pages);
        return SQLITE_OK;  // the commit stands, whatever became of the checkpoint
      },
      this);
}

void Checkpoints::committed(int pages) noexcept {
  if (pages < seen_) due_ = kUsualLength;  // the log was started over
  seen_ = pages;
  if (pages < due_) return;
  int length = 0;
  int moved = 0;
  sqlite3_wal_checkpoint_v2(file_.handle(), "main", SQLITE_CHECKPOINT_PASSIVE, &length, &moved);
  // A reader in the way: each attempt costs in proportion to the log, so wait in proportion; but
  // not so long that a great log outlives its reader by a quarter of its length.
  due_ = moved == length ? kUsualLength : pages + std::clamp(pages / 4, kUsualLength, kLongestWait);
}

}  // namespace ravelinox::data
