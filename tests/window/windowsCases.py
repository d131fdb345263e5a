"""What the window of z7cf.exe does on Windows alone."""

from cases import main
from editCases import VOUCHER, Company, ended, equal


def show(company):
    """Opens the dialog and closes it, which must not ask whether the widths shall be kept; returns where everything was."""
    window = company.edit(VOUCHER)
    window.until(row="1")
    window.click("cmdCancel")
    ended(window)
    return window.places


def sizes_follow_the_resolution_of_the_screen(screen, program):
    def dots_per_inch(number):
        screen.run("reg", "add", r"HKCU\Control Panel\Desktop", "/v", "LogPixels", "/t", "REG_DWORD", "/d", number, "/f")

    company = Company(screen, program)
    usual = show(company)
    dots_per_inch("144")
    try:
        larger = show(company)
    finally:
        dots_per_inch("96")
    for name in ("form", "cmdOk", "cell", "column.1", "column.5"):
        for size in (2, 3):
            assert abs(larger[name][size] - 1.5 * usual[name][size]) <= 1.5, (name, usual[name], larger[name])
    equal(show(company)["form"], usual["form"])


if __name__ == "__main__":
    main([sizes_follow_the_resolution_of_the_screen])
