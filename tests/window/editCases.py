"""z7cf edit as an accountant uses it: the dialog with its rules, on the sample company, by keys and clicks."""

import contextlib
import json
import pathlib
import re
import sqlite3
import tempfile

from cases import main
from screen import Watched

TITLE = "Cash-flow rows of the voucher"
VOUCHER = "2024/3/1/1"  # two lines of income, 1,347.00 and 175.11, and the cash for them


def equal(found, wanted):
    assert found == wanted, f"found {found!r}, wanted {wanted!r}"


class Company:
    """The sample company in a temporary folder, and z7cf to work on it."""

    def __init__(self, screen, program):
        self.screen, self.program = screen, program
        self.folder = tempfile.TemporaryDirectory(prefix="z7edit")
        self.file = str(pathlib.Path(self.folder.name, "company.db"))
        self.run("init", self.file, "--sample")

    def run(self, *arguments, may_refuse=False):
        return self.screen.run(self.program, *arguments, check=not may_refuse)

    def edit(self, *arguments, title=TITLE, language="en"):
        window = Watched(self.screen, self.program, "edit", self.file, *arguments, "--lang", language,
                         Z7CF_WINDOW_STATES="1")
        window.until(top=title)
        return window

    def rows(self, voucher=VOUCHER):
        """Line, account, item and amounts of the stored rows."""
        stored = json.loads(self.run("rows", self.file, voucher, "--json", may_refuse=True))["rows"]
        return [[str(row[name]) for name in ("inid", "ccode", "md", "mc", "cCashItem")] for row in stored]

STORED = [["2", "6001", "0.0", "1347.0", "0101"], ["3", "222102", "0.0", "175.11", "0101"]]


def ended(window, code=0):
    equal(window.until_ended(), code)
    remarks = r"Nothing was saved\.|Logged as run \d+\."
    equal([line for line in window.error_text().splitlines() if not re.fullmatch(remarks, line)], [])


def ok_saves_the_rows_as_they_were_generated(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.until(focus="SuperGrid1", row="1", col="4", rows="3",
                 cells="门市零售收款|6001|Cr|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.keys("F6")
    ended(window)
    equal(company.rows(), STORED)


def a_line_is_split_by_f5_a_picked_account_the_rest_and_a_picked_item(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.keys("Left", col="3")
    window.write("1000", edit="open", text="1000")
    window.keys("Return", edit="closed")
    window.keys("F5", rows="4", row="3", col="1")
    window.keys("F4", top="Voucher lines", pick="2", cells="2|6001|0.00|1,347.00|")
    window.keys("Return", top=TITLE, edit="open", text="6001", cells="||Cr|347.00|||2|")
    window.keys("Tab", edit="closed", col="3", cells="门市零售收款|6001|Cr|347.00|||2|")
    window.keys("Tab", col="4")
    window.keys("F4", focus="search")
    window.write("0103")
    window.until(pick="1")
    window.keys("Return", top=TITLE, edit="open", text="0103")
    window.keys("F6")
    ended(window)
    equal(sorted(company.rows()), sorted([["2", "6001", "0.0", "1000.0", "0101"], STORED[1],
                                          ["2", "6001", "0.0", "347.0", "0103"]]))


def the_list_of_items_follows_what_was_typed_in_the_cell(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.keys("F4", focus="search", pick="1", cells="0101|销售商品、提供劳务收到的现金|")
    window.keys("Escape", top=TITLE, edit="open", text="0101")
    window.keys("BackSpace", text="")
    window.keys("F4", focus="search")
    all_items = int(window.state["pick"])
    window.keys("Down")
    picked = window.state["cells"].split("|")
    window.keys("Return", top=TITLE, edit="open", text=picked[0])
    window.keys("Escape", edit="closed", cells="门市零售收款|6001|Cr|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.write("02", edit="open", text="02")
    window.keys("F4", focus="search")
    assert 1 < int(window.state["pick"]) < all_items and "02" in window.state["cells"], window.state
    window.keys("Return", top=TITLE, edit="open")
    window.keys("Escape", edit="closed")
    window.click("cmdCancel")
    ended(window)


def a_wrong_amount_is_refused_where_it_stands(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.keys("Left", col="3")
    window.write("0", edit="open", text="0")
    window.keys("Return", top="Cash flow", icon="64", prompt="Enter an amount other than zero.")
    window.keys("Return", top=TITLE, edit="open", text="0", col="3", focus="SuperGrid1")
    window.keys("Escape", edit="closed", cells="门市零售收款|6001|Cr|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.write("1000", text="1000")
    window.keys("Return", edit="closed")
    window.keys("F6", top="Cash flow", icon="64", box="notice")
    assert "1522.11" in window.state["prompt"] and "1175.11" in window.state["prompt"], window.state
    window.keys("Return", top=TITLE)
    window.click("cmdCancel")
    ended(window)
    equal(company.rows(), [])


def cancel_and_the_close_box_restore_the_rows(screen, program):
    company = Company(screen, program)
    ended_by = {"cancel": lambda window: window.click("cmdCancel"), "close": lambda window: window.close_window()}
    window = company.edit(VOUCHER)
    window.keys("F6")
    ended(window)
    for leave in ended_by.values():
        window = company.edit(VOUCHER)
        window.until(row="1", col="4", rows="3")
        window.keys("Delete", top="Cash flow", box="question", default="no", prompt="Delete this row?")
        window.keys("Tab", default="yes")
        window.keys("Return", top=TITLE, rows="2")
        leave(window)
        ended(window)
        equal(company.rows(), STORED)


def read_only_shows_and_changes_nothing(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER, "--read-only")
    window.until(rows="3", enabled="cmdCancel ")
    window.write("9")
    window.keys("F5", "F6", "Delete", "Down", row="2", rows="3", edit="closed")
    window.click("cmdCancel")
    ended(window)
    equal(company.rows(), [])


def regenerate_begins_with_rows_of_the_voucher(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.write("0103", edit="open", text="0103")
    window.keys("F6")
    ended(window)
    equal(company.rows()[0][4], "0103")
    window = company.edit(VOUCHER, "--regenerate")
    window.until(row="1", cells="门市零售收款|6001|Cr|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.keys("F6")
    ended(window)
    equal(company.rows(), STORED)


def the_button_regenerates_after_a_question(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.keys("Left", col="3")
    window.write("5", text="5")
    window.keys("Return", edit="closed")
    window.click("cmdAutoGetData", top="Cash flow", box="question", icon="32", default="no")
    window.keys("Tab", default="yes")
    window.keys("Return", top=TITLE, row="1", col="4",
                cells="门市零售收款|6001|Cr|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.click("cmdCancel")
    ended(window)


def a_template_is_saved_and_replaced_after_a_question(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.click("cmdTemplate", top="Cash flow")
    first = window.state["box"]
    if first == "question":  # the sample company has this template
        window.until(icon="32", default="yes")
        window.keys("Return")
    window.until(top="Cash flow", box="notice", prompt="The template was saved.")
    window.keys("Return", top=TITLE)
    window.click("cmdTemplate", top="Cash flow", box="question", icon="32", default="yes",
                 prompt="A template for this account and side already exists. Replace it?")
    window.keys("Tab", default="no")
    window.keys("Return", top=TITLE)
    window.click("cmdCancel")
    ended(window)


def widths_are_kept_after_a_drag_and_its_question(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER)
    window.click("cmdCancel")  # the first close stores the widths without a question
    ended(window)
    window = company.edit(VOUCHER)
    window.until(row="1")
    width = window.places["column.1"][2]
    window.drag_border(1, 20)
    window.keys("Left", col="3")
    window.click("cmdCancel", top="Notice", box="question", default="no",
                 prompt="The column widths have changed. Save them?")
    window.keys("Tab", default="yes")
    window.keys("Return")
    ended(window)
    window = company.edit(VOUCHER)
    window.until(row="1")
    assert window.places["column.1"][2] > width + 10, window.places
    window.click("cmdCancel")
    ended(window)
    equal(company.run("widths", company.file, "--reset", "--lang", "en"), "Stored column widths removed: 8.\n")
    window = company.edit(VOUCHER)
    window.until(row="1")
    equal(window.places["column.1"][2], width)
    window.click("cmdCancel")
    ended(window)


def an_outside_voucher_is_edited_and_saved(screen, program):
    company = Company(screen, program)
    window = company.edit("--outside", "sales_voucher", "AR-2024-0301")
    window.until(row="1", col="4", rows="2")
    before = window.state["cells"]
    assert "|1122|Cr|146,930.33|" in before, before
    window.keys("F6")
    ended(window)
    assert any("1" in line and "AR-2024-0301" in line for line in window.log), window.log


def an_outside_voucher_is_not_saved_when_its_item_is_gone(screen, program):
    company = Company(screen, program)
    window = company.edit("--outside", "sales_voucher", "AR-2024-0301")
    window.until(row="1", rows="2")
    assert "|0101|" in window.state["cells"], window.state["cells"]
    with contextlib.closing(sqlite3.connect(company.file)) as desk, desk:
        desk.create_collation("z7_text", lambda a, b: (a > b) - (a < b))  # item codes are plain digits here
        desk.execute("delete from fitemss98 where citemcode='0101'")
    window.keys("F6")
    equal(window.until_ended(), 1)
    assert "cash-flow item 0101 (from " in window.error_text(), window.error_text()
    equal(company.rows("2024/3/1/2"), [])


def a_voucher_without_cash_gets_a_message_in_place_of_the_dialog(screen, program):
    company = Company(screen, program)
    window = company.edit("2024/1/3/3", title="Cash flow")
    window.until(box="notice", icon="64", prompt="The voucher has no cash-flow account, so it needs no cash-flow rows.")
    window.keys("Return")
    ended(window)


def the_dialog_speaks_chinese(screen, program):
    company = Company(screen, program)
    window = company.edit(VOUCHER, title="现金流量录入修改", language="zh")
    window.until(row="1", cells="门市零售收款|6001|贷|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.keys("Delete", top="现金流量", box="question", prompt="确定要删除当前行吗？")
    window.keys("Return", top="现金流量录入修改", rows="3")
    window.click("cmdCancel")
    equal(window.until_ended(), 0)


def edit_says_that_there_is_no_screen(screen, program):
    company = Company(screen, program)
    window = Watched(screen, program, "edit", company.file, VOUCHER, "--lang", "en", DISPLAY=":does-not-exist")
    equal(window.until_ended(), 2)
    assert "no screen" in window.error_text(), window.error_text()


if __name__ == "__main__":
    main([value for name, value in list(globals().items())
          if callable(value) and getattr(value, "__module__", "") == "__main__"
          and name not in ("equal", "ended", "Company")])
