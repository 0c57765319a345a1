"""Many programs write into one day at once, and some of them are killed: each adds all that it has, or nothing."""

import random
import signal
import subprocess
import tempfile
from pathlib import Path

import ledger
from commands import AT, CONFIG, OWN, TYPING
from world import World

PRESSES = 3  # of the recording
REPLAY = ("tappora-record", "--replay", "{root}/in/typing.evemu", "--starting", "2026-09-20T10:00:00", *AT)


def presses(world):
    counts = ledger.read(world.root).get(("day", "2026-09-20"), ({},))[0]
    return sum(count for label, count in counts.items() if label[0] == "keys")


def start(world, programs):
    words = [world.filled(word) for word in (str(programs / REPLAY[0]), *REPLAY[1:])]
    variables = {name: value for name, value in world.environment().items() if name != "LD_PRELOAD"}
    return subprocess.Popen(words, env=variables, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, text=True)


def write_at_once(programs, injector, writers, killed=0):
    """What is wrong when so many write one day at once, and some of them are killed."""
    with tempfile.TemporaryDirectory(prefix="faults-") as place:
        world = World(Path(place).resolve(), injector, OWN | CONFIG | TYPING)
        world.make()
        running = [start(world, Path(programs).resolve()) for _ in range(writers)]
        for process in random.sample(running, killed):
            try:
                process.wait(random.random() / 2)
            except subprocess.TimeoutExpired:
                process.kill()
        said = [process.communicate()[1] for process in running]
        ends = [process.returncode for process in running]
        counted = presses(world)
    done, dead = ends.count(0), ends.count(-signal.SIGKILL)
    found = [f"a writer ended with {end}: {text}" for end, text in zip(ends, said) if end not in (0, -signal.SIGKILL)]
    if counted % PRESSES or not done * PRESSES <= counted <= (done + dead) * PRESSES:
        found.append(f"{done} writers were done and {dead} killed, and {counted} presses are stored")
    return found
