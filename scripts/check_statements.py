#!/usr/bin/env python3
"""Checks that the statements of the library are only in src/z7cashflow/statements, and that each is tested.

check_statements.py [ROOT]     checks a project, by default the one that holds this script
check_statements.py --self-test  plants one finding of each kind in a temporary project and checks that each is found

A string literal elsewhere in src/z7cashflow that looks like part of a statement is a finding. So is a statement whose constant
and name differ, or whose constant does not occur in tests/statements.
"""

import pathlib
import re
import sys
import tempfile

LITERAL = re.compile(r'//[^\n]*|/\*.*?\*/|("(?:\\.|[^"\\\n])*"(?:\s*"(?:\\.|[^"\\\n])*")*)', re.S)
STATEMENT = re.compile(
    r"""^\s*(select|insert|delete|update|drop|truncate|merge|exec|execute|create|alter|grant|if\s+(not\s+)?exists)(\s|\()
      | \b(inner|left|outer|cross)\s+join\b | \b(order|group)\s+by\b | \bvalues\s*\( | \binsert\s+into\b | \bdelete\s+from\b
      | \bselect\s.*\sfrom\b | (^|\s)(where|and|or)\s+[\w.\[\]]+\s*(=|<|>|is\s+(not\s+)?null|in\s*\(|like\b) | (^|[\s=(,])N'
      | [\w\]]\s*=\s*(N')?$""",
    re.I | re.X,
)
CONSTANT = re.compile(r'^inline\s+constexpr\s+Statement<[^>]*>\s+(\w+)\s*\{\s*"([^"]*)"', re.M)

# Literals outside the folder that look like a statement but are not, as (file below src/z7cashflow, text), with the reason.
EXCEPTED = {}


def literals(text):
    """The string literals of a source with the lines on which they begin; adjacent literals are joined."""
    for found in LITERAL.finditer(text):
        if found.group(1) is not None:
            yield text.count("\n", 0, found.start()) + 1, re.sub(r'"\s*"', "", found.group(1)).strip('"')


def findings(root):
    library = root / "src" / "z7cashflow"
    for path in sorted(library.rglob("*")):
        file = path.relative_to(library).as_posix()
        if path.suffix not in (".h", ".cpp") or file.startswith("statements/"):
            continue
        for line, text in literals(path.read_text(encoding="utf-8")):
            if STATEMENT.search(text) and (file, text) not in EXCEPTED:
                yield f'src/z7cashflow/{file}:{line}: "{text}" belongs to src/z7cashflow/statements'
    tests = " ".join(path.read_text(encoding="utf-8") for path in (root / "tests" / "statements").glob("*.cpp"))
    for path in sorted((library / "statements").glob("*.h")):
        for constant, name in CONSTANT.findall(path.read_text(encoding="utf-8")):
            where = f"src/z7cashflow/statements/{path.name}: {constant}"
            if constant != name:
                yield f'{where} is named "{name}"; constant and name are the same word'
            if not re.search(rf"\btext\({constant}\b", tests):
                yield f"{where} is in no test of tests/statements"


def self_test():
    wrong = {
        "data/a.cpp": 'run("select * from code");',
        "data/b.cpp": 'run("  Drop table " + name);',
        "model/c.cpp": 'text += " and code.iyear=" + year;',
        "model/d.h": 'inline const char* text = " inner join code on ";',
        "providers/e.cpp": 'run(x + " where ccode=N\'");',
        "providers/f.cpp": "text = \"N'\" + value + \"'\";",
        "providers/g.cpp": 'text = "iperiod=" + period;',
        "statements/hStatements.h": 'inline constexpr Statement<Table> untested{"untested", "select 1 from {t}"};',
        "statements/iStatements.h": 'inline constexpr Statement<> tested{"other", "select 1"};',
    }
    right = {
        "data/j.cpp": '// "select * from code"\nrun("cItemCode", "Drop"); raise("a value where none is wanted");',
        "statements/kStatements.h": 'inline constexpr Statement<Table, Number> tested{\n    "tested", "select 1 from {t} where a={n}"};',
        "support/k.cpp": 'raise("The records of {0} cannot be changed: "\n      "select the key");',
        "support/l.cpp": 'raise("There is no connection to work on: a row is read from its element");',
        "support/m.cpp": "out = \"<?xml version='1.0' encoding='gb2312' ?>\";",
    }
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for file, text in {**wrong, **right}.items():
            path = root / "src" / "z7cashflow" / file
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text + "\n", encoding="utf-8")
        (root / "tests" / "statements").mkdir(parents=True)
        (root / "tests" / "statements" / "textsTest.cpp").write_text("EXPECT_EQ(text(tested, 1), 2);", encoding="utf-8")
        found = {line.split(":")[0][len("src/z7cashflow/") :] for line in findings(root)}
    missed, blamed = set(wrong) - found, found - set(wrong)
    for file in sorted(missed):
        print(f"not found: {file}: {wrong[file]}")
    for file in sorted(blamed):
        print(f"wrongly blamed: {file}")
    return 1 if missed or blamed else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    root = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parent.parent
    headers = list((root / "src" / "z7cashflow" / "statements").glob("*.h"))
    count = sum(len(CONSTANT.findall(path.read_text(encoding="utf-8"))) for path in headers)
    if count == 0:
        print(f"no statements in {root}")
        return 2
    wrong = list(findings(root))
    print("\n".join(wrong) if wrong else f"{count} statements, each in one place and tested.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
