#!/usr/bin/python3
"""A watch of a simulated management controller: what happens to the controller's System Event Log
arrives in the log, every record once and in its order.

The controller is ipmi_sim on a free port of the loopback; ipmitool adds to its log, clears it, and
is the watch's command. Records are told apart by the ids that the controller gives them, which go
on after a clear.

usage: simulated_controller.py EVTLOGCTL
"""

import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

PATIENCE = 240  # seconds, for what takes a moment on a machine that is not busy
CAPACITY = 20  # records of the controller's log
RECORD = 16
PASSWORD = "simulated"


def wait_until(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        assert time.monotonic() < end, f"never came to pass: {what}"
        time.sleep(0.05)


class Controller:
    """ipmi_sim, and ipmitool to talk to it."""

    def __init__(self, folder):
        self.folder = folder
        self.process = None
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as probe:
            probe.bind(("127.0.0.1", 0))
            self.port = str(probe.getsockname()[1])
        (folder / "state").mkdir()
        auths = "".join(f"  allowed_auths_{level} none md2 md5 straight\n"
                        for level in ("callback", "user", "operator", "admin"))
        (folder / "lan.conf").write_text(
            f'name "controller"\nstartlan 1\n  addr 127.0.0.1 {self.port}\n  priv_limit admin\n'
            f'{auths}  guid a123456789abcdefa123456789abcdef\nendlan\n'
            f'user 2 true "reader" "{PASSWORD}" admin 10 none md2 md5 straight\n')
        (folder / "commands").write_text(
            "mc_setbmc 0x20\n"
            "mc_add 0x20 0 no-device-sdrs 0x23 9 8 0x9f 0x1291 0xf02\n"
            f"sel_enable 0x20 {CAPACITY} 0x0a\n"
            "mc_enable 0x20\n")

    def command(self, *words):
        return ["ipmitool", "-I", "lanplus", "-C", "3", "-N", "2", "-R", "5", "-H", "127.0.0.1",
                "-p", self.port, "-U", "reader", "-E", *words]

    def run(self, *words):
        return subprocess.run(self.command(*words), stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, check=False)

    def start(self):
        folder = self.folder
        with open(folder / "simulation.log", "ab") as log:
            self.process = subprocess.Popen(
                ["ipmi_sim", "-n", "-c", folder / "lan.conf", "-f", folder / "commands", "-s",
                 folder / "state"], stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        wait_until(self.answers, "the controller answers")

    def answers(self):
        assert self.process.poll() is None, "the simulation ended"
        return self.run("sel", "info").returncode == 0

    def kill(self):
        if self.process:
            self.process.kill()
            self.process.wait()
            self.process = None

    def add(self, *last_bytes):
        """Adds an event of the temperature sensor 0x30 for each last byte."""
        events = self.folder / "events"
        for last in last_bytes:
            events.write_text(f"0x04 0x01 0x30 0x01 0x59 0x64 0x{last:02x} # upper critical\n")
            self.run("sel", "add", str(events))

    def log(self):
        """All records, as the controller has them now."""
        file = self.folder / "reading"
        file.write_bytes(b"")
        for _ in range(10):
            done = self.run("sel", "writeraw", str(file))
            data = file.read_bytes()
            listed = [line for line in done.stdout.splitlines() if "|" in line]
            if done.returncode == 0 and len(data) == RECORD * len(listed):
                return [data[i:i + RECORD] for i in range(0, len(data), RECORD)]
        raise AssertionError(f"the controller's log cannot be read: {done}")

    def clear(self):
        wait_until(lambda: self.run("sel", "clear").returncode == 0 and not self.log(), "cleared")


class Watch:
    """evtlogctl import --watch of the controller."""

    def __init__(self, tool, controller, folder):
        self.tool = tool
        self.controller = controller
        self.root = folder / "root"
        self.output = folder / "output"
        self.errors = folder / "errors"
        self.process = None
        self.records = []  # that the controller ever had, in its order

    def start(self):
        with open(self.output, "ab") as output, open(self.errors, "ab") as errors:
            self.process = subprocess.Popen(
                [self.tool, "--root", self.root, "import", "--watch", "--interval", "0.2",
                 "--ipmitool-order", "--", *self.controller.command("sel", "writeraw", "{}")],
                stdin=subprocess.DEVNULL, stdout=output, stderr=errors)

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        assert self.process.wait(PATIENCE) == 0
        assert not list(self.root.glob("evtlog/*.lck")), "the lock stayed behind"

    def kill(self):
        if self.process:
            self.process.kill()
            self.process.wait()

    def exported(self):
        done = subprocess.run([self.tool, "--root", self.root, "export"], capture_output=True,
                              check=False)
        return done.stdout

    def expect_all(self, what):
        """What the controller has now is in the log, behind all that it had before."""
        known = set(self.records)
        self.records += [record for record in self.controller.log() if record not in known]
        wanted = b"".join(self.records)
        wait_until(lambda: self.exported() == wanted, f"{what}: {len(self.records)} in the log")
        time.sleep(1)  # a few more readings
        assert self.exported() == wanted, f"{what}: added again"


def play(tool, folder):
    controller = Controller(folder)
    watch = Watch(tool, controller, folder)
    try:
        controller.start()
        controller.clear()
        watch.start()
        controller.add(1, 2, 3)
        watch.expect_all("new records")
        controller.add(*range(4, CAPACITY + 8))
        assert len(controller.log()) == CAPACITY, "the controller takes more than it should"
        watch.expect_all("a full log")
        controller.clear()
        controller.add(1, 2)
        watch.expect_all("a cleared log")
        controller.kill()
        wait_until(lambda: "Unable to establish" in watch.errors.read_text(), "it is said")
        controller.start()
        wait_until(lambda: "all is well again" in watch.errors.read_text(), "the end of it, too")
        controller.add(3)
        watch.expect_all("after the controller was away")
        watch.stop()
        controller.add(4)
        watch.start()
        watch.expect_all("added while nobody watched")
        watch.stop()
        controller.clear()
        controller.add(5)
        watch.start()
        watch.expect_all("cleared while nobody watched")
        watch.stop()
        check_texts(watch)
    except BaseException:
        for file in (watch.output, watch.errors, folder / "simulation.log"):
            print(f"---- {file.name}\n{file.read_text() if file.exists() else ''}")
        raise
    finally:
        watch.kill()
        controller.kill()
    return len(watch.records)


def check_texts(watch):
    lines = subprocess.run([watch.tool, "--root", watch.root, "list"], capture_output=True,
                           text=True, check=True).stdout.splitlines()
    assert len(lines) == len(watch.records)
    for line in lines:
        assert "Temperature 0x30: Upper Major asserted, reading 100" in line, line
        assert "  major  " in line, line
    added = [int(count) for count in re.findall(r"records read, (\d+) added", read(watch.output))]
    assert sum(added) == len(watch.records) and 0 not in added, read(watch.output)
    for line in read(watch.errors).splitlines():
        assert re.match(r"evtlogctl: ipmitool( ended with exit status \d+: .*|: all is well again)$",
                        line), line


def read(file):
    return file.read_text(encoding="utf-8")


def main():
    os.environ["IPMI_PASSWORD"] = PASSWORD
    with tempfile.TemporaryDirectory() as folder:
        count = play(sys.argv[1], Path(folder))
    print(f"{count} records of a simulated controller arrived once")


if __name__ == "__main__":
    main()
