#!/usr/bin/env python3
"""Checks that a file's name says what is in it, in every folder of src:

- X.cpp defines what X.h of the same folder declares. Parts of a long class are Class_part.cpp beside Class.h. main.cpp, with the
  entry point that nothing declares, has no header.
- A capital letter means that the header defines a type of that name.
- A small letter means a header of free functions or constants. The types that they take, return or raise may be declared there,
  too, but are not the header's main content: there are more than twice as many functions as types with operations of their own
  (errors aside), and constants and functions together are at least as many as types.

The list of headers that are not installed must name existing headers.

    check_names.py [SRC]      reports every breach and exits with 1 if there is one
    check_names.py --self-test
"""
import pathlib
import re
import sys
import tempfile

# Folders whose sources define only a factory that a header elsewhere declares, so that they need no header of their own.
FACTORIES = {"host/commands": "Command.cpp"}

COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:[^"\\\n]|\\.)*"|(?<![\w])\'(?:[^\'\\\n]|\\.)+\'', re.S)
TYPE = re.compile(r"^(?:template\s*<.*>\s*)?(?:enum\s+(?:class|struct)|enum|class|struct|union)\s+(?:\[\[[^\]]*\]\]\s*)?([\w:]+)", re.S)
ALIAS = re.compile(r"^(?:template\s*<.*>\s*)?(?:using\s+(\w+)\s*=|concept\s+(\w+)\s*=)", re.S)
NAME = re.compile(r"((?:~?\w+(?:<[^<>]*>)?::)*(?:~?\w+|operator\s*[^\s(]+|operator\s*\(\s*\)))\s*$")


class Declared:
    """The declarations of a file at namespace level: types (with the number of their own operations) and functions."""

    def __init__(self):
        self.types = {}
        self.routines = set()  # declared, or defined inline
        self.bodies = []  # (name, whether only this file can see it)
        self.constants = 0


def without_comments(text):
    text = re.sub(r"^\s*#(?:[^\n\\]|\\\n)*", "", text, flags=re.M)
    text = re.sub(r"^Z7_PUBLIC_(?:BEGIN|END)$", "", text, flags=re.M)
    return COMMENT_OR_TEXT.sub(lambda found: " " if found.group().startswith("/") else '""', text)


def name_before_arguments(head):
    """The name of the function that a text before a body or semicolon declares; None if it declares none."""
    depth = 0
    for i, c in enumerate(head):
        if c == "<":
            depth += 1
        elif c == ">" and head[i - 1 : i] != "-":
            depth = max(0, depth - 1)
        elif c == "=" and depth == 0 and "operator" not in head[:i]:
            return None
        elif c == "(" and depth == 0:
            before = head[:i].rstrip()
            if before.endswith("operator"):
                return before.split()[-1]
            found = NAME.search(before)
            word = found.group(1) if found else None
            if word in (None, "alignas", "decltype", "requires", "static_assert", "noexcept"):
                return None
            return re.sub(r"<[^<>]*>", "", word)
    return None


def is_value(head, stack):
    """Whether a brace after this text begins a value, as in arguments or in an initializer list, and not a block."""
    if stack and stack[-1] == "value":
        return True
    return head.count("(") > head.count(")") or re.search(r"\)\s*(?:noexcept\s*)?:\s.*[\w>]\s*$", head, re.S) is not None


def read(text):
    """Scans a file; a block is classified by the text before its brace."""
    declared = Declared()
    stack = []  # of "namespace", "hidden" (an unnamed one), "type NAME", "value" (braces of an expression) and "other"
    head = ""
    for c in without_comments(text):
        if stack and stack[-1] == "value" and c in ";}" or c == "{" and is_value(head, stack):
            if c == "{":
                stack.append("value")
            elif c == "}":
                stack.pop()
            head += c
            continue
        outside = all(block in ("namespace", "hidden") for block in stack)
        in_type = bool(stack) and stack[-1].startswith("type ") and all(
            block in ("namespace", "hidden") for block in stack[:-1]
        )
        hidden = "hidden" in stack
        if c not in "{};":
            head += c
            continue
        said = re.sub(r"\[\[[^\]]*\]\]", " ", head).strip()
        said = re.sub(r"^(?:public|private|protected)\s*:\s*", "", said)
        head = ""
        if c == "{":
            if re.match(r"^(?:inline\s+)?namespace\b", said) or said.startswith("extern"):
                stack.append("namespace" if len(said.split()) > 1 else "hidden")
                continue
            found = TYPE.match(said)
            if outside and found:
                name = found.group(1)
                stack.append("type " + name)
                declared.types.setdefault(name, 0)
                continue
            name = name_before_arguments(said) if outside or in_type else None
            if outside and name:
                declared.routines.add(name)
                declared.bodies.append((name, hidden or said.startswith("static ")))
            elif in_type and name and not said.startswith("friend"):
                declared.types[stack[-1][5:]] += 1
            elif outside and said:
                declared.constants += 1
            stack.append("other")
        elif c == "}":
            if stack:
                stack.pop()
        elif outside and said:
            alias = ALIAS.match(said)
            name = name_before_arguments(said)
            if alias:
                declared.types.setdefault(alias.group(1) or alias.group(2), 0)
            elif name and not TYPE.match(said):
                declared.routines.add(name)
            elif not TYPE.match(said) and not said.startswith(("using", "static_assert", "typedef")):
                declared.constants += 1
        elif in_type and said and name_before_arguments(said) and not said.startswith(("friend", "using")):
            declared.types[stack[-1][5:]] += 1
    return declared


def header_of(path):
    """The header that should declare what a source defines."""
    own = path.with_suffix(".h")
    if own.exists() or "_" not in path.stem:
        return own
    return path.with_name(path.stem.split("_")[0] + ".h")


def complaints_on_source(path, file):
    suffix = FACTORIES.get(str(pathlib.PurePosixPath(file).parent))
    if path.name == "main.cpp" or suffix and file.endswith(suffix):
        return
    header = header_of(path)
    if not header.exists():
        yield f"there is no {path.stem}.h beside it"
        return
    known = read(header.read_text(encoding="utf-8"))
    own = read(path.read_text(encoding="utf-8"))
    for name, hidden in own.bodies:
        owner = name.split("::")[0]
        if hidden or name in known.routines or ("::" in name and owner in {**known.types, **own.types}):
            continue
        if name.startswith("operator") and "operator" in header.read_text(encoding="utf-8"):
            continue
        yield f"defines {name}, which {header.name} does not declare"


def complaints_on_header(path):
    held = read(path.read_text(encoding="utf-8"))
    if path.stem in held.types:  # some dictated names of types begin with a small letter
        return
    if path.stem[0].isupper():
        yield f"defines no type {path.stem}"
        return
    working = sorted(name for name, operations in held.types.items() if operations and not name.endswith("Error"))
    if working and 2 * len(working) >= len(held.routines):
        yield f"its main content is the type {working[0]}"
    elif len([name for name in held.types if not name.endswith("Error")]) > len(held.routines) + held.constants:
        yield f"holds more types than routines: {', '.join(sorted(held.types))}"


def stale_internal_headers(src):
    """Entries of cmake/internalHeaders.txt, the headers that are not installed, whose header is gone."""
    listed = src.parent / "cmake" / "internalHeaders.txt"
    for line in listed.read_text(encoding="utf-8").splitlines() if listed.exists() else []:
        if line and not line.startswith("#") and not (src / line).exists():
            yield f"src/{line}: cmake/internalHeaders.txt names it, but there is no such header"


def findings(src):
    yield from stale_internal_headers(src)
    for path in sorted(src.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        file = path.relative_to(src).as_posix()
        for complaint in complaints_on_header(path) if path.suffix == ".h" else complaints_on_source(path, file):
            yield f"src/{file}: {complaint}"


def self_test():
    files = {
        # in order
        "a/Thing.h": "class Thing {\npublic:\n    void run();\n};",
        "a/Thing.cpp": "namespace n {\nnamespace {\nint help() { return 1; }\n}\nvoid Thing::run() { help(); }\n}",
        "a/Thing_parts.cpp": "void Thing::stop() const noexcept {}",
        "a/routines.h": "struct Pair { int a; };\n[[nodiscard]] Pair both(int a = 1);\nbool operator==(const Pair&, const Pair&);",
        "a/routines.cpp": 'static int own() { return 2; }\nPair both(int a) { if (a) { return {1}; } return {}; }\n'
        "bool operator==(const Pair&, const Pair&) { return true; }",
        "a/Kind.h": "enum class Kind { one, two };",
        "a/frmThing.h": "class frmThing {\npublic:\n    void show();\n};",
        "a/texts.h": 'inline constexpr const char* name = "class Wrong {";',
        "a/Maker.h": "using Maker = std::function<int()>;",
        "a/Box.h": "template <class T> struct Box { T value; };",
        "a/Open.h": "Z7_PUBLIC_BEGIN\n\nnamespace n {\nclass Open {};\n}\n\nZ7_PUBLIC_END",
        "a/main.cpp": "int main() { return 0; }",
        # breaches
        "b/lost.cpp": "int lost() { return 1; }",
        "b/Other.h": "class Another {};",
        "b/away.h": "int here();",
        "b/away.cpp": "int here() { return 1; }\nint elsewhere() { return 2; }",
        "b/engine.h": "class Engine {\npublic:\n    void run();\n};",
        "b/records.h": "struct One { int a; };\nstruct Two { int a; };\nint both(One, Two);",
        "b/Member.h": "class Member {};",
        "b/Member.cpp": "void Stranger::run() {}",
    }
    wrong = {"b/lost.cpp", "b/Other.h", "b/away.cpp", "b/engine.h", "b/records.h", "b/Member.cpp", "a/gone.h"}
    with tempfile.TemporaryDirectory() as folder:
        src = pathlib.Path(folder) / "src"
        (src.parent / "cmake").mkdir()
        (src.parent / "cmake" / "internalHeaders.txt").write_text("# internal\na/texts.h\na/gone.h\n", encoding="utf-8")
        for file, text in files.items():
            (src / file).parent.mkdir(parents=True, exist_ok=True)
            (src / file).write_text("#pragma once\n" + text + "\n", encoding="utf-8")
        found = {line.split(":")[0][len("src/") :] for line in findings(src)}
    for file in sorted(wrong - found):
        print(f"not found: {file}")
    for file in sorted(found - wrong):
        print(f"wrongly blamed: {file}")
    return 1 if found != wrong else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    src = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parent.parent / "src"
    files = sum(1 for path in src.rglob("*") if path.suffix in (".h", ".cpp"))
    if files == 0:
        print(f"no sources in {src}")
        return 2
    wrong = list(findings(src))
    print("\n".join(wrong) if wrong else f"{files} files, each named after what it holds.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
