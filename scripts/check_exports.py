#!/usr/bin/env python3
"""Checks what the shared libraries export, and that every installed header says so.

- A library exports names of this project only, none of a type whose header is internal (cmake/internalHeaders.txt), and its
  soname carries the number of the binary interface.
- The type information of Error and of the ports is exported, so that exceptions and casts work across libraries.
- Each installed header encloses its declarations in Z7_PUBLIC_BEGIN and Z7_PUBLIC_END, and no internal one does.

    check_exports.py NUMBER LIBRARY...   the number of the soname, and the libraries
    check_exports.py --self-test
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
OURS = re.compile(r"_Z(?:T[ISVT]|GV)?(?:Thn?\d+_|Tvn?\d+_n?\d+_)?Z?NK?2z78cashflow")
# Whose type information others must find: exceptions that cross libraries, and classes that are used through a base class.
TYPES = {
    "libz7cashflow": ["Error", "CashFlowCollection"],
    "libz7cashflow-databases": ["Connection", "Recordset"],
    "libz7cashflow-texts": ["TextLookup", "FormattedTextLookup"],
    "libz7cashflow-window": ["MessageBox", "DialogFactory", "DialogForm"],
}


def internal_headers():
    lines = (ROOT / "cmake" / "internalHeaders.txt").read_text(encoding="utf-8").splitlines()
    return [line for line in lines if line and not line.startswith("#")]


def exported(library):
    """The mangled names that a library defines for others."""
    output = subprocess.run(["nm", "-D", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    return [line.split()[-1].split("@")[0] for line in output.splitlines()]


def soname(library):
    output = subprocess.run(["readelf", "-d", library], check=True, capture_output=True, text=True).stdout
    found = re.search(r"\(SONAME\).*\[(.*)\]", output)
    return found.group(1) if found else ""


def wrong_symbols(names, internal_types):
    """Those of the mangled names that should not be exported, each with the reason."""
    for name in names:
        if not OURS.match(name):
            yield f"exports {name}, which is not a name of this project"
            continue
        for kind in internal_types:
            if re.match(OURS.pattern + f"{len(kind)}{kind}(?![a-z])", name):
                yield f"exports {name} of the internal type {kind}"


def wrong_headers(src, internal):
    for folder in ("z7cashflow", "workbench", "texts"):
        for path in sorted((src / folder).rglob("*.h")):
            file = path.relative_to(src).as_posix()
            text = path.read_text(encoding="utf-8")
            begins, ends = text.count("\nZ7_PUBLIC_BEGIN\n"), text.count("\nZ7_PUBLIC_END\n")
            if file in internal and (begins or ends):
                yield f"src/{file}: is internal, but exports its declarations"
            elif file not in internal and "\nnamespace z7::" in text and (begins, ends) != (1, 1):
                yield f"src/{file}: is installed; enclose its declarations in Z7_PUBLIC_BEGIN and Z7_PUBLIC_END"


def findings(number, libraries):
    internal = internal_headers()
    yield from wrong_headers(ROOT / "src", internal)
    types = [pathlib.Path(file).stem for file in internal]
    for library in libraries:
        name = pathlib.Path(library).name
        symbols = exported(library)
        if not symbols:
            yield f"{name}: exports nothing"
        if not soname(library).endswith(f".so.{number}"):
            yield f"{name}: its soname is {soname(library) or 'missing'}"
        for complaint in wrong_symbols(symbols, types):
            yield f"{name}: {complaint}"
        for kind in TYPES.get(name.split(".")[0], []):
            if f"_ZTIN2z78cashflow{len(kind)}{kind}E" not in symbols:
                yield f"{name}: does not export the type information of {kind}"


def self_test():
    right = ["_ZN2z78cashflow5ErrorC1Ev", "_ZNK2z78cashflow4Date3dayEv", "_ZTIN2z78cashflow5ErrorE",
             "_ZThn16_N2z78cashflow8CashFlow4SaveEv", "_ZZN2z78cashflow1fEvE1x", "_ZGVZN2z78cashflow1fEvE1x",
             "_ZN2z78cashflow7GlSaverC1Ev"]
    wrong = ["_ZNSt6vectorIN2z78cashflow4DateESaIS2_EED1Ev", "main", "_ZN2z78cashflow6GlSave4saveEv", "_ZTIN2z78cashflow6GlSaveE"]
    blamed = [line.split()[1].rstrip(",") for line in wrong_symbols(right + wrong, ["GlSave"])]
    if blamed != wrong:
        print(f"blamed: {blamed}")
    return 0 if blamed == wrong else 1


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    number, *libraries = arguments
    wrong = list(findings(number, libraries))
    print("\n".join(wrong) if wrong else f"{len(libraries)} libraries export the public names only.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
