#!/usr/bin/env python3
"""Checks docs/embedding.md against the examples: the sources printed in it, and what the programs print.

check_examples.py PROGRAMS Z7CF [--renew]

PROGRAMS is the folder of the built examples, Z7CF the program z7cf. A block after a line that names examples/X in
backquotes must equal that file. A block that begins with "$ " is a session: its commands run one after another in a new
folder, where the examples and z7cf are found by name, and print the lines below them. --renew rewrites the document
with the actual contents; read the difference before you keep it.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
DOCUMENT = ROOT / "docs/embedding.md"
BLOCK = re.compile(r"(?:^    .*\n|^\n(?=\n*    ))+", re.M)


def indented(lines):
    return "".join(f"    {line}\n" if line else "\n" for line in lines)


def run_session(block, folder, environment):
    """The actual lines of a session: each command and its output."""
    for command in re.findall(r"^    \$ (.*)$", block, re.M):
        run = subprocess.run(command, shell=True, cwd=folder, env=environment, text=True, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, timeout=120)
        yield f"$ {command}"
        yield from run.stdout.splitlines()


def as_it_is(document, folder, environment):
    """The document with the actual sources and sessions, and the number of each."""
    counts = {"sources": 0, "sessions": 0}

    def renewed(found):
        named = re.search(r"`(examples/[\w./-]+)`", document[: found.start()].rstrip("\n").rpartition("\n")[2])
        block = found.group()
        head = re.match(r"\n*", block).group()
        if block.lstrip("\n").startswith("    $ "):
            counts["sessions"] += 1
            return head + indented(run_session(block, folder, environment))
        if named:
            counts["sources"] += 1
            return head + indented((ROOT / named.group(1)).read_text(encoding="utf-8").splitlines())
        return block

    return BLOCK.sub(renewed, document), counts


def main(programs, z7cf, renew=""):
    document = DOCUMENT.read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as folder:
        environment = {**os.environ, "PATH": f"{programs}:{pathlib.Path(z7cf).parent}:{os.environ['PATH']}",
                       "LC_ALL": "C.UTF-8", "TZ": "UTC", "HOME": folder}
        now, counts = as_it_is(document, folder, environment)
    if renew == "--renew":
        DOCUMENT.write_text(now, encoding="utf-8")
    elif now != document:
        for number, (said, found) in enumerate(zip(document.splitlines(), now.splitlines()), 1):
            if said != found:
                print(f"docs/embedding.md:{number}: says:\n{said}\nbut it is now:\n{found}")
                break
        else:
            print("docs/embedding.md ends earlier or later than what is found")
        return 1
    print(", ".join(f"{count} {name}" for name, count in counts.items()))
    return 0 if all(counts.values()) else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
