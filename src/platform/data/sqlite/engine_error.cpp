// One table says what each family of codes means to the user and what to do about it.
#include "platform/data/sqlite/engine_error.hpp"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace ravelinox::data {
namespace {

struct Meaning {
  int code;  ///< primary; the extended codes only tell the engine's circumstances
  ErrorNumber number;
  std::string_view sentence;
};

constexpr auto kMeanings = std::to_array<Meaning>({
    {SQLITE_BUSY, ErrorNumber::data_failure,
     "stayed locked by another program past the time-out; try again when that has finished"},
    {SQLITE_LOCKED, ErrorNumber::data_failure,
     "stayed locked by another program past the time-out; try again when that has finished"},
    {SQLITE_READONLY, ErrorNumber::data_failure,
     "can be read but not changed; check the rights on the file and its folder"},
    {SQLITE_PERM, ErrorNumber::data_failure, "may not be used; check the rights on the file"},
    {SQLITE_IOERR, ErrorNumber::data_failure, "cannot be read or written; check the device"},
    {SQLITE_CORRUPT, ErrorNumber::data_failure, "is damaged; restore it from a copy"},
    {SQLITE_NOTADB, ErrorNumber::data_failure, "is no database"},
    {SQLITE_FULL, ErrorNumber::data_failure, "cannot grow, the disk is full; make room"},
    {SQLITE_CANTOPEN, ErrorNumber::data_failure,
     "cannot be opened; check the rights on the file and its folder"},
    {SQLITE_CONSTRAINT, ErrorNumber::data_failure,
     "has a rule of its own that refuses the new values"},
    {SQLITE_MISMATCH, ErrorNumber::type_mismatch, "does not take a value of this kind"},
    {SQLITE_NOMEM, ErrorNumber::data_failure, "needs more memory than there is"},
    {SQLITE_TOOBIG, ErrorNumber::data_failure, "was given a text that is too long"},
    {SQLITE_AUTH, ErrorNumber::statement_not_understood,
     "would be touched outside the tables that the statement names"},
});

constexpr Meaning kOther{SQLITE_ERROR, ErrorNumber::data_failure, "cannot carry out the statement"};

}  // namespace

Error engine_error(int code, const std::string& subject, const std::string& detail) {
  constexpr int primary_bits = 0xFF;
  const auto* found = std::ranges::find(kMeanings, code & primary_bits, &Meaning::code);
  const Meaning& meaning = found == kMeanings.end() ? kOther : *found;
  return {meaning.number, subject + " " + std::string(meaning.sentence) + " (" + detail + ")."};
}

}  // namespace ravelinox::data
