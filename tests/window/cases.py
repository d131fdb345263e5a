"""Runs window cases by name, for ctest: CASES_FILE --list, or CASES_FILE NAME ARGUMENTS..."""

import sys

from screen import WINE, Screen, missing_tools


def run(cases, arguments):
    """cases: functions named after the behaviour, each called with an open Screen and the other arguments."""
    by_name = {f"{case.__name__}": case for case in cases}
    if arguments == ["--list"]:
        print("\n".join(by_name))
        return 0
    missing = missing_tools()
    if missing:
        print("skipped: missing " + ", ".join(missing))
        return 77
    with Screen(wine=WINE) as screen:
        by_name[arguments[0]](screen, *arguments[1:])
    return 0


def main(cases):
    sys.exit(run(cases, sys.argv[1:]))
