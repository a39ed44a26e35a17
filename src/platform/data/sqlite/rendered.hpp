// A statement as the engine takes it, and what is needed to run it with other literals.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/data/engine.hpp"
#include "platform/data/lexer.hpp"
#include "platform/data/sqlite/file.hpp"

namespace ravelinox::data {

/// How a literal becomes a parameter.
enum class Form : std::uint8_t {
  number,
  text,
  kept,        ///< as a column of the parameter's kind keeps it
  range_from,  ///< the text's beginning up to its first character beyond ASCII
  range_to,    ///< the same, and then the greatest character
};

struct Parameter {
  std::size_t literal;
  Form form;
  ColumnKind kind = ColumnKind::as_stored;

  friend bool operator==(const Parameter&, const Parameter&) = default;
};

struct Rendered {
  std::string sql;
  std::vector<Parameter> parameters;         ///< of "?1", "?2" ...
  std::vector<std::string> tables;           ///< all that it touches; the first is the main one
  std::shared_ptr<const ResultShape> shape;  ///< of a SELECT
  bool draws_rows = false;                   ///< rows are to be drawn at random from the result
  std::optional<std::size_t> drawn_count;    ///< literal with their number; all without one
};

/// Binds the literals of a statement that has the shape of the rendered one. Texts are not
/// copied, so literals and `scratch` must outlive the run.
void bind_literals(Prepared& statement, const std::vector<Parameter>& parameters,
                   const std::vector<Literal>& literals, std::vector<std::string>& scratch);

}  // namespace ravelinox::data
