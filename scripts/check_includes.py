#!/usr/bin/env python3
"""Checks the direction of the includes in src/, folder by folder. An include that goes upwards fails the test run.

check_includes.py [SRC]      checks a source tree, by default the one beside this script
check_includes.py --self-test  plants one wrong include of each kind in a temporary tree and checks that each is found
"""

import pathlib
import re
import sys
import tempfile

# From the bottom up: a folder of the library may include itself and the folders before it.
LAYERS = ["support", "ports", "statements", "model", "data", "providers", "dialog"]

# What each adapter may include besides itself: the arrows of the picture in ARCHITECTURE.md.
ADAPTERS = {
    "shared": ["z7cashflow/support", "z7cashflow/ports"],
    "tsql": ["z7cashflow/support", "adapters/shared"],
    "odbc": ["z7cashflow/support", "z7cashflow/ports", "adapters/shared", "adapters/tsql"],
    "sqlite": ["z7cashflow/support", "z7cashflow/ports", "adapters/shared", "adapters/tsql"],
    "terminal": ["z7cashflow/support", "z7cashflow/ports"],
    "wx": ["z7cashflow/support", "z7cashflow/ports"],
    "ado": ["z7cashflow/support", "z7cashflow/ports", "adapters/shared"],
}

# Headers of other projects and of the system, by the folder whose .cpp files may include them (the whole name, or a folder).
# Our own headers may not include them, except as listed below.
FOREIGN = {
    "z7cashflow/support": ["libxml/", "utf8proc.h"],
    "adapters/sqlite": ["sqlite3.h", "fcntl.h", "sys/stat.h", "unistd.h", "windows.h", "aclapi.h"],  # the system's for fileSystem*.cpp
    "adapters/odbc": ["sql.h", "sqlext.h", "sqlucode.h"],
    "adapters/terminal": ["utf8proc.h"],
    "adapters/wx": ["wx/", "gtk/gtk.h", "commctrl.h", "oleacc.h"],
    "host": ["CLI/CLI.hpp", "nlohmann/json.hpp", "toml++/toml.h", "csv.h", "utf8proc.h", "sys/ioctl.h", "unistd.h", "windows.h", "shellapi.h", "fcntl.h", "io.h"],  # the system's for main*.cpp and for *_windows.cpp
}
FOREIGN_IN_HEADERS = {
    "adapters/wx": ["wx/colour.h", "wx/font.h", "wx/gdicmn.h", "wx/string.h"],  # value types of the window's own parts
    "adapters/ado": ["windows.h", "ole2.h"],  # automation/system.h; the types of OLE Automation are what the folder is about
    "host": ["nlohmann/json_fwd.hpp"],  # the host's own headers hand JSON values about
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
    """The folder to which a rule refers: "host" or "com", or the first two parts, as in "adapters/sqlite"."""
    parts = path.split("/")
    return parts[0] if parts[0] in ("com", "host", "texts", "workbench") else "/".join(parts[:2])


def is_known(folder):
    top, _, name = folder.partition("/")
    return {"z7cashflow": name in LAYERS, "adapters": name in ADAPTERS, "workbench": not name, "texts": not name, "host": not name, "com": not name}.get(top, False)


def may_see(folder, target):
    if folder in (target, "host"):
        return is_known(target)
    if folder == "com":
        return is_known(target) and target != "host"
    if folder == "workbench":
        return target.split("/")[0] == "z7cashflow" and is_known(target) and target != "z7cashflow/dialog"
    if folder == "texts":
        return target in ("z7cashflow/support", "z7cashflow/ports")
    top, name = folder.split("/", 1)
    if top == "adapters":
        return target in ADAPTERS[name]
    target_top, _, target_name = target.partition("/")
    if target_top != "z7cashflow" or target_name not in LAYERS:
        return False
    return LAYERS.index(target_name) <= LAYERS.index(name)


def matches(name, prefixes):
    return any(name == prefix or (prefix.endswith("/") and name.startswith(prefix)) for prefix in prefixes)


def complaint(file, quoted, angled):
    """What is wrong with one include of a file (path below src), or None."""
    folder = folder_of(file)
    if not is_known(folder):
        return f"{folder} is an unknown folder: add it to check_includes.py and to ARCHITECTURE.md"
    own = quoted or angled
    if own.split("/")[0] in ("z7cashflow", "workbench", "texts", "adapters", "host", "com"):
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
        "z7cashflow/statements/B.h": '#include "z7cashflow/model/modPublic.h"',
        "z7cashflow/model/c.h": '#  include "z7cashflow/data/DataProvider.h"',
        "z7cashflow/data/d.cpp": '#include "z7cashflow/providers/VoucherProvider.h"',
        "z7cashflow/providers/e.cpp": '#include "host/Command.h"',
        "z7cashflow/providers/f.cpp": '#include "adapters/sqlite/Connection.h"',
        "z7cashflow/data/g.cpp": "#include <unistd.h>",
        "z7cashflow/model/h.cpp": "#include <libxml/tree.h>",
        "z7cashflow/support/i.h": "#include <libxml/tree.h>",
        "z7cashflow/support/j.cpp": '#include "conversions.h"',
        "z7cashflow/support/k.cpp": "#include <z7cashflow/support/Date.h>",
        "z7cashflow/extra/l.cpp": "#include <string>",
        "workbench/a.cpp": '#include "adapters/sqlite/Connection.h"',
        "workbench/b.cpp": '#include "host/cli/Command.h"',
        "z7cashflow/providers/w.cpp": '#include "workbench/Amount.h"',
        "texts/a.cpp": '#include "host/text/HostText.h"',
        "adapters/terminal/x.cpp": '#include "texts/Language.h"',
        "adapters/sqlite/m.cpp": '#include "z7cashflow/model/CashFlow.h"',
        "adapters/sqlite/n.cpp": '#include "adapters/terminal/Box.h"',
        "adapters/sqlite/o.h": "#include <sqlite3.h>",
        "adapters/sqlite/u.cpp": '#include "adapters/odbc/Session.h"',
        "adapters/sqlite/v.cpp": "#include <utf8proc.h>",
        "adapters/tsql/p.cpp": '#include "host/Command.h"',
        "adapters/tsql/w.h": '#include "z7cashflow/ports/Connection.h"',
        "adapters/shared/y.cpp": '#include "adapters/tsql/tokens.h"',
        "adapters/shared/z.cpp": "#include <utf8proc.h>",
        "adapters/terminal/b.cpp": '#include "adapters/shared/recordset/RowSet.h"',
        "adapters/terminal/c.cpp": '#include "adapters/tsql/tokens.h"',
        "adapters/odbc/d.cpp": "#include <sqlite3.h>",
        "adapters/extra/e.cpp": '#include "z7cashflow/ports/Connection.h"',
        "host/f.cpp": '#include "adapters/extra/Session.h"',
        "com/a.cpp": '#include "host/cli/Command.h"',
        "com/b.h": "#include <windows.h>",
        "workbench/p.cpp": '#include "com/Object.h"',
        "host/g.cpp": "#include <sqlite3.h>",
        "host/h.h": "#include <nlohmann/json.hpp>",
    }
    right = {
        "z7cashflow/support/q.cpp": '#include <libxml/tree.h>\n#include <cmath>\n#include "z7cashflow/support/Date.h"',
        "z7cashflow/providers/r.h": '#include "z7cashflow/support/Date.h"\n#include "z7cashflow/data/DataProvider.h"',
        "adapters/sqlite/s.cpp": '#include <sqlite3.h>\n#include "adapters/shared/recordset/RowSet.h"\n// #include <windows.h>',
        "adapters/odbc/i.cpp": '#include <sqlext.h>\n#include "adapters/tsql/Shape.h"\n#include "z7cashflow/ports/Connection.h"',
        "adapters/tsql/j.cpp": '#include "adapters/shared/recordset/Column.h"\n#include "adapters/tsql/k.h"',
        "adapters/terminal/m.cpp": '#include <utf8proc.h>\n#include "z7cashflow/ports/MessageBox.h"',
        "host/t.cpp": '#include "adapters/sqlite/Connection.h"\n#include "adapters/tsql/Shape.h"\n#include <CLI/CLI.hpp>',
        "workbench/o.cpp": '#include "workbench/Amount.h"\n#include "z7cashflow/ports/Connection.h"',
        "texts/p.h": '#include "texts/Language.h"\n#include "z7cashflow/ports/Z7Login.h"',
        "host/n.h": "#include <nlohmann/json_fwd.hpp>",
        "com/c.cpp": '#include "adapters/ado/Connection.h"\n#include "z7cashflow/dialog/clsMain.h"\n#include "com/Object.h"',
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
