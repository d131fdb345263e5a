"""z7cf edit with a connection string: the dialog's own sessions use ODBC, too."""

from cases import main
from editCases import STORED, TITLE, VOUCHER, Company, ended, equal
from screen import Watched


def a_voucher_behind_a_connection_string_is_edited_and_saved(screen, program, z7cf, functions):
    company = Company(screen, z7cf)
    window = Watched(screen, program, "edit", VOUCHER, "--lang", "en", Z7CF_WINDOW_STATES="1",
                     Z7CF_CONNECT=f"Driver=SQLite3;Database={company.file};LoadExt={functions}")
    window.until(top=TITLE, row="1", col="4", rows="3",
                 cells="门市零售收款|6001|Cr|1,347.00|0101|销售商品、提供劳务收到的现金|2|")
    window.write("0103", edit="open", text="0103")
    window.keys("Return", edit="closed", col="6")
    window.keys("F5", rows="4", row="3", col="1")
    window.keys("F4", top="Voucher lines", pick="2", cells="2|6001|0.00|1,347.00|")
    window.keys("Escape", top=TITLE, edit="open")
    window.keys("Escape", edit="closed")
    window.keys("F6")
    ended(window)
    equal(company.rows(), [STORED[0][:4] + ["0103"], STORED[1]])


if __name__ == "__main__":
    main([a_voucher_behind_a_connection_string_is_edited_and_saved])
