"""Takes the pictures of the guide: pictures.py Z7CF SCALE FOLDER. See scripts/pictures.sh."""

import hashlib
import pathlib
import subprocess
import sys
import tempfile

from screen import Screen, Watched

VOUCHER = "2024/3/1/1"
TITLES = {"en": "Cash-flow rows of the voucher", "zh": "现金流量录入修改"}
LINES = {"en": "Voucher lines", "zh": "凭证分录参照"}
NOTICE = {"en": "Cash flow", "zh": "现金流量"}


class Album:
    def __init__(self, screen, scale, folder):
        self.screen, self.scale, self.folder = screen, scale, folder

    def take(self, window, name):
        """The part of the screen covered by the windows, after it has stopped changing."""
        self.screen.output("xdotool", "mousemove", "1", "1")
        x, y, width, height = window.places["form"]
        area = f"{width + 8}x{height + 30}+{x - 4}+{y - 24}"
        file = str(pathlib.Path(self.folder, name + ".png"))
        last, same = None, 0
        while same < 3:
            self.screen.output("import", "-window", "root", "-crop", area, "+repage", "-depth", "8", "-strip", file)
            now = hashlib.sha256(pathlib.Path(file).read_bytes()).hexdigest()
            same = same + 1 if now == last else 0
            last = now
        # The window has few colours, so the file can be small.
        subprocess.run(["convert", file, "-colors", "96", "PNG8:" + file], check=True)


def dialog(screen, album, program, company, language):
    window = Watched(screen, program, "edit", company, VOUCHER, "--lang", language, Z7CF_WINDOW_STATES="1")
    window.until(top=TITLES[language], row="1", col="4")
    window.keys("Left", col="3")
    window.keys("Right", col="4")
    album.take(window, "dialog-" + language)
    window.keys("Tab", col="6")
    album.take(window, "dialog-end-" + language)
    window.keys("Left", "Left", col="4")
    window.keys("F2", edit="open")
    album.take(window, "editor-" + language)
    window.keys("BackSpace", text="")
    window.keys("F4", focus="search")
    album.take(window, "items-" + language)
    window.keys("Escape", top=TITLES[language], edit="open")
    window.keys("Escape", edit="closed")
    window.keys("F5", rows="4", row="3", col="1")
    window.keys("F4", top=LINES[language], pick="2")
    album.take(window, "lines-" + language)
    window.keys("Escape", top=TITLES[language], edit="open")
    window.keys("Return", top=NOTICE[language], box="notice")
    album.take(window, "notice-" + language)
    window.keys("Return", top=TITLES[language])
    window.keys("Escape", edit="closed")
    window.keys("Delete", rows="3")
    window.keys("Delete", top=NOTICE[language], box="question")
    album.take(window, "question-" + language)
    window.keys("Return", top=TITLES[language])
    window.click("cmdCancel")
    window.until_ended()


def main(program, scale, folder):
    with tempfile.TemporaryDirectory() as scratch, Screen(scale=int(scale), size="2400x1500") as screen:
        company = str(pathlib.Path(scratch, "company.db"))
        screen.run(program, "init", company, "--sample", "--quiet")
        for language in TITLES:
            dialog(screen, Album(screen, int(scale), folder), program, company, language)


if __name__ == "__main__":
    main(*sys.argv[1:])
