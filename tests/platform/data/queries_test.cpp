#include <gtest/gtest.h>

#include "platform/data/test_database.hpp"
#include "support/scripted_random.hpp"

namespace ravelinox::data::testing {
namespace {

using ravelinox::testing::ScriptedRandom;
using Conditions = std::vector<std::string>;

/// Columns of numbers, texts, a Boolean, and two of odd declaration: one without a type, and one of
/// a type that nobody knows. "à" is in both cases; row 4 holds texts where numbers belong.
const TestDatabase& trains() {
  static const TestDatabase database{
      "CREATE TABLE t (N INTEGER, S TEXT, A INTEGER, B BOOLEAN, R REAL, X, Y ODD, \"IF\" TEXT)",
      "CREATE INDEX t_S ON t (S COLLATE NOCASE, N)",
      "INSERT INTO t VALUES (1, 'Empoli', 100, 1, 0.1, 100, 100, 'TI')",
      "INSERT INTO t VALUES (2, 'FORLÌ', 9, 0, 0.30000001192092896, '9', 9, 'ti')",
      "INSERT INTO t VALUES (3, 'Forlì', NULL, -1, 2.5, NULL, NULL, 'Tx')",
      "INSERT INTO t VALUES (4, '', 'x', NULL, NULL, 'abc', 'abc', NULL)",
      "INSERT INTO t VALUES (5, '50%', -7, 1, -1, '', '-7', 'it''s')",
      "CREATE TABLE u (N INTEGER, V TEXT)",
      "INSERT INTO u VALUES (1, 'uno'), (2, 'due'), (1, 'UNO'), (9, 'nove')",
      "CREATE VIEW v AS SELECT N AS M, S FROM t WHERE N < 3",
  };
  return database;
}

// Random statements over well-kept tables are put to another evaluator by the torture; here stand
// the tables and texts that other programs leave.
TEST(Queries, ConditionsSelect) {
  // The numbers of the rows that satisfy each of the conditions.
  for (const auto& [numbers, conditions] : Table<std::string_view, Conditions>{
           // Texts without regard to case, in any column and under any name.
           {"1 / 2", {"if = 'TI'"}},
           {"4", {"S = ''", "X = 'ABC'"}},
           {"1", {"S LIKE 'emp%'", "A LIKE '1%'"}},
           {"", {"S = 'Forl'", "S LIKE '%l_'"}},
           // Numbers and quoted numbers, by value; a text among them is never anything.
           {"1", {"A > '9'", "'9' < A", "Y > '9'", "R = 0.1"}},
           {"2", {"A = ' 9.0 '", "X = '9'", "R = '0.3'"}},
           {"1 / 5", {"NOT A = 9"}},
           {"1 / 2 / 5", {"A > -(8)"}},
           {"", {"A = 'x'", "A <> 'x'", "NOT A < 'x'", "S > '4'"}},
           {"1 / 4 / 5", {"X <> '9'"}},
           {"2 / 5", {"X < 'abc'"}},
           // Booleans: anything but 0 is True, and True sorts before False.
           {"1 / 3 / 5", {"B = True", "B = '1'", "B < False"}},
           {"", {"N = True"}},
           // XOR, OR, AND, NOT bind ever closer; subqueries and qualified names.
           {"2", {"N = 1 XOR N = 2 OR N = 1 AND N = 3 OR N = 1", "NOT (N = 1 OR N > 2)"}},
           {"3 / 4 / 5", {"NOT N = ANY (SELECT N FROM u WHERE u.N = T.N)"}},
           {"2 / 4", {"'2' = ANY (SELECT M FROM v WHERE M = N) OR T.\tN = 4"}}}) {
    for (const std::string& condition : conditions) {
      EXPECT_EQ(trains().rows("SELECT N FROM t WHERE " + condition + " ORDER BY N"), numbers)
          << condition;
    }
  }
  EXPECT_EQ(trains().rows("SELECT N FROM t ORDER BY A DESC"), "4 / 1 / 2 / 5 / 3");
  EXPECT_EQ(trains().rows("SELECT * FROM v INNER JOIN u ON M = N WHERE V LIKE 'd%'"),
            "2, FORLÌ, 2, due");
}

TEST(Queries, RowsAreDrawnFromTheComponentsOwnSource) {
  for (const auto& [statement, script, rows, draws] :
       Table<std::string_view, std::vector<float>, std::string_view, std::size_t>{
           {"SELECT TOP 1 V FROM u ORDER BY Rnd(N)", {0.0F}, "uno", 1},
           {"SELECT TOP 1 V FROM u ORDER BY Rnd(N)", {0.25F}, "due", 1},
           {"SELECT TOP 1 V FROM u ORDER BY rnd ( n )", {0.99999F}, "nove", 1},
           {"SELECT TOP 1 V FROM u WHERE N = 7 ORDER BY Rnd(N)", {0.5F}, "", 0},
           {"SELECT TOP 2 V FROM u ORDER BY Rnd(N)", {0.3F, 0.4F}, "due / UNO", 2},
           {"SELECT V FROM u WHERE N = 1 ORDER BY Rnd(N)", {0.6F, 0.9F}, "UNO / uno", 2}}) {
    auto random = std::make_shared<ScriptedRandom>(script);
    Platform scripted = platform();
    scripted.random = random;
    const PlatformOverride override(std::move(scripted));
    EXPECT_EQ(trains().rows(statement), rows) << statement;
    EXPECT_EQ(random->draws, draws) << statement;
  }
}

TEST(Queries, WhatIsRefused) {
  std::string long_chain = "N = 1";
  for (int i = 0; i < 200; ++i) long_chain += " OR N = 1";
  for (const auto& [error, statements] : Table<ErrorNumber, std::vector<std::string>>{
           {statement_not_understood,
            {"", "SELECT N FROM t; SELECT N FROM t", "SELECT N FROM t -- all",
             "SELECT N FROM t WHERE S = 'L'Aquila'", "SELECT N FROM t WHERE S = 'x",
             std::string("SELECT N FROM t WHERE S = 'x\0'", 30), "SELECT N FROM t WHERE S = \"x\"",
             "SELECT count(*) FROM t", "SELECT N FROM t WHERE (N = 1) = 1",
             "SELECT N FROM t WHERE N = --1", "SELECT N FROM t WHERE N = Null",
             "SELECT N FROM t WHERE N = ANY (SELECT N, V FROM u)",
             "SELECT N FROM t WHERE N = ANY (UPDATE u SET N = 1)",
             "SELECT N FROM t WHERE N = ANY (SELECT N FROM u ORDER BY Rnd(N))",
             "SELECT N FROM t WHERE " + long_chain, "DELETE FROM t",
             "UPDATE t SET N = 1, WHERE N = 1", "UPDATE v SET M = 1"}},
           {no_such_table, {"SELECT N FROM missing", "SELECT name FROM sqlite_schema"}},
           {no_such_column,
            {"SELECT Q FROM t", "SELECT rowid FROM t", "SELECT u.N FROM t",
             "SELECT N FROM t INNER JOIN u ON t.N = u.N", "UPDATE t SET Q = 1"}}}) {
    for (const std::string& statement : statements) {
      EXPECT_EQ(error_of([&] { trains().change(statement); }), error) << statement.substr(0, 80);
    }
  }
}

}  // namespace
}  // namespace ravelinox::data::testing
