// Text files in the system's 8-bit code page (Windows-1252) with CR LF at the end of every line.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace ravelinox {

/// The bytes of a UTF-8 text in Windows-1252. The five bytes that the code page leaves undefined
/// stand for U+0081, U+008D, U+008F, U+0090 and U+009D; a letter and its accent give the same byte
/// composed and decomposed; everything else that the page lacks becomes one "?".
[[nodiscard]] std::string to_code_page(std::string_view utf8);

/// Whether there is a file that can be opened for reading; it is closed again at once.
[[nodiscard]] bool can_be_read(const std::string& path) noexcept;

/// One file open for writing. A failure raises the file error (52 to 76) with the path; the file
/// is closed on every path, and what was written before stays in it; of a line that could not be
/// appended whole, no part does.
class TextFile {
 public:
  [[nodiscard]] static TextFile create(const std::string& path);  ///< or truncate
  [[nodiscard]] static TextFile append_to(const std::string& path);

  /// Writes the text and CR LF.
  void write_line(std::string_view utf8);

  /// Hands everything to the system and closes. Without it the destructor closes, and swallows a
  /// failure.
  void close();

 private:
  struct Closer {
    void operator()(std::FILE* file) const noexcept { (void)std::fclose(file); }
  };
  TextFile(const std::string& path, const char* mode);
  void take_back(std::size_t written) noexcept;

  std::string path_;
  std::unique_ptr<std::FILE, Closer> file_;
  bool appends_ = false;
};

}  // namespace ravelinox
