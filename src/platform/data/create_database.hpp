// New database files.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace ravelinox {

/// Creates a database file and runs the statements that define its tables and indexes. 58 when the
/// path is taken, 76 when its folder is missing, 0x80004005 when the file cannot be written or a
/// statement fails; a failure leaves no file.
void create_database(const std::string& path, std::span<const std::string_view> statements);

}  // namespace ravelinox
