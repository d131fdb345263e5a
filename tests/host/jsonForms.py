#!/usr/bin/env python3
"""Checks what the commands of z7cf write with --json against their schemas.

jsonForms.py Z7CF ROOT
    Z7CF    the built program
    ROOT    the project, with docs/schemas and the sources of the program

Runs every command on the sample company, in both languages: with success, refusals, and errors that end with 2 and 3.
"""

import decimal
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is not installed")
    sys.exit(77)

# What differs between the languages, and may: the texts for people.
TEXTS = {"text", "description", "reason", "arguments"}

# Commands on the sample company as (exit code, words). {db} is an account whose year was allocated; the order matters,
# because some commands change it. A command that only reads is run twice.
READS = [
    (1, "statement {db} --year 2024 --period 7"),
    (1, "statement {db} --year 2024 --period 4-7 --by quarter --by-currency --opening 1001=12.3456"),
    (0, "vouchers {db} --year 2024 --period 7"),
    (1, "vouchers {db} --year 2024 --period 12"),
    (1, "vouchers {db} --year 2024 --period 4-7 --open"),
    (1, "vouchers {db} --year 2024 --period 4-7 --open --group"),
    (1, "vouchers {db} --year 2024 --period 4-7 --open --lines"),
    (0, "vouchers {db} --year 2024 --period 6 --open --group"),
    (2, "vouchers {db} --year 2030"),
    (2, "vouchers {db} --year 2024 --group"),
    (0, "voucher {db} 2024/6/2/10"),
    (0, "voucher {db} 2024/7/2/11"),
    (1, "voucher {db} 2024/1/1/99"),
    (0, "rows {db} 2024/6/2/10"),
    (0, "rows {db} 2024/6/2/10 --why --generate"),
    (0, "rows {db} 2024/7/2/12"),
    (1, "rows {db} 2024/12/1/6 --generate"),
    (0, "check {db} 2024/6/2/10"),
    (1, "check {db} 2024/7/2/12"),
    (0, "check {db} 2024/7/3/1"),
    (0, "check {db} 2024/7/3/3"),
    (2, "check {db} 2024-7-3-3"),
    (2, "check {db} 2024/7/300000/3"),
    (0, "items {db}"),
    (0, "accounts {db} --year 2024"),
    (0, "templates {db} --year 2024"),
    (0, "kinds {db}"),
    (0, "log {db}"),
    (0, "log {db} 2"),
    (1, "log {db} 99"),
    (0, "verify {db}"),
    (1, "verify {bad}"),
    (0, "export {db} 2024/6/2/10"),
    (0, "export {db} 2024/6/2/10 --generate"),
    (0, "outside rows {db} sales_voucher AR-2024-0301 --year 2024"),
    (0, "outside generate {db} sales_voucher AR-2024-0301 --year 2024"),
    (0, "outside check {db} sales_voucher AR-2024-0301 --year 2024"),
    (1, "outside check {db} sales_voucher NONE --year 2024"),
    (2, "outside turn {db} sales_voucher AR-2024-0301 --year 2024"),
    (3, "outside rows {db} no_table AR-2024-0301 --year 2024"),
    (0, "voucher-xml {db} {documents}/bonus-voucher.xml"),
    (0, "voucher-xml {db} {documents}/new-voucher.xml --create"),
    (1, "voucher-xml {db} {documents}/sales-voucher.xml --create"),
    (0, "save {db} 2024/6/2/10 --dry-run"),
    (1, "save {db} 2024/12/1/6 --dry-run"),
    (1, "allot {db} --year 2024 --period 7 --dry-run"),
    (0, "assign {db} 2024/6/2/10 1 0112 400.00 0114 --dry-run"),
    (2, "assign {db} 2024/6/2/10 1 0131"),
    (2, "assign {db} --from {sheet} --dry-run"),
    (0, "clear {db} 2024/6/2/10 --dry-run"),
    (0, "reassign {db} --year 2024 --from 0114 --to 0113 --period 6 --dry-run"),
    (0, "undo {db} 1 2024/7/1/1 --dry-run"),
    (1, "import {db} 2024/7/2/12 {documents}/bonus-voucher.xml"),
    (2, "import {db} 2024/7/2/12 {documents}/none.xml"),
    (2, "init {db} --sample"),
    (2, "init {folder}/new.db --from {tables}"),
    (2, "init {folder}/new.db --set bXJLL"),
    (2, "sample-xml {documents}"),
]
# Those whose result changes: run once in each language on an account of its own.
WRITES = [
    (0, "save {db} 2024/6/2/10 --regenerate"),
    (0, "assign {db} 2024/6/2/10 1 0112 400.00 0114"),
    (0, "clear {db} 2024/6/2/10"),
    (0, "reassign {db} --year 2024 --from 0114 --to 0113 --period 6"),
    (0, "import {db} 2024/7/2/12 {documents}/advertising-rows.xml"),
    (0, "outside save {db} sales_voucher AR-2024-0301 --year 2024"),
    (1, "undo {db} 1 2024/7/2/12 2024/7/1/1"),
    (0, "log {db} --start"),
    (0, "widths {db} --reset"),
    (0, "rows {db} 2024/6/2/4 --identities"),
    (0, "init {folder}/{language}.db --sample"),
    (0, "sample-xml {folder}/{language}"),
]
# How a command is called so that nothing but its database is missing.
MISSING = {
    "init": None,  # it creates the database
    "sample-xml": None,  # it needs none
    "statement": "--year 2024",
    "vouchers": "--year 2024",
    "accounts": "--year 2024",
    "templates": "--year 2024",
    "allot": "--year 2024",
    "reassign": "--year 2024 --from 0113 --to 0114",
    "voucher": "2024/6/2/10",
    "rows": "2024/6/2/10",
    "check": "2024/6/2/10",
    "save": "2024/6/2/10",
    "clear": "2024/6/2/10",
    "edit": "2024/6/2/10",
    "export": "2024/6/2/10",
    "assign": "2024/6/2/10 1 0113",
    "import": "2024/6/2/10 {documents}/bonus-voucher.xml",
    "undo": "1",
    "widths": "--reset",
    "outside": "sales_voucher AR-2024-0301 --year 2024",
    "voucher-xml": "{documents}/bonus-voucher.xml",
}


class Faults:
    def __init__(self):
        self.texts = []

    def add(self, *words):
        self.texts.append(" ".join(str(word) for word in words))


def schemas_of(folder, faults):
    """The schema of each command, with the common parts in it so that no reference leaves the file."""
    files = {path.stem: json.loads(path.read_text("utf-8"), parse_float=decimal.Decimal) for path in folder.glob("*.json")}
    shared = files.pop("common")["$defs"]
    codes = files.pop("codes")["$defs"]["code"]["anyOf"]
    shared["code"] = {"enum": [each["const"] for each in codes]}  # the same, but quicker to check

    def bundled(part, prefix):
        if isinstance(part, list):
            return [bundled(each, prefix) for each in part]
        if not isinstance(part, dict):
            return part
        result = {name: bundled(value, prefix) for name, value in part.items()}
        if "$ref" in result:
            file, _, name = result["$ref"].partition("#/$defs/")
            result["$ref"] = f"#/$defs/{'common-' if file or prefix else ''}{name}"
        return result

    schemas = {}
    for command, schema in files.items():
        schema = bundled(schema, "")
        definitions = schema.setdefault("$defs", {})
        definitions.update({"common-" + name: bundled(part, "common-") for name, part in shared.items()})
        jsonschema.Draft202012Validator.check_schema(schema)
        check_closed(schema, command, faults)
        schemas[command] = schema
    return schemas


def check_closed(schema, where, faults):
    """Every object of a schema names its members and allows no others; every list says what it holds."""
    if isinstance(schema, list):
        for each in schema:
            check_closed(each, where, faults)
    if not isinstance(schema, dict):
        return
    if "properties" in schema or schema.get("type") == "object":
        if schema.get("additionalProperties") is not False or "properties" not in schema:
            faults.add(where, "an object allows members that it does not name:", json.dumps(schema, default=str)[:120])
    if schema.get("type") == "array" and "items" not in schema:
        faults.add(where, "a list does not say what it holds")
    for name, part in schema.items():
        if name == "properties":
            for each in part.values():
                check_closed(each, where, faults)
        else:
            check_closed(part, where, faults)


def without_texts(value):
    if isinstance(value, list):
        return [without_texts(each) for each in value]
    if isinstance(value, dict):
        return {name: without_texts(part) for name, part in value.items() if name not in TEXTS}
    return value


class Program:
    def __init__(self, program, schemas, faults):
        self.program = program
        self.validators = {name: jsonschema.Draft202012Validator(schema) for name, schema in schemas.items()}
        self.faults = faults
        self.seen = {}  # command -> exit codes
        self.calls = 0

    def call(self, words, language):
        environment = {**os.environ, "LC_ALL": "C.UTF-8", "TZ": "UTC", "HOME": "/nonexistent"}
        for name in ("XDG_CONFIG_HOME", "Z7CF_CONNECT", "DISPLAY", "WAYLAND_DISPLAY"):
            environment.pop(name, None)
        return subprocess.run(
            [self.program, *words, "--json", "--lang", language],
            capture_output=True,
            encoding="utf-8",
            stdin=subprocess.DEVNULL,
            env=environment,
        )

    def records(self, code, words, language, command=None):
        """Runs a command, compares what it writes with its schema, and returns the records and the output."""
        run = self.call(words, language)
        self.calls += 1
        shown = " ".join(words)
        if run.returncode != code:
            self.faults.add(shown, "ended with", run.returncode, "instead of", code, run.stderr)
        if run.stdout and not run.stdout.endswith("\n"):
            self.faults.add(shown, "the last line is not complete")
        command = command or words[0]
        self.seen.setdefault(command, set()).add(run.returncode)
        records = []
        for line in run.stdout.splitlines():
            if not line.startswith('{"form":1,'):
                self.faults.add(shown, "a line does not begin with the form:", line[:100])
            record = json.loads(line, parse_float=decimal.Decimal)
            records.append(record)
            wrong = jsonschema.exceptions.best_match(self.validators[command].iter_errors(record))
            if wrong is not None:
                self.faults.add(shown, "does not fit its schema:", wrong.message[:300], "in", line[:600])
        failures = [record for record in records if set(record) == {"form", "error"}]
        if failures and failures != records[-1:]:
            self.faults.add(shown, "the failure is not the last line")
        if run.returncode >= 2 and not failures:
            self.faults.add(shown, "ended with", run.returncode, "without a failure in JSON")
        if failures and failures[0]["error"]["exitCode"] != run.returncode:
            self.faults.add(shown, "the failure has another exit code")
        if failures and failures[0]["error"]["text"] not in run.stderr:
            self.faults.add(shown, "people are told something else:", run.stderr, failures[0]["error"]["text"])
        return records, run.stdout


def codes_in_sources(folder):
    """The names of the program's texts that stand for a failure, a fault of a file or a finding of verify."""
    statement = re.compile(
        r"\b(?:[Ff]ailure|fault|faults_?\.add|findings\.add|unknownWord|fail|AccountFinding)\s*[({][^;]*;"
        r"|\b(?:all_?|findings)\.push_back\([^;]*;|array texts\{[^;]*;|remark = [^;]*;"
    )
    names = set()
    for path in [*folder.rglob("*.cpp"), *folder.rglob("*.h")]:
        for found in statement.findall(path.read_text("utf-8")):
            names.update(re.findall(r"HostText::(\w+)", found))
    # These are never the code: the place of a fault, a word in a sentence, and sentences with a suggestion.
    names -= {"csvAt", "csvAtColumn", "tabulator", "optionUnknownNear", "commandUnknownNear", "itemNear"}
    return {re.sub("[A-Z]", lambda letter: "-" + letter.group().lower(), name) for name in names}


def commands_of(program):
    text = subprocess.run([program, "--help"], capture_output=True, encoding="utf-8", check=True).stdout
    block = re.split(r"^\s*subcommands:\s*$", text, flags=re.M | re.I)[1].lstrip("\n").split("\n\n")[0]
    return re.findall(r"^  ([a-z][a-z-]*)\b", block, flags=re.M)


def places(folder, program):
    documents = folder / "documents"
    program.records(0, ["sample-xml", str(documents)], "en")
    (folder / "sheet.csv").write_text("voucher,line,item\n2024/6/2/10,x,0113\n2024/6/9,1,0113\n2025/1/1/1,1,9999\n")
    tables = folder / "tables"
    tables.mkdir()
    (tables / "dsign.csv").write_text("isignseq,csign\nx,a\n1,b\n1,c\n")
    (tables / "nothing.csv").write_text("a\n1\n")
    bad = folder / "bad"
    bad.mkdir()
    (bad / "ua_period.csv").write_text("cacc_id,iyear,iid,dbegin,dend\n002,2024,1,2024-01-01,2024-01-31\n")
    (bad / "code.csv").write_text("iyear,ccode,ccode_name\n2024,1001,cash\n")
    (bad / "gl_accvouch.csv").write_text(
        "iyear,iperiod,isignseq,ino_id,inid,ccode,md,mc,dbill_date\n2024,1,1,1,1,9999,5,0,2024-02-01\n"
    )
    program.records(0, ["init", str(folder / "bad.db"), "--from", str(bad)], "en")
    # Vouchers of some months are allocated by run 1, and one is changed by run 2.
    for code, line in (
        (0, "init {db} --sample"),
        (1, "allot {db} --year 2024 --period 4-7"),
        (0, "assign {db} 2024/6/2/10 1 0113 100.00"),
    ):
        program.records(code, line.format(db=folder / "company.db").split(), "en")
    return {
        "db": folder / "company.db",
        "bad": folder / "bad.db",
        "documents": documents,
        "sheet": folder / "sheet.csv",
        "tables": tables,
        "folder": folder,
    }


def main():
    program_file, root = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2])
    faults = Faults()
    folder = root / "docs" / "schemas"
    schemas = schemas_of(folder, faults)
    listed = set(schemas["init"]["$defs"]["common-code"]["enum"])
    for code in sorted(codes_in_sources(root / "src" / "host") - listed):
        faults.add("docs/schemas/codes.json lacks", code)
    commands = commands_of(program_file)
    for command in sorted(set(commands) ^ set(schemas)):
        faults.add("a command without a schema, or a schema without a command:", command)
    program = Program(program_file, schemas, faults)
    with tempfile.TemporaryDirectory() as scratch:
        check(program, places(pathlib.Path(scratch), program), commands)
    for command in commands:
        if command != "edit" and 0 not in program.seen.get(command, ()) and 1 not in program.seen.get(command, ()):
            faults.add(command, "is never run with a result")
        if 2 not in program.seen.get(command, ()):
            faults.add(command, "is never run with a wrong command line")
    print("\n".join(faults.texts) or f"{program.calls} calls of z7cf fit their schemas")
    return 1 if faults.texts else 0


def check(program, where, commands):
    def in_both_languages(code, words, command=None):
        english, output = program.records(code, words, "en", command)
        chinese, _ = program.records(code, words, "zh-CN", command)
        if without_texts(english) != without_texts(chinese):
            program.faults.add(" ".join(words), "differs between the languages")
        return output

    def filled(line, **more):
        return [word.format(**{**where, **more}) for word in line.split()]

    for code, line in READS:
        output = in_both_languages(code, filled(line))
        if code < 2 and program.call(filled(line), "en").stdout != output:
            program.faults.add(line, "differs from one call to the next")
    for command in commands:
        in_both_languages(2, [command, "--no-such-option"])
        if MISSING.get(command, "") is not None:
            action = ["check"] if command == "outside" else []
            rest = filled(MISSING.get(command, ""))
            in_both_languages(3, [command, *action, str(where["folder"] / "none.db"), *rest])
    in_both_languages(2, ["serve"], "init")
    in_both_languages(2, ["help", "serve"], "init")
    in_both_languages(2, [], "init")
    in_both_languages(2, ["items", str(where["db"]), "--settings", ""], "items")
    for language in ("en", "zh-CN"):
        own = where["folder"] / f"own-{language}.db"
        shutil.copyfile(where["db"], own)
        shutil.copyfile(where["db"].with_suffix(".zqsystem.db"), own.with_suffix(".zqsystem.db"))
        for code, line in WRITES:
            program.records(code, filled(line, db=own, language=language), language)


if __name__ == "__main__":
    sys.exit(main())
