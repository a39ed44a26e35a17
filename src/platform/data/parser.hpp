// The statement language:
//
//   statement  = select | update
//   select     = SELECT [DISTINCT] [TOP n] ( * | column {, column} )
//                FROM table [INNER JOIN table ON column = column]
//                [WHERE condition] [ORDER BY ( column | Rnd(column) ) [ASC | DESC]]
//   update     = UPDATE table SET column = sum {, column = sum} [WHERE condition]
//   condition  = XOR over OR over AND over NOT over comparison | ( condition ), in rising binding
//   comparison = sum ( = | < | <= | > | >= | <> ) sum | sum = ANY ( select )
//              | sum [NOT] LIKE text | sum IS [NOT] NULL
//   sum        = product {(+ | -) product};  product = factor {(* | /) factor}
//   factor     = [-] ( number | 'text' | True | False | column | ( sum ) )
//   column     = [table .] name
//
// Names and keywords in any letter case; a keyword is no name, except after a point.
#pragma once

#include "platform/data/lexer.hpp"
#include "platform/data/syntax.hpp"

namespace ravelinox::data {

/// Throws 0x80040E14 with the place of what does not belong there.
[[nodiscard]] Statement parse(const LexedStatement& statement);

}  // namespace ravelinox::data
