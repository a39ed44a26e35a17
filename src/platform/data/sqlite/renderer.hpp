// Renders parsed statements for the engine. The language and the engine differ in what comparisons
// mean, so names are resolved first, and each comparison and sum is rendered by the kinds of its
// sides.
#pragma once

#include "platform/data/sqlite/catalog.hpp"
#include "platform/data/sqlite/rendered.hpp"
#include "platform/data/syntax.hpp"

namespace ravelinox::data {

/// 0x80040E37 and 0x80040E10 for unknown tables and columns, 0x80040E14 for what the grammar
/// allows but no rows can answer.
[[nodiscard]] Rendered render(const Statement& statement, const LexedStatement& lexed,
                              Catalog& catalog);

}  // namespace ravelinox::data
