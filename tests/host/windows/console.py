"""z7cf.exe on a console of Windows: console.py PROGRAM PREFIX, with Wine's own files in the folder PREFIX.

Wine takes a terminal for a console. What the program writes must arrive as the characters that it means; as bytes in the
console's code page the Chinese ones would be lost.
"""

import os
import pty
import re
import subprocess
import sys
import tempfile


def on_console(command, environment):
    """What a program writes to a console, without the sequences that move its cursor."""
    master, slave = pty.openpty()
    with subprocess.Popen(command, env=environment, stdin=slave, stdout=slave, stderr=slave, start_new_session=True) as run:
        os.close(slave)
        written = b""
        while True:
            try:
                more = os.read(master, 65536)
            except OSError:  # the last program has closed it
                break
            if not more:
                break
            written += more
    os.close(master)
    return re.sub(r"\x1b\[[0-9;?]*[a-zA-Z]|\r", "", written.decode("utf-8", "replace"))


def main(program, prefix):
    environment = dict(os.environ, WINEPREFIX=prefix, WINEARCH="win64", WINEDEBUG="-all", LC_ALL="C.UTF-8", TERM="xterm",
                       WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d")
    with tempfile.TemporaryDirectory(prefix="z7console") as folder:
        company = os.path.join(folder, "公司.db")
        made = on_console(["wine", program, "init", company, "--sample", "--lang", "zh"], environment)
        assert "公司.db" in made, made
        rows = on_console(["wine", program, "rows", company, "2024/3/1/1", "--lang", "zh"], environment)
        assert "没有现金流量行。" in rows and "凭证现金净额为借方 1,522.11" in rows, rows


if __name__ == "__main__":
    main(*sys.argv[1:])
