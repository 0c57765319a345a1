"""An emulated machine: QEMU, what it is told through its monitor (QMP), and a shell in it at the end of a port."""

import json
import queue
import shlex
import socket
import subprocess
import threading
import time

PATIENCE = 120  # seconds after which a machine is taken for one that hangs
DISPLAYS = ("screen0", "screen1", "screen2")  # a keyboard listens to what is typed at its display


class Failed(Exception):
    """Something that a check waits for did not come."""


class Port:
    """The lines of a character device of the machine."""

    def __init__(self, path):
        self.socket = connected(path)
        self.lines = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.socket.makefile("r", errors="replace", newline="\n"):
            self.lines.put(line.rstrip("\n"))

    def next(self, what):
        try:
            return self.lines.get(timeout=PATIENCE)
        except queue.Empty:
            raise Failed(f"nothing came: {what}") from None

    def send(self, line):
        self.socket.sendall(line.encode() + b"\n")


def connected(path):
    deadline = time.monotonic() + PATIENCE
    while True:
        try:
            made = socket.socket(socket.AF_UNIX)
            made.connect(str(path))
            return made
        except OSError:
            if time.monotonic() > deadline:
                raise
            time.sleep(0.1)


class Machine:
    def __init__(self, kernel, system, place):
        self.place = place
        self.log = place / "console.log"
        sockets = {name: place / f"{name}.sock" for name in ("monitor", "agent", "witness")}
        for path in sockets.values():
            path.unlink(missing_ok=True)
        self.process = subprocess.Popen(
            ["qemu-system-x86_64", *self.hardware(kernel, system, sockets)], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=open(place / "qemu.log", "w"))
        self.monitor, self.agent = Port(sockets["monitor"]), Port(sockets["agent"])
        self.witness = Port(sockets["witness"])
        self.ask_monitor("qmp_capabilities")

    def hardware(self, kernel, system, sockets):
        disk = self.place / "slow.img"
        words = ["-accel", "tcg", "-machine", "pc", "-cpu", "max", "-m", "768", "-smp", "1", "-nodefaults",
                 "-display", "none", "-vga", "none", "-no-reboot", "-rtc", "base=2026-09-20T09:00:00",
                 "-kernel", str(kernel), "-initrd", str(system), "-append", "console=ttyS0 quiet panic=-1",
                 "-serial", f"file:{self.log}", "-qmp", f"unix:{sockets['monitor']},server=on,wait=off",
                 "-device", "virtio-serial-pci",
                 "-drive", f"if=none,id=slow,file={disk},format=raw,cache=unsafe",
                 "-device", "virtio-blk-pci,drive=slow,id=slow-disk", "-device", "qemu-xhci,id=usb"]
        for name in ("agent", "witness"):
            words += ["-chardev", f"socket,id={name},path={sockets[name]},server=on,wait=off",
                      "-device", f"virtserialport,chardev={name},name={name}"]
        for display in DISPLAYS:
            words += ["-device", f"bochs-display,id={display}"]
        return words + ["-device", "usb-kbd,display=screen0,id=first-keyboard",
                        "-device", "virtio-keyboard-pci,display=screen1,id=second-keyboard"]

    def wait_until_ready(self):
        if self.agent.next("the machine did not start") != "ready":
            raise Failed(f"the machine did not start: {self.log}")

    def ask_monitor(self, command, **arguments):
        self.monitor.send(json.dumps({"execute": command, "arguments": arguments}))
        while True:
            answer = json.loads(self.monitor.next(command))
            if "error" in answer:
                raise Failed(f"{command}: {answer['error']['desc']}")
            if "return" in answer:
                return answer["return"]

    def run(self, script):
        """What a line of shell prints in the machine, and its exit status."""
        assert "\n" not in script
        self.agent.send(script)
        text = []
        while True:
            line = self.agent.next(script)
            head, mark, status = line.partition("\036")
            text.append(head)
            if mark:
                return "\n".join(text), int(status)

    def must(self, script):
        text, status = self.run(script)
        if status != 0:
            raise Failed(f"{script}: ended with {status}: {text}")
        return text

    def wait_for(self, condition, what):
        """Waits in the machine until a line of shell succeeds."""
        tries = 5 * PATIENCE
        _, status = self.run(f"n={tries}; until {condition}; do n=$((n-1)); [ $n -gt 0 ] || exit 1; sleep 0.2; done")
        if status != 0:
            raise Failed(f"waited in vain: {what}")

    def read(self, path):
        """A file's text, or nothing when there is no file."""
        text, status = self.run(f"cat {shlex.quote(path)} 2>/dev/null")
        return text if status == 0 else None

    def end(self):
        self.process.kill()
        self.process.wait()
