#!/usr/bin/env python3
"""Runs a program with a print server of its own, whose default printer writes PDF to a file:
on_own_print_queue.py CUPSD PROGRAM [ARGUMENT...]

The program finds the file's name in QV_PRINTED_FILE. The server listens on this machine alone and is ended,
its folder removed, with the program."""
import os
import pathlib
import socket
import subprocess
import sys
import tempfile
import time

SECONDS_TO_START = 60
QUEUE = "page"
MODEL = "lsb/usr/cupsfilters/Generic-PDF_Printer-PDF.ppd"

SERVER = """Listen 127.0.0.1:{port}
Listen {folder}/socket
Browsing No
DefaultAuthType None
WebInterface No
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
"""

FILES = """FileDevice Yes
ServerRoot {folder}
StateDir {folder}/state
CacheDir {folder}/cache
RequestRoot {folder}/spool
TempDir {folder}/spool/tmp
DocumentRoot {folder}
AccessLog {folder}/access_log
ErrorLog {folder}/error_log
PageLog {folder}/page_log
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def write_settings(folder, port):
    for name in ("state", "cache", "spool", "spool/tmp"):
        (folder / name).mkdir()
        if os.getuid() == 0:
            import grp
            os.chown(folder / name, 0, grp.getgrnam("lp").gr_gid)
            os.chmod(folder / name, 0o770)
    (folder / "cupsd.conf").write_text(SERVER.format(folder=folder, port=port))
    (folder / "cups-files.conf").write_text(FILES.format(folder=folder))


def answers(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


def wait_for(server, port):
    for _ in range(SECONDS_TO_START * 10):
        if answers(port):
            return
        if server.poll() is not None:
            break
        time.sleep(0.1)
    raise SystemExit("the print server did not start")


def make_queue(printed, environment):
    subprocess.run(["lpadmin", "-p", QUEUE, "-E", "-v", f"file:{printed}", "-m", MODEL], env=environment,
                   check=True)
    subprocess.run(["lpadmin", "-d", QUEUE], env=environment, check=True)


def main(cupsd, program):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        os.chmod(folder, 0o755)
        port = free_port()
        write_settings(folder, port)
        printed = folder / "printed.pdf"
        server = subprocess.Popen([cupsd, "-f", "-c", folder / "cupsd.conf", "-s", folder / "cups-files.conf"])
        environment = dict(os.environ, CUPS_SERVER=f"127.0.0.1:{port}", QV_PRINTED_FILE=str(printed))
        try:
            wait_for(server, port)
            make_queue(printed, environment)
            code = subprocess.run(program, env=environment).returncode
            if code != 0:
                print((folder / "error_log").read_text()[-3000:], file=sys.stderr)
            return code
        finally:
            server.terminate()
            server.wait()


sys.exit(main(sys.argv[1], sys.argv[2:]))
