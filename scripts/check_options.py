#!/usr/bin/env python3
"""Checks that every option of z7cf has a test.

check_options.py Z7CF [ROOT]
    Z7CF    the built program, whose help lists the options
    ROOT    the project, by default the one that holds this script
check_options.py --self-test

An option counts as tested when one test case (a TEST of a source, or a golden case's file) holds both the name of the command
and the option; an option that all commands share needs one test. What lines and branches the tests reach is measured by
coverage.sh.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

# Options without a test of their own, as (command, option), with the reason.
EXCEPTED_OPTIONS = {}

# Options of the program that need a test with each command nevertheless, because each command handles them in its own way.
OWN_TO_EACH_COMMAND = {"--json"}


def options(program):
    """The program's commands and their options, as pairs, from its own help texts."""

    def help_text(*words):
        environment = {**os.environ, "LC_ALL": "C.UTF-8"}
        return subprocess.run(
            [program, *words, "--help"],
            check=True,
            capture_output=True,
            encoding="utf-8",
            stdin=subprocess.DEVNULL,
            env=environment,
        ).stdout

    def options_in(text):
        # Lines that declare an option, not examples that use one.
        return set(re.findall(r"^\s+(?:-\w,\s*)?(--[a-z][a-z-]*)", text, flags=re.M))

    text = help_text()
    commands = []
    listed = re.split(r"^\s*subcommands:\s*$", text, flags=re.M | re.I)
    if len(listed) == 2:
        block = listed[1].lstrip("\n").split("\n\n")[0]  # examples follow it
        commands = re.findall(r"^  ([a-z][a-z-]*)\b", block, flags=re.M)
    if not commands:
        raise SystemExit(f"the help of {program} lists no commands")
    common = options_in(listed[0])
    pairs = {("", option) for option in common}
    for command in commands:
        pairs |= {(command, option) for option in options_in(help_text(command)) - (common - OWN_TO_EACH_COMMAND)}
    return pairs


def cases(root):
    """The texts of the test cases: each TEST of a source, and each golden case's file."""
    for path in sorted((root / "tests").rglob("*")):
        if path.suffix in (".cpp", ".h"):
            text = path.read_text(encoding="utf-8")
            starts = [m.start() for m in re.finditer(r"^(?:TEST(?:_F|_P)?|RC_GTEST_\w+|INSTANTIATE_\w+)\(", text, flags=re.M)]
            for start, end in zip(starts, starts[1:] + [len(text)]):
                yield text[start:end]
        elif path.suffix in (".case", ".test", ".golden"):
            yield path.read_text(encoding="utf-8")


def gaps(root, program):
    texts = list(cases(root))
    for command, option in sorted(options(program)):
        both = (
            re.search(rf"(?<![\w-]){re.escape(option)}(?![\w-])", text)
            and (not command or re.search(rf"(?<![\w-]){command}(?![\w-])", text))
            for text in texts
        )
        if (command, option) not in EXCEPTED_OPTIONS and not any(both):
            holds = "both" if command else "it"
            yield f"z7cf {command} {option}: no test case holds {holds}".replace("  ", " ")


def self_test():
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "tests").mkdir()
        (root / "tests/a.cpp").write_text(
            'TEST(A, b) { run("list", "--year"); }\nTEST(A, c) { run("show", "--json"); }\n'
        )
        program = root / "z7cf"
        program.write_text(
            "#!/bin/sh\ncase $1 in --help) printf 'Options:\\n  -l,--lang\\n  --json\\nSubcommands:\\n  list   lists\\n"
            "  show   shows\\n\\nExamples:\\n  prog list --deep\\n';;\n"
            "list) printf '  --year INT\\n  --lang\\n  --json\\n';; show) echo '  --json';; esac\n"
        )
        program.chmod(0o755)
        found = sorted(gaps(root, str(program)))
        expected = ["z7cf --lang: no test case holds it", "z7cf list --json: no test case holds both"]
    if found != expected:
        print(f"found {found}")
        return 1
    return 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    if not arguments:
        print("which program?", file=sys.stderr)
        return 2
    root = pathlib.Path(arguments[1]) if arguments[1:] else pathlib.Path(__file__).resolve().parent.parent
    found = list(gaps(root, arguments[0]))
    print("\n".join(found) if found else "Every option has a test.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
