// The records of the feed. Both ends run on one machine and come from one build, so a record is
// plain memory.
#include "operator/telephone_feed.hpp"

#include <sys/mman.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace ravelinox {

namespace {

/// Followed by the caller, which replaces the one before, and the text to add to the messages.
struct RecordHead {
  std::uint64_t caller_size;
  std::uint64_t text_size;
  std::uint64_t reply_enabled;
  std::uint64_t send_enabled;
};

bool write_at(int file, std::string_view bytes, off_t at) {
  while (!bytes.empty()) {
    const ssize_t written = pwrite(file, bytes.data(), bytes.size(), at);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    at += written;
  }
  return true;
}

std::string read_from(int file, off_t at) {
  struct stat state {};
  if (fstat(file, &state) != 0 || state.st_size <= at) return {};
  std::string bytes(static_cast<std::size_t>(state.st_size - at), '\0');
  const ssize_t read = pread(file, bytes.data(), bytes.size(), at);
  bytes.resize(read < 0 ? 0 : static_cast<std::size_t>(read));
  return bytes;
}

}  // namespace

bool FeedWriter::open() {
  file_ = Descriptor(memfd_create("ravelinox-telephone", MFD_CLOEXEC));
  return static_cast<bool>(file_);
}

bool FeedWriter::append(const TelephoneView& view) {
  const std::string_view added = std::string_view(view.messages).substr(told_);
  const RecordHead head{view.caller.size(), added.size(), view.reply_enabled, view.send_enabled};
  std::string record(sizeof head, '\0');
  std::memcpy(record.data(), &head, sizeof head);
  record.append(view.caller).append(added);
  if (!write_at(file_.get(), record, end_)) return false;
  end_ += static_cast<off_t>(record.size());
  told_ = view.messages.size();
  return true;
}

bool FeedReader::update(TelephoneView& view) {
  const std::string bytes = read_from(file_.get(), read_);
  std::string_view rest = bytes;
  RecordHead head{};
  while (rest.size() >= sizeof head) {
    std::memcpy(&head, rest.data(), sizeof head);
    // The writer may be in the middle of a record; its byte on the socket follows.
    if (rest.size() - sizeof head < head.caller_size + head.text_size) break;
    rest.remove_prefix(sizeof head);
    view.caller = rest.substr(0, head.caller_size);
    view.messages += rest.substr(head.caller_size, head.text_size);
    view.reply_enabled = head.reply_enabled != 0;
    view.send_enabled = head.send_enabled != 0;
    rest.remove_prefix(head.caller_size + head.text_size);
  }
  const std::size_t used = bytes.size() - rest.size();
  read_ += static_cast<off_t>(used);
  return used != 0;
}

}  // namespace ravelinox
