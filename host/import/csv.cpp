// Comma-separated files as timetable publishers write them, with their every liberty; what cannot
// be told apart from damage is refused with its place.
#include "host/import/csv.hpp"

#include "host/refusal.hpp"

namespace ravelinox::host {
namespace {

constexpr std::size_t buffer_size = 64 * 1024;
constexpr std::size_t longest_field = 64 * 1024;
constexpr std::size_t most_fields = 1000;
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t";

std::string trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

CsvReader::CsvReader(std::unique_ptr<ByteSource> source, std::string name)
    : source_(std::move(source)), name_(std::move(name)), buffer_(buffer_size) {
  // The first chunk is filled by hand, for a source may give its first bytes one by one.
  while (filled_ < byte_order_mark.size()) {
    const auto count = source_->read(std::span(buffer_).subspan(filled_));
    if (count == 0) break;
    filled_ += count;
  }
  if (std::string_view(buffer_.data(), filled_).starts_with(byte_order_mark)) {
    position_ = byte_order_mark.size();
  }
}

int CsvReader::peek() {
  if (position_ == filled_) {
    position_ = 0;
    filled_ = source_->read(buffer_);
    if (filled_ == 0) return end;
  }
  return static_cast<unsigned char>(buffer_[position_]);
}

int CsvReader::take() {
  const int c = peek();
  if (c != end) ++position_;
  if (c == '\n') ++line_;
  return c;
}

void CsvReader::check_size(const std::string& text) const {
  if (text.size() <= longest_field) return;
  throw Refusal(name_ + ", line " + std::to_string(record_line_) +
                ": a field is longer than 64 KiB; probably a quotation mark is missing.");
}

std::string CsvReader::quoted() {
  std::string text;
  for (take();;) {  // the opening quotation mark
    const int c = take();
    if (c == end) {
      throw Refusal(name_ + ", line " + std::to_string(record_line_) +
                    ": a quotation mark is opened and never closed.");
    }
    if (c == '"') {
      if (peek() != '"') return text;
      take();
    }
    text += static_cast<char>(c);
    check_size(text);
  }
}

std::string CsvReader::field() {
  while (peek() == ' ' || peek() == '\t') take();
  std::string text = peek() == '"' ? quoted() : std::string();
  for (int c = peek(); c != end && c != ',' && c != '\n' && c != '\r'; c = peek()) {
    text += static_cast<char>(take());
    check_size(text);
  }
  return trimmed(text);
}

bool CsvReader::next(std::vector<std::string>& fields) {
  do {
    while (peek() == '\n' || peek() == '\r') take();
    fields.clear();
    if (peek() == end) return false;
    record_line_ = line_;
    fields.push_back(field());
    while (peek() == ',') {
      take();
      if (fields.size() == most_fields) {
        throw Refusal(name_ + ", line " + std::to_string(record_line_) + ": more than " +
                      std::to_string(most_fields) + " fields in a row; this is no feed.");
      }
      fields.push_back(field());
    }
  } while (fields.size() == 1 && fields.front().empty());
  return true;
}

FeedTable::FeedTable(const Archive& archive, const std::string& file,
                     std::initializer_list<std::string_view> required)
    : file_(file),
      reader_(archive.has(file)
                  ? archive.open(file)
                  : throw Refusal("The feed has no file " + file + ", which it cannot do without."),
              file) {
  reader_.next(header_);
  for (std::size_t i = 0; i < header_.size(); ++i) columns_.emplace(header_[i], i);
  for (const auto column : required) {
    if (columns_.find(column) != columns_.end()) continue;
    throw Refusal(file + ", line 1: the header has no column " + std::string(column) +
                  ", which the import needs.");
  }
}

bool FeedTable::next() {
  if (!reader_.next(fields_)) return false;
  while (fields_.size() > header_.size() && fields_.back().empty()) fields_.pop_back();
  if (fields_.size() > header_.size()) {
    throw Refusal(file_ + ", line " + std::to_string(line()) + ": " +
                  std::to_string(fields_.size()) + " fields, but the header names " +
                  std::to_string(header_.size()) + "; put fields that hold a comma in quotes.");
  }
  return true;
}

const std::string& FeedTable::operator[](std::string_view column) const {
  static const std::string none;
  const auto found = columns_.find(column);
  return found == columns_.end() || found->second >= fields_.size() ? none : fields_[found->second];
}

std::string FeedTable::place(std::string_view column) const {
  constexpr std::size_t longest_shown = 60;
  return file_ + ", line " + std::to_string(line()) + ", " + std::string(column) + " \"" +
         (*this)[column].substr(0, longest_shown) + "\"";
}

}  // namespace ravelinox::host
