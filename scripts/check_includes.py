#!/usr/bin/env python3
"""Checks the direction of the includes in src/, folder by folder. An arrow that points up fails the test run.

check_includes.py [SRC]      checks a source tree, by default the one beside this script
check_includes.py --self-test  plants one wrong arrow of each kind in a temporary tree and looks whether each is found
"""

import pathlib
import re
import sys
import tempfile

# From the bottom up: a folder of the library sees itself and what stands before it.
LAYERS = ["support", "ports", "model", "data", "providers", "dialog"]

# What every adapter may see besides itself.
ADAPTERS_SEE = ["z7cashflow/support", "z7cashflow/ports", "adapters/cursor", "adapters/tsql"]

# Headers of other projects and of the system, by the folder whose .cpp files may include them (a prefix of the name).
# A header of ours includes nothing of the kind, but for the exceptions below.
FOREIGN = {
    "z7cashflow/support": ["libxml/", "utf8proc.h"],
    "adapters/tsql": ["utf8proc.h"],
    "adapters/cursor": ["utf8proc.h"],
    "adapters/sqlite": ["sqlite3.h", "utf8proc.h"],
    "adapters/odbc": ["sql.h", "sqlext.h", "sqlucode.h"],
    "adapters/terminal": ["unistd.h", "sys/", "termios.h", "utf8proc.h"],
    "host": ["CLI/", "nlohmann/", "toml++/", "csv.h", "sqlite3.h", "utf8proc.h", "unistd.h", "fcntl.h", "signal.h", "sys/"],
}
FOREIGN_IN_HEADERS = {
    "host": ["nlohmann/json_fwd.hpp", "nlohmann/json.hpp"],  # the host's own headers hand JSON values about
}

STANDARD = set(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
    clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem forward_list fstream functional
    future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore
    set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view strstream
    syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version""".split()
)

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)')


def folder_of(path):
    """The folder that a rule speaks of: "host", or the first two parts, as in "adapters/sqlite"."""
    parts = path.split("/")
    return parts[0] if parts[0] == "host" else "/".join(parts[:2])


def may_see(folder, target):
    if folder == target or folder == "host":
        return True
    top, name = folder.split("/", 1)
    if top == "adapters":
        return target in ADAPTERS_SEE
    target_top, _, target_name = target.partition("/")
    if target_top != "z7cashflow" or target_name not in LAYERS:
        return False
    return LAYERS.index(target_name) <= LAYERS.index(name)


def matches(name, prefixes):
    return any(name == prefix or (prefix.endswith("/") and name.startswith(prefix)) for prefix in prefixes)


def complaint(file, quoted, angled):
    """What is wrong with one include of a file (path from src), or nothing."""
    folder = folder_of(file)
    top = folder.split("/")[0]
    if top not in ("z7cashflow", "adapters", "host") or (top == "z7cashflow" and folder.split("/")[1] not in LAYERS):
        return f"{folder} is no folder that the rules know: add it to check_includes.py and to ARCHITECTURE.md"
    own = quoted or angled
    if own.split("/")[0] in ("z7cashflow", "adapters", "host"):
        if angled:
            return f"<{angled}>: headers of this project are included in quotes"
        if not may_see(folder, folder_of(own)):
            return f'"{own}": {folder} must not see {folder_of(own)}'
        return None
    if quoted:
        return f'"{quoted}": headers of this project are included by their path from src/'
    if angled in STANDARD:
        return None
    if file.endswith(".h"):
        if matches(angled, FOREIGN_IN_HEADERS.get(folder, [])):
            return None
        return f"<{angled}>: a header includes nothing of other projects or the system; forward-declare or hide it"
    if matches(angled, FOREIGN.get(folder, [])):
        return None
    return f"<{angled}>: {folder} must not include it"


def findings(src):
    for path in sorted(src.rglob("*")):
        if path.suffix not in (".h", ".cpp", ".hpp", ".inc"):
            continue
        file = path.relative_to(src).as_posix()
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            found = INCLUDE.match(line)
            wrong = complaint(file, found.group(1), found.group(2)) if found else None
            if wrong:
                yield f"src/{file}:{number}: {wrong}"


def self_test():
    wrong = {
        "z7cashflow/support/a.cpp": '#include "z7cashflow/ports/Connection.h"',
        "z7cashflow/ports/b.h": '#include "z7cashflow/model/CashFlow.h"',
        "z7cashflow/model/c.h": '#  include "z7cashflow/data/DataProvider.h"',
        "z7cashflow/data/d.cpp": '#include "z7cashflow/providers/VoucherProvider.h"',
        "z7cashflow/providers/e.cpp": '#include "z7cashflow/dialog/clsMain.h"',
        "z7cashflow/providers/f.cpp": '#include "adapters/sqlite/Connection.h"',
        "z7cashflow/data/g.cpp": "#include <unistd.h>",
        "z7cashflow/model/h.cpp": "#include <libxml/tree.h>",
        "z7cashflow/support/i.h": "#include <libxml/tree.h>",
        "z7cashflow/support/j.cpp": '#include "conversions.h"',
        "z7cashflow/support/k.cpp": "#include <z7cashflow/support/Date.h>",
        "z7cashflow/extra/l.cpp": "#include <string>",
        "adapters/sqlite/m.cpp": '#include "z7cashflow/model/CashFlow.h"',
        "adapters/sqlite/n.cpp": '#include "adapters/terminal/Box.h"',
        "adapters/sqlite/o.h": "#include <sqlite3.h>",
        "adapters/tsql/p.cpp": '#include "host/Command.h"',
    }
    right = {
        "z7cashflow/support/q.cpp": '#include <libxml/tree.h>\n#include <cmath>\n#include "z7cashflow/support/Date.h"',
        "z7cashflow/dialog/r.h": '#include "z7cashflow/support/Date.h"\n#include "z7cashflow/providers/VoucherProvider.h"',
        "adapters/sqlite/s.cpp": '#include <sqlite3.h>\n#include "adapters/cursor/Cursor.h"\n// #include <windows.h>',
        "host/t.cpp": '#include "adapters/sqlite/Connection.h"\n#include "z7cashflow/dialog/clsMain.h"\n#include <CLI/CLI.hpp>',
    }
    with tempfile.TemporaryDirectory() as folder:
        src = pathlib.Path(folder)
        for file, text in {**wrong, **right}.items():
            (src / file).parent.mkdir(parents=True, exist_ok=True)
            (src / file).write_text("#pragma once\n" + text + "\n", encoding="utf-8")
        found = {line.split(":")[0][len("src/") :] for line in findings(src)}
    missed, blamed = set(wrong) - found, found - set(wrong)
    for file in sorted(missed):
        print(f"not found: {file}: {wrong[file]}")
    for file in sorted(blamed):
        print(f"wrongly blamed: {file}")
    return 1 if missed or blamed else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    src = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parent.parent / "src"
    files = sum(1 for path in src.rglob("*") if path.suffix in (".h", ".cpp"))
    if files == 0:
        print(f"no sources in {src}")
        return 2
    wrong = list(findings(src))
    print("\n".join(wrong) if wrong else f"{files} files, every include points down.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
