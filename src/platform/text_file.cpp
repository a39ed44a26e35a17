// Files of the component: written byte for byte, closed on every path, failures named by the
// system's own reason.
#include "platform/text_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "ravelinox/error.hpp"

namespace ravelinox {

namespace {

struct SystemFailure {
  int code;
  ErrorNumber number;
};

constexpr std::array<SystemFailure, 10> system_failures{{
    {ENOENT, ErrorNumber::path_not_found},  // a file that is missing would have been created
    {ENOTDIR, ErrorNumber::path_not_found},
    {EACCES, ErrorNumber::permission_denied},
    {EPERM, ErrorNumber::permission_denied},
    {EROFS, ErrorNumber::permission_denied},
    {ETXTBSY, ErrorNumber::permission_denied},
    {ENOSPC, ErrorNumber::disk_full},
    {EDQUOT, ErrorNumber::disk_full},
    {EFBIG, ErrorNumber::disk_full},
    {ENAMETOOLONG, ErrorNumber::bad_file_name},
}};

[[noreturn]] void fail_with(int code, const std::string& path) {
  ErrorNumber number = ErrorNumber::path_access_error;
  for (const SystemFailure& failure : system_failures) {
    if (failure.code == code) number = failure.number;
  }
  throw Error(number, "The file " + path + " cannot be written: " + std::strerror(code) + ".");
}

}  // namespace

bool can_be_read(const std::string& path) noexcept {
  // Without waiting: the name may belong to a pipe that nobody writes to.
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return false;
  struct stat found {};
  const bool readable = fstat(file, &found) == 0 && !S_ISDIR(found.st_mode);
  (void)close(file);
  return readable;
}

TextFile TextFile::create(const std::string& path) { return {path, "wbe"}; }

TextFile TextFile::append_to(const std::string& path) {
  TextFile file(path, "abe");
  // Without a buffer every line's own write tells how much of it arrived.
  (void)std::setvbuf(file.file_.get(), nullptr, _IONBF, 0);
  file.appends_ = true;
  return file;
}

TextFile::TextFile(const std::string& path, const char* mode) : path_(path) {
  if (path.empty() || path.find('\0') != std::string::npos) {
    throw Error(ErrorNumber::bad_file_name, "A file name is empty or holds a NUL.");
  }
  file_.reset(std::fopen(path.c_str(), mode));
  if (!file_) fail_with(errno, path_);
}

void TextFile::write_line(std::string_view utf8) {
  const std::string line = to_code_page(utf8) + "\r\n";
  const std::size_t written = std::fwrite(line.data(), 1, line.size(), file_.get());
  if (written == line.size()) return;
  const int reason = errno;
  if (appends_) take_back(written);
  fail_with(reason, path_);
}

void TextFile::take_back(std::size_t written) noexcept {
  const int file = fileno(file_.get());
  const off_t end = lseek(file, 0, SEEK_CUR);
  struct stat found {};
  // What another program has appended meanwhile is not ours to cut off.
  if (end < 0 || fstat(file, &found) != 0 || found.st_size != end) return;
  if (ftruncate(file, end - static_cast<off_t>(written)) != 0) return;  // part of a line stays
}

void TextFile::close() {
  if (std::fclose(file_.release()) != 0) fail_with(errno, path_);
}

}  // namespace ravelinox
