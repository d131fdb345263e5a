"""Mutation testing of src/z7cashflow; started by scripts/mutate.sh.

A mutant is one small change of one source: another comparison, an operator turned round, a number off by one, a condition
negated, a return of the opposite, a statement left out. Its object is compiled and linked before the library's archive, so that
nothing else is built again; then the test programs run, those nearest to the source first, until one fails. Outcomes are kept
in BUILD/mutants.jsonl by the mutant's own text, so that a run that was ended goes on where it stopped.
"""

import argparse
import collections
import hashlib
import json
import os
import pathlib
import random
import re
import shlex
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
LIBRARY = "src/z7cashflow"

# The test programs from the bottom up. For a mutant of a folder its own program is run first, then those above, then those below.
PROGRAMS = ["test_support", "test_xml_memory", "test_statements", "test_model", "test_data", "test_providers", "test_dialog", "test_outside", "test_shared", "test_host"]

Mutant = collections.namedtuple("Mutant", "file line kind before after text start end")

SWAPS = {
    "comparison": [(" == ", " != "), (" != ", " == "), (" < ", " <= "), (" <= ", " < "), (" > ", " >= "), (" >= ", " > ")],
    "logic": [(" && ", " || "), (" || ", " && ")],
    "arithmetic": [(" + ", " - "), (" - ", " + "), (" += ", " -= "), (" -= ", " += "), (" * ", " / "), (" / ", " * "), (" % ", " * ")],
    "step": [("++", "--"), ("--", "++")],
    "constant": [("true", "false"), ("false", "true")],
}
HIDDEN = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:[^"\\\n]|\\.)*"|(?<!\w)\'(?:[^\'\\\n]|\\.)+\'|^\s*#[^\n]*', re.S | re.M)
STATEMENT = re.compile(r"^[ \t]+(?!return\b|throw\b|case\b|using\b|static_assert\b|const\b|auto\b|else\b|break\b|continue\b)"
                       r"[\w.:>\[\]()*-]+(?:\([^;{}]*\)| [-+|]?= [^;{}]+);[ \t]*$", re.M)


def masked(text):
    """The text with comments, literals and directives replaced by blanks, so that positions are kept."""
    return HIDDEN.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def changes(text):
    """All mutations of a source: (kind, start, end, replacement)."""
    code = masked(text)
    for kind, pairs in SWAPS.items():
        for before, after in pairs:
            bounds = r"\b" if before[0].isalpha() else ""
            for found in re.finditer(bounds + re.escape(before) + bounds, code):
                yield kind, found.start(), found.end(), after
    for found in re.finditer(r"(?<![\w.'])\d+(?![\w.'])", code):
        yield "constant", found.start(), found.end(), str(int(found.group()) + 1)
    for found in re.finditer(r"(?<=[(\s])!(?=[\w(])", code):
        yield "negation", found.start(), found.end(), ""
    for found in re.finditer(r"\b(?:if|while) \((?!auto|const)(?=[^;{}]*\) \{)", code):
        end = matching(code, found.end() - 1)
        if end and ";" not in code[found.end() : end] and " = " not in code[found.end() : end]:
            yield "negation", found.end(), end, f"!({text[found.end():end]})"
    for found in re.finditer(r"\breturn ([^;{}]+);", code):
        value = text[found.start(1) : found.end(1)]
        if re.search(r" (?:==|!=|<=?|>=?|&&|\|\|) |^!", value) and " ? " not in value and " + " not in value:
            yield "return", found.start(1), found.end(1), f"!({value})"
        elif not re.fullmatch(r"\*this|true|false|nullptr|\w+_?\(.*errors.*\)", value):
            yield "return", found.start(1), found.end(1), "{}"
    for found in STATEMENT.finditer(code):
        yield "statement", found.start(), found.end(), ""


def matching(code, start):
    """The position of the parenthesis that closes the one at start."""
    depth = 0
    for i in range(start, len(code)):
        depth += {"(": 1, ")": -1}.get(code[i], 0)
        if depth == 0:
            return i
    return None


def mutants_of(path):
    text = path.read_text(encoding="utf-8")
    file = path.relative_to(ROOT).as_posix()
    for kind, start, end, after in changes(text):
        line = text.count("\n", 0, start + len(text[start:end]) - len(text[start:end].lstrip())) + 1
        yield Mutant(file, line, kind, text[start:end].strip(), after.strip(), text[:start] + after + text[end:], start, end)


def key_of(mutant):
    """A key that is stable as long as the source around the mutation does not change."""
    whole = hashlib.sha256(mutant.text.encode()).hexdigest()[:16]
    return f"{mutant.file}:{mutant.kind}:{whole}"


class Build:
    def __init__(self, folder, names):
        self.folder = folder.resolve()
        self.environment = {**os.environ, "LC_ALL": "C.UTF-8", "TZ": "UTC"}
        commands = json.loads((self.folder / "compile_commands.json").read_text(encoding="utf-8"))
        self.compile = {pathlib.Path(entry["file"]).resolve(): entry["command"] for entry in commands}
        known = self.ninja("-t", "targets", "all")
        self.programs = [name for name in names if re.search(rf"^{name}: phony", known, re.M)]
        if not self.programs:
            raise SystemExit("none of the test programs is part of the build")

    def ninja(self, *arguments):
        return subprocess.run(["ninja", "-C", self.folder, *arguments], check=True, capture_output=True, text=True).stdout

    def make(self):
        """Builds the unchanged programs, runs each once and measures its time."""
        self.ninja(*self.programs)
        self.link, self.seconds = {}, {}
        for name in self.programs:
            last = [line for line in self.ninja("-t", "commands", name).splitlines() if f"-o bin/{name} " in line][-1]
            self.link[name] = last.split("&&")[1] if "&&" in last else last
            started = time.monotonic()
            if not self.passes(self.folder / "bin" / name, 600):
                raise SystemExit(f"{name} fails without any change")
            self.seconds[name] = time.monotonic() - started

    def passes(self, program, limit):
        try:
            run = subprocess.run(
                [program, "--gtest_brief=1", "--gtest_fail_fast"],
                cwd=self.folder, env=self.environment, timeout=limit, stdin=subprocess.DEVNULL,
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            )
        except subprocess.TimeoutExpired:
            return False
        return run.returncode == 0

    def order(self, file):
        """The programs, sorted by their distance from a source."""
        own = "test_" + file.split("/")[2]
        place = PROGRAMS.index(own) if own in PROGRAMS else 0
        rank = {name: PROGRAMS.index(name) if name in PROGRAMS else len(PROGRAMS) for name in self.programs}
        return sorted(self.programs, key=lambda name: (rank[name] < place, rank[name]))

    def outcome(self, mutant, folder):
        """"survived", "not built", or the name of the program that noticed."""
        source, target = folder / pathlib.Path(mutant.file).name, folder / "mutant.o"
        source.write_text(mutant.text, encoding="utf-8")
        words = shlex.split(self.compile[ROOT / mutant.file])
        words = [word for word in words if not word.endswith("ccache") and word != "-Werror"]
        words[words.index("-o") + 1] = str(target)
        words[words.index("-c") + 1] = str(source)
        if subprocess.run(words, cwd=self.folder, capture_output=True).returncode != 0:
            return "not built"
        for name in self.order(mutant.file):
            program = folder / name
            command = self.link[name].replace(f"-o bin/{name} ", f"-o {program} {target} ", 1)
            if subprocess.run(command, cwd=self.folder, shell=True, capture_output=True).returncode != 0:
                return "not built"
            if not self.passes(program, 10 * self.seconds[name] + 20):
                return name
            program.unlink()
        return "survived"


def report(folder, results, known):
    """Writes the survivors of the sources as they stand now, and returns the line that sums up."""
    current = [entry for key, entry in results.items() if key in known]
    counts = collections.Counter("killed" if entry["outcome"].startswith("test_") else entry["outcome"] for entry in current)
    tried = counts["killed"] + counts["survived"]
    summary = f"{tried} mutants, {counts['killed']} killed, {counts['survived']} survived"
    summary += f" ({100 * counts['killed'] / tried:.1f} % killed)" if tried else ""
    summary += f"; {counts['not built']} more did not compile"
    lines = ["# Mutants that no test noticed", "", summary, ""]
    for entry in sorted((e for e in current if e["outcome"] == "survived"), key=lambda e: (e["file"], e["line"])):
        after = f"`{entry['after']}`" if entry["after"] else "nothing"
        lines.append(f"- {entry['file']}:{entry['line']} {entry['kind']}: `{entry['before']}` to {after}")
    (folder / "survivors.md").write_text("\n".join(lines) + "\n", encoding="utf-8")
    return summary


def main():
    parser = argparse.ArgumentParser(prog="mutate.sh", description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("pattern", nargs="?", default="", help="only sources whose path matches this regular expression")
    parser.add_argument("--most", type=int, default=200, help="the most mutants to try in this run, those known from before aside")
    parser.add_argument("--seed", type=int, default=1, help="which ones are drawn")
    parser.add_argument("--tests", default=",".join(PROGRAMS), help="the test programs to run, with commas between them")
    parser.add_argument("--list", action="store_true", help="only list what would be tried")
    options = parser.parse_intermixed_args()

    sources = [path for path in sorted((ROOT / LIBRARY).rglob("*.cpp")) if re.search(options.pattern, path.as_posix())]
    mutants = [mutant for path in sources for mutant in mutants_of(path)]
    journal = options.build / "mutants.jsonl"
    results = {}
    if journal.exists():
        results = {entry["key"]: entry for entry in map(json.loads, journal.read_text(encoding="utf-8").splitlines())}
    drawn = random.Random(options.seed).sample(mutants, len(mutants))[: options.most]
    if options.list:
        for mutant in drawn:
            print(f"{mutant.file}:{mutant.line} {mutant.kind}: {mutant.before!r} to {mutant.after!r}")
        return 0
    print(f"{len(mutants)} mutants possible, {len(drawn)} drawn with the seed {options.seed}", flush=True)
    build = Build(options.build, options.tests.split(","))
    build.make()
    with tempfile.TemporaryDirectory() as folder, journal.open("a", encoding="utf-8") as log:
        for number, mutant in enumerate(drawn, 1):
            key = key_of(mutant)
            if key not in results:
                outcome = build.outcome(mutant, pathlib.Path(folder))
                entry = {"key": key, "outcome": outcome, **mutant._asdict()}
                for member in ("text", "start", "end"):
                    del entry[member]
                results[key] = entry
                log.write(json.dumps(entry) + "\n")
                log.flush()
            entry = results[key]
            print(f"{number}/{len(drawn)} {mutant.file}:{mutant.line} {mutant.kind}: {entry['outcome']}", flush=True)
    print(report(options.build, results, {key_of(mutant) for mutant in mutants}))
    print(f"Survivors are listed in {options.build / 'survivors.md'}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
