// Feeds as zip archives and as folders. The archive library's header stays in this file.
#include "host/import/archive.hpp"

#include <zip.h>

#include <fstream>

#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

class PlainFile : public ByteSource {
 public:
  explicit PlainFile(const std::filesystem::path& path)
      : path_(path), stream_(path, std::ios::binary) {
    if (!stream_) throw Refusal("The feed's file " + path.string() + " cannot be opened.");
  }

  std::size_t read(std::span<char> buffer) override {
    stream_.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
    if (stream_.bad()) throw Refusal("The feed's file " + path_.string() + " cannot be read.");
    return static_cast<std::size_t>(stream_.gcount());
  }

 private:
  std::filesystem::path path_;
  std::ifstream stream_;
};

class Folder : public Archive {
 public:
  explicit Folder(std::filesystem::path path) : path_(std::move(path)) {}

  [[nodiscard]] bool has(const std::string& file) const override {
    return std::filesystem::is_regular_file(path_ / file);
  }

  [[nodiscard]] std::unique_ptr<ByteSource> open(const std::string& file) const override {
    return std::make_unique<PlainFile>(path_ / file);
  }

 private:
  std::filesystem::path path_;
};

using ZipHandle = std::shared_ptr<zip_t>;

class ZippedFile : public ByteSource {
 public:
  ZippedFile(ZipHandle archive, const std::string& name)
      : archive_(std::move(archive)),
        name_(name),
        file_(zip_fopen(archive_.get(), name.c_str(), ZIP_FL_NODIR), &zip_fclose) {
    if (!file_) {
      throw Refusal("The feed's file " + name +
                    " cannot be opened in the archive: " + zip_strerror(archive_.get()) + ".");
    }
  }

  std::size_t read(std::span<char> buffer) override {
    const auto count = zip_fread(file_.get(), buffer.data(), buffer.size());
    if (count < 0) {
      throw Refusal("The feed's file " + name_ + " is damaged in the archive: " +
                    zip_file_strerror(file_.get()) + ". Fetch the feed again.");
    }
    return static_cast<std::size_t>(count);
  }

 private:
  ZipHandle archive_;
  std::string name_;
  std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file_;
};

class ZipArchive : public Archive {
 public:
  explicit ZipArchive(const std::filesystem::path& path) {
    int code = 0;
    archive_.reset(zip_open(path.c_str(), ZIP_RDONLY, &code), [](zip_t* archive) {
      if (archive != nullptr) zip_discard(archive);
    });
    if (!archive_) {
      throw Refusal("The feed " + path.string() +
                    " is not a zip archive that can be read. Give a GTFS feed as a zip file or as "
                    "a folder of its unpacked files.");
    }
  }

  [[nodiscard]] bool has(const std::string& file) const override {
    return zip_name_locate(archive_.get(), file.c_str(), ZIP_FL_NODIR) >= 0;
  }

  [[nodiscard]] std::unique_ptr<ByteSource> open(const std::string& file) const override {
    return std::make_unique<ZippedFile>(archive_, file);
  }

 private:
  ZipHandle archive_;
};

}  // namespace

std::unique_ptr<Archive> open_archive(const std::filesystem::path& feed) {
  if (std::filesystem::is_directory(feed)) return std::make_unique<Folder>(feed);
  if (!std::filesystem::exists(feed)) throw Refusal("There is no feed " + feed.string() + ".");
  return std::make_unique<ZipArchive>(feed);
}

}  // namespace ravelinox::host
