"""What a screen reader can announce of the dialog and its pop-ups."""

import sys

from assistance import Assistance, missing_parts
from cases import main
from editCases import TITLE, VOUCHER, Company, ended, equal
from screen import Watched

BUTTONS = ["Save template", "Refill", "Add row", "Insert row", "Delete row", "OK", "Cancel"]


def edit(screen, company, assistance):
    window = Watched(screen, company.program, "edit", company.file, VOUCHER, "--lang", "en", Z7CF_WINDOW_STATES="1",
                     **assistance.environment)
    window.until(top=TITLE, row="1", col="4")
    return window


def every_button_has_its_caption_for_a_name(screen, program):
    with Assistance(screen) as assistance:
        company = Company(screen, program)
        window = edit(screen, company, assistance)
        found = assistance.until(("frame", TITLE), ("push button", "Cancel"))
        equal([name for role, name in found if role == "push button" and name in BUTTONS], BUTTONS)
        window.click("cmdCancel")
        ended(window)


def the_grid_tells_the_current_cell_and_its_editor_the_column(screen, program):
    with Assistance(screen) as assistance:
        company = Company(screen, program)
        window = edit(screen, company, assistance)
        assistance.until(("scroll pane", TITLE), ("panel", "Item code: 0101"))
        window.keys("Left", col="3")
        assistance.until(("panel", "Amount: 1,347.00"))
        window.keys("Right", "F2", edit="open")
        assistance.until(("text", "Item code"), ("push button", "Item code…"))
        window.write("0103", text="0103")
        window.keys("Return", edit="closed", col="6")
        assistance.until(("panel", "Line: 2"))
        window.keys("Left", "Left", col="4")
        assistance.until(("panel", "Item code: 0103"))
        window.keys("F4", focus="search")
        assistance.until(("text", "Cash-flow item"))
        window.keys("Escape", top=TITLE)
        window.keys("Escape", edit="closed")
        window.click("cmdCancel")
        ended(window)


if __name__ == "__main__":
    missing = missing_parts()
    if missing and sys.argv[1:] != ["--list"]:
        print("skipped: missing " + ", ".join(missing))
        sys.exit(77)
    main([every_button_has_its_caption_for_a_name, the_grid_tells_the_current_cell_and_its_editor_the_column])
