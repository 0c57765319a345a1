"""Commands that need somebody at them: a typist at the trainer, a provider that answers, fingers at a keyboard."""

import http.server
import json
import os
import pty
import re
import select
import signal
import struct
import subprocess
import threading
import time

from world import PATIENCE, Outcome

LEAVE = b"\x04"  # Ctrl-D


def ended(status):
    return -os.WTERMSIG(status) if os.WIFSIGNALED(status) else os.WEXITSTATUS(status)


def practise(arguments, keys):
    """Runs the trainer on a terminal, strikes some keys and leaves; when it will not go, asks again."""

    def play(world, programs, fault):
        world.log.unlink(missing_ok=True)
        variables = world.environment(fault)
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(world.place)
            program = str(programs / arguments[0])
            os.execve(program, [program, *map(world.filled, arguments[1:])], variables)
        seen, typed, deadline = "", False, time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            ready = select.select([terminal], [], [], 2)[0]
            try:
                if ready:
                    got = os.read(terminal, 65536)
                    seen += got.decode(errors="replace")
                    if not got:
                        break
                if not typed and "Esc leaves" in seen:
                    os.write(terminal, keys.encode() + LEAVE)
                    typed = True
                elif typed and not ready or "Not saved yet" in seen[-2000:]:
                    os.write(terminal, LEAVE)
            except OSError:
                break  # nobody has the other end any more
        else:
            os.kill(process, signal.SIGALRM)
        status = ended(os.waitpid(process, 0)[1])
        os.close(terminal)
        return Outcome(status, "", seen, world.calls())

    return play


class Provider(http.server.BaseHTTPRequestHandler):
    """A provider on this machine that has one answer to everything."""

    def do_POST(self):
        self.rfile.read(int(self.headers["Content-Length"]))
        reply = {"choices": [{"message": {"role": "assistant", "content": "That one."}, "finish_reason": "stop"}],
                 "usage": {"prompt_tokens": 5, "completion_tokens": 2}}
        data = json.dumps(reply).encode()
        self.send_response(200)
        self.send_header("Content-Length", str(len(data)))
        self.end_headers()
        self.wfile.write(data)

    def log_message(self, *_):
        pass


def ask(*arguments):
    """Puts a question to such a provider. The answer, which is printed before it is kept, says nothing of that."""
    servers = []

    def play(world, programs, fault):
        if not servers:
            servers.append(http.server.ThreadingHTTPServer(("127.0.0.1", 0), Provider))
            threading.Thread(target=servers[0].serve_forever, daemon=True).start()
        address = f"http://127.0.0.1:{servers[0].server_address[1]}/v1"
        outcome = world.run([str(programs / "tappora-ask"), *arguments, "--provider", "local", "--model", "m",
                             "--url", address], fault)
        outcome.out = ""
        return outcome

    return play


def remember(*widgets):
    """Has the desktop remember widgets. It ends when it finds no display, which comes after that."""
    end = "tappora: display: cannot be opened; widgets need a desktop, by WAYLAND_DISPLAY or DISPLAY\n"

    def play(world, programs, fault):
        outcome = world.run([str(programs / "tappora-widgets"), *widgets, "--remember"], fault)
        if outcome.status == 1 and outcome.err.endswith(end):
            outcome.status, outcome.err = 0, outcome.err.removesuffix(end)
        return outcome

    return play


class Stage:
    """The keyboard that stage.cpp plays, and a clock that stands still."""

    BEGIN = 1_789_898_430  # 2026-09-20 10:00:30 UTC: a press that is booked a little earlier is in the same hour

    DEVICES = 15  # of one stage: a number is used once

    def __init__(self, program, preloads):
        self.program, self.preloads = program, preloads
        self.process, self.number = None, self.DEVICES

    def start(self):
        if self.process:
            self.process.communicate()
        variables = {"LD_PRELOAD": self.preloads, "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0"}
        self.process = subprocess.Popen([self.program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        bufsize=1, env=os.environ | variables)
        self.folder, self.number = self.process.stdout.readline().strip(), 0

    def tell(self, words):
        self.process.stdin.write(words + "\n")
        self.process.stdout.readline()

    def plug(self):
        """A keyboard that nobody has struck yet: what a recorder that was killed left unread is not on it."""
        if self.number == self.DEVICES:
            self.start()
        self.number += 1
        self.tell(f"plug {self.number}")

    def variables(self, world, later=0):
        self.clock = world.place / "clock"
        self.set_clock(self.BEGIN + 60 * later)
        return {"UMOCKDEV_DIR": self.folder, "FAULTS_CLOCK": str(self.clock)}

    def set_clock(self, seconds):
        with open(self.clock, "r+b" if self.clock.exists() else "wb") as file:
            file.write(struct.pack("q", seconds))


class Recorder:
    """A live recorder that is watched."""

    def __init__(self, arguments, environment):
        self.process = subprocess.Popen(arguments, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT)
        self.printed, self.seen = "", 0

    def prints(self, text):
        """Whether it prints this, before it ends or a long time is over."""
        while text not in self.printed[self.seen:]:
            if not select.select([self.process.stdout], [], [], PATIENCE)[0]:
                self.process.send_signal(signal.SIGALRM)
            got = os.read(self.process.stdout.fileno(), 65536)
            if not got:
                return False
            self.printed += got.decode(errors="replace")
        self.seen = self.printed.index(text, self.seen) + len(text)
        return True

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        while self.prints("\0"):
            pass
        return self.process.wait()


MINUTES = ((30, 30, 30), (31,), (32,))  # the keys that are struck in each: A three times, S, D


def record(*arguments, later=0):
    """Records three minutes at a keyboard, so many minutes later than usual."""

    def play(world, programs, fault):
        stage = world.stage()
        world.log.unlink(missing_ok=True)
        stage.plug()
        environment = world.environment(fault) | stage.variables(world, later)
        environment["LD_PRELOAD"] += " " + stage.preloads
        recorder = Recorder([str(programs / "tappora-record"), *map(world.filled, arguments), "--watch"], environment)
        if recorder.prints("listening to A keyboard"):
            strike(stage, recorder, later)
        status = recorder.end()
        stage.tell(f"unplug {stage.number}")
        return Outcome(status, "", recorder.printed, world.calls())

    return play


def strike(stage, recorder, later=0):
    for minute, keys in enumerate(MINUTES):
        stage.set_clock(stage.BEGIN + 60 * (later + minute))
        for key in keys:
            stage.tell(f"tap {stage.number} {key}")
            if not recorder.prints("key — counted\n"):
                return


def counted(outcome):
    return outcome.err.count("key — counted\n")


def said_lost(outcome):
    return sum(int(number.replace(",", "")) for number in re.findall(r"([\d,]+) press", outcome.err.partition("not stored: ")[2]))

