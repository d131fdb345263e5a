#!/usr/bin/env python3
"""Checks that every public operation of the library and every option of z7cf has a test.

check_coverage.py [--program Z7CF] [ROOT]
    ROOT    the project, by default the one that holds this script
    Z7CF    the built program; without it its options are not looked at
check_coverage.py --self-test

An operation counts as tested when its name occurs as a word in a source below tests/; the headers in
cmake/internalHeaders.txt are not looked at. An option counts as tested when one test case (a TEST of a source, or a
golden case's file) holds both the name of the command and the option; an option that all commands share needs one test.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

# Operations without a test of their own, with the reason.
EXCEPTED_OPERATIONS = {}

# Options without a test of their own, as (command, option), with the reason.
EXCEPTED_OPTIONS = {}

# Options of the program that need a test with each command all the same, because each command answers them in its own way.
OWN_TO_EACH_COMMAND = {"--json"}

NO_OPERATIONS = {"operator", "defined", "noexcept", "decltype", "alignas", "static_assert", "explicit", "if", "return"}


def without_comments(text):
    text = re.sub(r'R"(\w*)\(.*?\)\1"', '""', text, flags=re.S)
    text = re.sub(r'//[^\n]*|/\*.*?\*/|("(?:\\.|[^"\\\n])*")', lambda m: '""' if m.group(1) else " ", text, flags=re.S)
    return re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", "", text, flags=re.M)


def without_templates(statement):
    """A declaration without template parameters and arguments, taken away from the inside out."""
    while True:
        shorter = re.sub(r"<[^<>()]*(?:\([^()]*\)[^<>()]*)*>", " ", statement)
        if shorter == statement:
            return statement
        statement = shorter


def name_declared(statement):
    """The name of the function that a statement of a class or a namespace declares, or nothing."""
    statement = without_templates(re.sub(r"\[\[.*?\]\]", " ", statement))
    if re.match(r"\s*(using|typedef|friend|static_assert|enum|namespace)\b", statement):
        return None
    if re.search(r"=\s*(delete|default)\s*$", statement):
        return None
    found = re.match(r"[^=(]*?([~\w]+)\s*\(", statement)
    if not found or found.group(1) in NO_OPERATIONS or found.group(1).startswith("~") or "operator" in found.group(0):
        return None
    # A constructor or a variable with an initialiser has nothing but specifiers in front of its name.
    before = re.sub(r"\b(explicit|constexpr|inline|static|virtual|noexcept|template|typename)\b", " ", found.group(0))
    return found.group(1) if re.search(r"\w[\s&*\w:]*[\s&*]\w+\s*\($", before) else None


def operations(header_text):
    """Names of the public member functions and free functions of a header."""
    text = without_comments(header_text)
    names = set()
    kinds = ["namespace"]  # what the open braces are: namespace, public, hidden (private part), body
    statement = ""
    parentheses = 0
    for token in re.findall(r"[{}();]|\b(?:public|protected|private)\s*:(?!:)|[^{}();pP]+|.", text, flags=re.S):
        access = re.match(r"(public|protected|private)\s*:", token)
        if access and kinds[-1] in ("public", "hidden"):
            kinds[-1] = "public" if access.group(1) == "public" else "hidden"
            statement = ""
        elif token == "{" and parentheses == 0:
            plain = without_templates(statement)
            head = re.match(r"\s*(?:(?:inline|template)\s+)?(namespace|class|struct|union|enum)\b", plain)
            open_here = kinds[-1] in ("namespace", "public")
            if head and head.group(1) == "namespace":
                kinds.append("body" if re.search(r"\b(detail|errors)\b", statement) else "namespace")
            elif head and head.group(1) in ("class", "struct", "union") and "(" not in plain:
                kinds.append(("hidden" if head.group(1) == "class" else "public") if open_here else "body")
            else:
                name = name_declared(statement) if open_here else None
                if name:
                    names.add(name)
                kinds.append("body")
            statement = ""
        elif token == "}" and parentheses == 0:
            kinds.pop()
            statement = ""
        elif token == ";" and parentheses == 0:
            if kinds[-1] in ("namespace", "public"):
                name = name_declared(statement)
                if name:
                    names.add(name)
            statement = ""
        else:
            parentheses += {"(": 1, ")": -1}.get(token, 0)
            statement += token
    return names


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
        block = listed[1].lstrip("\n").split("\n\n")[0]  # behind it come examples
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


def internal_headers(root):
    """The headers whose routines are tested through others, as paths below src/."""
    lines = (root / "cmake" / "internalHeaders.txt").read_text(encoding="utf-8").splitlines()
    return {line for line in lines if line and not line.startswith("#")}


def gaps(root, program):
    tests = "\n".join(
        path.read_text(encoding="utf-8") for path in (root / "tests").rglob("*") if path.suffix in (".cpp", ".h")
    )
    words = set(re.findall(r"\w+", without_comments(tests)))
    count = 0
    internal = internal_headers(root)
    for header in sorted((root / "src" / "z7cashflow").rglob("*.h")):
        if header.relative_to(root / "src").as_posix() in internal:
            internal.remove(header.relative_to(root / "src").as_posix())
            continue
        for name in sorted(operations(header.read_text(encoding="utf-8"))):
            count += 1
            if name not in words and name not in EXCEPTED_OPERATIONS:
                yield f"{header.relative_to(root)}: {name} occurs in no test"
    for header in sorted(internal):
        yield f"cmake/internalHeaders.txt: {header} is no header of the library"
    if count == 0:
        yield "no operations found: the headers are not where this script looks"
    if program:
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


SELF_TEST_HEADER = """
#pragma once
#include "a(b).h"
namespace z7::x {
class Forward;
enum class Kind : int { one = 1, two };
/// comment with call(); and a { brace
class Thing final : public Base<int(int)> {
public:
    explicit Thing(int a);
    Thing(const Thing&) = delete;
    ~Thing();
    [[nodiscard]] const std::map<std::string, int>& listed(const std::vector<int>& v = {}) const noexcept { return m_; }
    void iPeriod(std::uint8_t value) noexcept { iPeriod_ = value; if (value) { helper(); } }
    virtual std::shared_ptr<A> pure(B& b, std::string* s = nullptr) = 0;
    bool operator==(const Thing&) const;
    std::function<void(int)> handler;
    struct Inner { int innerCall(); };
    template <class T> static T made(T t);
protected:
    void guarded();
private:
    void hidden();
    struct Deep { void deeper(); };
};
[[nodiscard]] std::string freeOne(int a);
inline constexpr int constant = 5;
template <class Action> void freeTwo(Action&& action) {
    try { action(); } catch (const Error&) { }
}
} // namespace
"""


def self_test():
    expected = {"listed", "iPeriod", "pure", "innerCall", "made", "freeOne", "freeTwo"}
    found = operations(SELF_TEST_HEADER)
    wrong = []
    if found != expected:
        wrong.append(f"operations: missing {sorted(expected - found)}, too many {sorted(found - expected)}")
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "src/z7cashflow").mkdir(parents=True)
        (root / "tests").mkdir()
        (root / "cmake").mkdir()
        (root / "cmake/internalHeaders.txt").write_text("# internal\nz7cashflow/inner.h\nz7cashflow/gone.h\n")
        (root / "src/z7cashflow/inner.h").write_text("int inner();")
        (root / "src/z7cashflow/Thing.h").write_text("struct T { void tested(); void commented(); void untested(); };")
        (root / "tests/a.cpp").write_text(
            '// commented()\nTEST(A, b) { t.tested(); run("list", "--year"); }\nTEST(A, c) { run("show", "--json"); }\n'
        )
        program = root / "z7cf"
        program.write_text(
            "#!/bin/sh\ncase $1 in --help) printf 'Options:\\n  -l,--lang\\n  --json\\nSubcommands:\\n  list   lists\\n"
            "  show   shows\\n\\nExamples:\\n  prog list --deep\\n';;\n"
            "list) printf '  --year INT\\n  --lang\\n  --json\\n';; show) echo '  --json';; esac\n"
        )
        program.chmod(0o755)
        found = sorted(line.split(": ")[1] if ".h: " in line else line for line in gaps(root, str(program)))
        expected = [
            "cmake/internalHeaders.txt: z7cashflow/gone.h is no header of the library",
            "commented occurs in no test",
            "untested occurs in no test",
            "z7cf --lang: no test case holds it",
            "z7cf list --json: no test case holds both",
        ]
        if found != expected:
            wrong.append(f"gaps: {found}")
    print("\n".join(wrong))
    return 1 if wrong else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    program = None
    if arguments[:1] == ["--program"]:
        program, arguments = arguments[1], arguments[2:]
    root = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parent.parent
    found = list(gaps(root, program))
    print("\n".join(found) if found else "Every operation and every option has a test.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
