// A second wall behind the statement language: the engine itself asks before it touches anything.
#pragma once

#include "platform/data/sqlite/file.hpp"

namespace ravelinox::data {

/// From now on, statements compiled while `file.allowed_tables` is set may read and update these
/// tables and do nothing else. What a view or trigger of the file does inside is the file's own.
void add_authorizer(File& file);

}  // namespace ravelinox::data
