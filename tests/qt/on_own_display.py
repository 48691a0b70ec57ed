#!/usr/bin/env python3
"""Runs a program on a display of its own: on_own_display.py XVFB PROGRAM [ARGUMENT...]

The server picks a free display number, listens on no network port, and is ended with the program."""
import os
import select
import subprocess
import sys

SECONDS_TO_START = 60


def started_display(server, reading_end):
    ready, _, _ = select.select([reading_end], [], [], SECONDS_TO_START)
    number = os.read(reading_end, 16).decode().strip() if ready else ""
    if not number:
        raise SystemExit(f"the display server did not start (exit code {server.poll()})")
    return ":" + number


def main(xvfb, program):
    reading_end, writing_end = os.pipe()
    server = subprocess.Popen([xvfb, "-displayfd", str(writing_end), "-screen", "0", "1600x1000x24",
                               "-nolisten", "tcp", "-terminate"],
                              pass_fds=[writing_end], stderr=subprocess.DEVNULL)
    os.close(writing_end)
    try:
        environment = {name: value for name, value in os.environ.items() if name != "XAUTHORITY"}
        environment["DISPLAY"] = started_display(server, reading_end)
        return subprocess.run(program, env=environment).returncode
    finally:
        server.terminate()
        server.wait()


sys.exit(main(sys.argv[1], sys.argv[2:]))
