"""Random statements, answered by the engine and by the evaluator below, which knows the language's
meaning and nothing of how the engine gets there.

A statement is made as a tree, written as a text, and evaluated from the tree; so the text's
parentheses, cases and blanks are tested too.
"""

import functools
import operator
import re
import sqlite3
import struct
from collections import Counter
from typing import Callable, NamedTuple

import ground
from ground import none, size
from kills import read

TEXTS = ["", "forlì", "FORLÌ", "Forlì", "forl", "àÈî", "ÀèÎ", "Ÿ", "ÿ", "Œuf", "œUF", "š", "Š", "ß",
         "×", "÷", "50%", "%", "a b", "A B", "it's", "IT'S", "ñandú", "ÑANDÚ", "€", "z", "Z", "a(b",
         "x-1", "True", "null"]
WHOLE = [0, 1, -1, 2, 3, 7, 9, 10, 100, -7, 32767, -32768]
WIDE = WHOLE + [2147483647, -2147483648, 2147483000, 1776816000]
REALS = [0.1, 0.3, 2.5, -1.0, 0.0, 92.9996, 100.0, 1e-3]
SCHEMA = {"t": {"N": "INTEGER", "S": "TEXT", "A": "INTEGER", "B": "BOOLEAN", "R": "REAL",
                "M": "SMALLINT", "IF": "TEXT"},
          "u": {"K": "INTEGER", "V": "TEXT", "W": "INTEGER", "M": "SMALLINT"}}
POOL = {"INTEGER": WIDE, "SMALLINT": WHOLE, "REAL": REALS, "TEXT": TEXTS, "BOOLEAN": [True, False]}
RANGE = {"INTEGER": 1 << 31, "SMALLINT": 1 << 15}


class Overflow(Exception):
    pass


def float32(value):
    """What a 32-bit float column holds: the float's shortest decimal form without an exponent,
    which for a great number is the number itself."""
    single = struct.unpack("f", struct.pack("f", value))[0]
    for digits in range(1, 10 if abs(single) < 1 << 24 else 1):
        short = float(f"{single:.{digits}g}")
        if struct.pack("f", short) == struct.pack("f", single):
            return short
    return single


def stored(value, kind):
    if value is None or kind == "TEXT":
        return value
    if kind == "REAL":
        return float32(value)
    if kind == "BOOLEAN":
        return value != 0
    whole = round(value)  # halves to even
    if not -RANGE[kind] <= whole < RANGE[kind]:
        raise Overflow
    return whole


def order(value):
    """Null first, True before False, texts without regard to case."""
    if value is None:
        return (0, 0)
    if isinstance(value, bool):
        return (1, -1 if value else 0)
    return (1, value.lower() if isinstance(value, str) else value)


def like(text, pattern):
    """Only "%" is special, and the whole text must match."""
    parts = map(re.escape, pattern.lower().split("%"))
    return re.fullmatch(".*".join(parts), str(text).lower(), re.DOTALL) is not None


def known(meaning):
    """Nothing is known where a Null stands."""
    return lambda left, right: None if left is None or right is None else meaning(left, right)


def ordered(meaning):
    return known(lambda left, right: meaning(order(left), order(right)))


def decided_by(truth):
    """One side may decide, whatever the other is."""
    return lambda left, right: (truth if truth in (left, right) else
                                None if None in (left, right) else not truth)


# How tightly each sign binds, and what it means. NOT binds with 4, the sign of a number with 8.
SIGNS = {"XOR": (1, known(operator.ne)), "OR": (2, decided_by(True)), "AND": (3, decided_by(False)),
         "=": (5, ordered(operator.eq)), "<>": (5, ordered(operator.ne)),
         "<": (5, ordered(operator.lt)), "<=": (5, ordered(operator.le)),
         ">": (5, ordered(operator.gt)), ">=": (5, ordered(operator.ge)), "LIKE": (5, known(like)),
         "NOT LIKE": (5, known(lambda text, pattern: not like(text, pattern))),
         "+": (6, known(operator.add)), "-": (6, known(operator.sub)),
         "*": (7, known(operator.mul)), "/": (7, known(operator.truediv))}


class Made(NamedTuple):
    """An expression: its text, how tightly it binds, its value for a row."""

    text: str
    binding: int
    value: Callable


def literal(value):
    text = "'" + value.replace("'", "''") + "'" if isinstance(value, str) else str(value)
    return Made(text, 8 if text[0] == "-" else 9, lambda row: value)


class Maker:
    """Makes expressions over the columns in reach: { text of a name: (key, kind) }."""

    def __init__(self, random, tables):
        self.random, self.tables = random, tables

    def bound(self, made, least):
        """The text of an expression where only one that binds so tightly may stand."""
        if made.binding < least or self.random.random() < 0.05:
            return self.random.choice(["( {} )", "({})"]).format(made.text)
        return made.text

    def joined(self, left, sign, right):
        binding, meaning = SIGNS[sign]
        return Made(f"{self.bound(left, binding)} {sign} {self.bound(right, binding + 1)}", binding,
                    lambda row: meaning(left.value(row), right.value(row)))

    def column(self, scope, *kinds):
        fit = [(name, key) for name, (key, kind) in scope.items() if kind in kinds]
        name, key = self.random.choice(fit)
        return Made(name, 9, lambda row: row[key])

    def number(self, depth, scope):
        choice = self.random.random() if depth > 0 else self.random.random() * 0.6
        if choice < 0.4:
            return self.column(scope, "INTEGER", "SMALLINT", "REAL")
        if choice < 0.6:
            value = self.random.choice(WHOLE + REALS)
            if choice < 0.45:
                text, minus = str(abs(value)), "-" * (value < 0)
                inside = self.random.random() < 0.5
                quoted = f"'{minus}{text}'" if inside else f"{minus}'{text}'"
                return Made(quoted, 9 if inside else 8, lambda row: value)
            return literal(value)
        sign = self.random.choice("+-*/")
        right = (literal(self.random.choice([2, 4, -8])) if sign == "/"
                 else self.number(depth - 1, scope))
        return self.joined(self.number(depth - 1, scope), sign, right)

    def comparison(self, depth, scope):
        choice = self.random.randrange(10)
        if choice < 4:
            left, right = self.number(depth - 1, scope), self.number(depth - 1, scope)
            if left.text.strip("( )")[0] == right.text.strip("( )")[0] == "'":
                return self.pattern(scope)  # these may be two texts, no numbers
        elif choice < 6:
            left, right = self.column(scope, "TEXT"), literal(self.random.choice(TEXTS))
            if self.random.random() < 0.3:
                right = self.column(scope, "TEXT")
        elif choice < 7:
            return self.pattern(scope)
        elif choice < 8:
            tested, no = self.column(scope, *POOL), self.random.choice(["", "NOT "])
            return Made(f"{tested.text} IS {no}NULL", 5,
                        lambda row: (tested.value(row) is None) != bool(no))
        elif choice < 9 or depth < 2:
            if not any(kind == "BOOLEAN" for _, kind in scope.values()):
                return self.pattern(scope)
            left, right = self.column(scope, "BOOLEAN"), literal(self.random.choice([True, False]))
        else:
            return self.any_of(depth, scope)
        if self.random.random() < 0.3:
            left, right = right, left
        return self.joined(left, self.random.choice(["=", "=", "<>", "<", "<=", ">", ">="]), right)

    def pattern(self, scope):
        pattern = self.random.choice(TEXTS + ["1", "-"])
        for _ in range(self.random.randrange(3)):
            at = self.random.randrange(len(pattern) + 1)
            pattern = pattern[:at] + "%" + pattern[at + self.random.randrange(2):]
        sign = self.random.choice(["LIKE", "NOT LIKE"])
        binding, meaning = SIGNS[sign]
        text = self.column(scope, "TEXT", "INTEGER")
        return Made(f"{text.text} {sign} {literal(pattern).text}", binding,
                    lambda row: meaning(text.value(row), pattern))

    def any_of(self, depth, scope):
        """A selection from u; its conditions may reach the columns outside by their full names."""
        inner = dict(scope) | {name: (("u", name), kind) for name, kind in SCHEMA["u"].items()}
        if self.random.random() < 0.6:
            left, chosen = self.number(depth - 1, scope), self.random.choice(["K", "W", "M"])
        else:
            left, chosen = self.column(scope, "TEXT"), "V"
        where, holds = self.where(depth - 1, inner)
        _, equal = SIGNS["="]

        def value(row):
            found = [equal(left.value(row), line[("u", chosen)])
                     for line in self.tables["u"] if holds(row | line) is True]
            return functools.reduce(decided_by(True), found, False)
        head = "SELECT" + self.random.choice(["", " DISTINCT"])
        return Made(f"{self.bound(left, 6)} = ANY ({head} {chosen} FROM u{where})", 5, value)

    def condition(self, depth, scope):
        choice = self.random.random()
        if depth <= 0 or choice < 0.35:
            return self.comparison(depth, scope)
        inner = self.condition(depth - 1, scope)
        if choice < 0.5:
            return Made("NOT " + self.bound(inner, 4), 4,
                        lambda row: None if inner.value(row) is None else not inner.value(row))
        return self.joined(inner, self.random.choice(["XOR", "OR", "AND"]),
                           self.condition(depth - 1, scope))

    def where(self, depth, scope):
        if self.random.random() < 0.15:
            return "", lambda row: True
        made = self.condition(depth, scope)
        return f" WHERE {made.text}", made.value


def spelled(statement, random):
    """The same statement in other letter cases and with other blanks, outside its texts."""
    def other(found):
        text, comparison, blank, word = found.groups()
        if comparison:
            return random.choice([comparison, comparison.strip()])
        return text or random.choice(["  ", "\t", "\n"] if blank else
                                     [word, word.upper(), word.lower(), word.capitalize()])
    return re.sub(r"('[^']*')|( [<=>]+ )|( )|(\w+)", other, statement)


def in_reach(*tables):
    """Names that mean one column only, alone and with their table."""
    names = [name for table in tables for name in SCHEMA[table]]
    scope = {f"{table}.{name}": ((table, name), kind)
             for table in tables for name, kind in SCHEMA[table].items()}
    return scope | {name: ((table, name), kind) for table in tables
                    for name, kind in SCHEMA[table].items() if names.count(name) == 1}


def select(maker):
    """A statement, all rows that it could give, how many of them, and by which of them ordered."""
    random, tables = maker.random, maker.tables
    source, rows, names = "t", tables["t"], in_reach("t")
    if random.random() < 0.2:
        left, right = random.choice([("A", "K"), ("S", "V"), ("M", "W"), ("M", "M")])
        names = in_reach("t", "u")
        source += f" INNER JOIN u ON t.{left} = U.{right}"
        rows = [one | other for one in rows for other in tables["u"]
                if SIGNS["="][1](one[("t", left)], other[("u", right)])]
    where, holds = maker.where(3, names)
    chosen = random.sample(sorted(names), random.randrange(1, 4))
    found = [[row[names[name][0]] for name in chosen] for row in rows if holds(row) is True]
    distinct, top, by, tail = random.random() < 0.2, None, None, ""
    if distinct:
        found = list({tuple(map(order, row)): row for row in found}.values())
    if random.random() < 0.4:
        by, descending = random.randrange(len(chosen)), random.random() < 0.5
        found.sort(key=lambda row: order(row[by]), reverse=descending)
        tail = f" ORDER BY {chosen[by]}" + (" desc" if descending else random.choice(["", " ASC"]))
    if random.random() < 0.2:
        top = random.randrange(6)
    head = "SELECT" + " DISTINCT" * distinct + (f" TOP {top}" if top is not None else "")
    return f"{head} {', '.join(chosen)} FROM {source}{where}{tail}", found, top, by


def agrees(given, found, top, by):
    """Whether an answer holds the right rows, as many, in the right order; equals are equal."""
    given = [tuple(map(order, row)) for row in given]
    found = [tuple(map(order, row)) for row in found]
    count = len(found) if top is None else min(top, len(found))
    return (len(given) == count and Counter(given) <= Counter(found)
            and (by is None or all(one[by] == other[by] for one, other in zip(given, found))))


def update(maker):
    """A statement and the table as it is afterwards, None when the statement overflows."""
    random, scope = maker.random, in_reach("t")
    changed = random.sample(sorted(SCHEMA["t"]), random.randrange(1, 3))
    values = []
    for name in changed:
        kind = SCHEMA["t"][name]
        if kind in ("TEXT", "BOOLEAN"):
            values.append(literal(random.choice(POOL[kind])))
        else:
            values.append(maker.number(2, scope))
    where, holds = maker.where(2, scope)
    sets = ", ".join(f"{n} = {v.text}" for n, v in zip(changed, values))
    statement = f"UPDATE t SET {sets}{where}"
    try:
        after = [row | {("t", n): stored(v.value(row), SCHEMA["t"][n]) for n, v in zip(changed, values)}
                 if holds(row) is True else row for row in maker.tables["t"]]
    except Overflow:
        after = None
    return statement, after


def fill(random, file):
    """New tables, written by another program, and what they hold."""
    tables = {table: [{(table, name): None if random.random() < 0.15 else random.choice(POOL[kind])
                       for name, kind in columns.items()} for _ in range(random.randrange(12))]
              for table, columns in SCHEMA.items()}
    with sqlite3.connect(file) as other:
        for table, lines in tables.items():
            other.execute(f"DELETE FROM {table}")
            other.executemany(f"INSERT INTO {table} VALUES ({', '.join('?' * len(SCHEMA[table]))})",
                              [list(line.values()) for line in lines])
    other.close()
    return tables


def outcome(engine, statement):
    """The rows, 32-bit floats in their shortest form, or the failure."""
    try:
        return [[float32(value) if isinstance(value, float) else value for value in row]
                for row in read(engine.DLLRS4, statement)]
    except ground.host.Failure as failure:
        return str(failure)


def run():
    station = ground.new_station("language")
    file = station + "/linea.db"
    with sqlite3.connect(file) as other:
        for table, columns in SCHEMA.items():
            kinds = ", ".join(f'"{name}" {kind}' for name, kind in columns.items())
            other.execute(f"CREATE TABLE {table} ({kinds})")
        other.execute("CREATE INDEX t_S ON t (S COLLATE NOCASE, N)")
    other.close()
    engine, random = ground.connected(station), ground.draws("language")
    count, different, everything = size(100_000, 5_000), 0, "SELECT * FROM t"
    for at in range(count):
        if at % 100 == 0:
            maker = Maker(random, fill(random, file))
        if random.random() < 0.8:
            statement, *answer = select(maker)
            statement = spelled(statement, random)
            given, right = outcome(engine, statement), True
        else:
            statement, after = update(maker)
            statement = spelled(statement, random)
            number = ground.number_of(engine.DLLRS3.Open, statement)
            right = number == (6 if after is None else 0)
            maker.tables["t"] = maker.tables["t"] if after is None else after
            answer = [[list(row.values()) for row in maker.tables["t"]], None, None]
            given = outcome(engine, "SELECT * FROM t")
        if not right or not isinstance(given, list) or not agrees(given, *answer):
            different += 1
            ground.note(f"statement {at} differs: {statement!r}\n  {given}\n  {answer}")
            maker = Maker(random, fill(random, file))
    none(f"language: statements answered differently, of {count}", different)
