// Opening of existing database files.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/data/sqlite/file.hpp"

namespace ravelinox::data {

/// Opens a file and makes sure that it is a database. Nothing is ever created. 0x80004005 with the
/// cause for a missing, empty, damaged or foreign file, a folder, or one without rights. A database
/// in write-ahead mode that cannot have companion files, because its folder is read-only, is opened
/// for reading as a file that nobody changes.
[[nodiscard]] std::unique_ptr<File> open_file(const std::string& path,
                                              std::chrono::milliseconds patience);

/// Opens a new, empty file, to be made a database.
[[nodiscard]] std::unique_ptr<File> open_new_file(const std::string& path);

/// The settings of every session: a page cache of 2 MB, no flush at each commit where the
/// write-ahead log makes that safe, nothing from the file's own definitions trusted.
void apply_settings(File& file);

/// Whether the file's changes go through a write-ahead log.
[[nodiscard]] bool has_write_ahead_log(File& file);

}  // namespace ravelinox::data
