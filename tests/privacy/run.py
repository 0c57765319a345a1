#!/usr/bin/env python3
"""Evidence for docs/privacy.md: run.py PROGRAMS INJECTOR STAGE PRELOADS

A recorder counts what a keyboard does, below strace. It opens no socket to the network and writes to no file that the
document does not name; it is linked with no library of the network; and no file that it, a replay and the sharing of the
folder leave holds a field that the document does not name. 77 says that strace is not installed.
"""
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/faults"))
from actors import Recorder, Stage, ask, practise, strike  # noqa: E402
from world import World  # noqa: E402

NETWORK_LIBRARIES = re.compile(r"lib(curl|ssl|gnutls|nghttp|ssh|resolv|nss_|soup|gio|idn)")
SETTINGS = {"home/.config/tappora/settings.json": '{"privacy.hourly": true}\n'}
LOCAL_SOCKETS = ("AF_UNIX", "AF_NETLINK")
CHANGES = "openat,open,creat,mkdir,mkdirat,rename,renameat,renameat2,link,linkat,symlink,symlinkat,truncate,unlink,unlinkat"
WRITES = re.compile(r"O_(WRONLY|RDWR|CREAT|TRUNC)")


def record_below_strace(programs, world, stage, log):
    """Records three minutes at a keyboard."""
    world.make()
    stage.plug()
    environment = world.environment() | stage.variables(world)
    preloads = environment.pop("LD_PRELOAD") + " " + stage.preloads
    arguments = ["strace", "-f", "-y", "-qq", "-s", "4096", "-o", str(log), "-e", f"trace=%net,{CHANGES}",
                 "-E", f"LD_PRELOAD={preloads}", str(programs / "tappora-record"), "--folder", f"{world.root}/data", "--watch"]
    recorder = Recorder(arguments, environment)
    if not recorder.prints("listening to A keyboard"):
        sys.exit(f"the recorder does not listen: {recorder.printed}")
    strike(stage, recorder)
    subprocess.run([str(programs / "tappora"), "pause", "30m", "--folder", f"{world.root}/data"], env=environment | {"LD_PRELOAD": preloads}, check=True,
                   stdout=subprocess.DEVNULL)
    subprocess.run(["pkill", "-TERM", "-P", str(recorder.process.pid)], check=True)
    while recorder.prints("\0"):
        pass
    if recorder.process.wait() != 0:
        sys.exit(f"the recorder failed: {recorder.printed}")


def sockets(calls):
    return {match[1] for match in re.finditer(r"\bsocket(?:pair)?\((\w+)", calls)}


def changed_places(calls):
    """The absolute path of each file or folder that a call may have changed."""
    for line in calls.splitlines():
        if "= -1 " in line:
            continue
        call = re.match(r"(?:\d+ +)?(\w+)\((.*)", line)
        if not call or call[1] not in CHANGES.split(",") or (call[1].startswith("open") and not WRITES.search(call[2])):
            continue
        for folder, path in re.findall(r'(?:(?:\d+|AT_FDCWD)<([^>]*)>, )?"([^"]*)"', call[2]):
            yield os.path.normpath(os.path.join(folder or "/", path))


def is_known(path, world):
    """Whether docs/privacy.md names the place: data folder, settings, runtime and state directory, the widgets' file."""
    home = f"{world.root}/home"
    folders_above = (f"{home}/.config", f"{home}/.local", f"{home}/.local/share", f"{home}/.local/state")
    places = (f"{world.root}/data", f"{home}/.config/tappora", f"{world.root}/run/tappora", f"{home}/.local/share/Tappora",
              f"{home}/.local/state/tappora")
    own_output = ("/proc/self/fd/1", "/proc/self/fd/2", "/dev/null")
    return path in folders_above + own_output or any(path == place or path.startswith(place + "/") for place in places)


def table_fields(text):
    """The names of the columns of each table, and of the rows of the table of the day."""
    for table in re.split(r"^\* ", text, flags=re.M)[1:]:
        rows = [[cell.strip() for cell in row.strip("|").split("|")] for row in re.findall(r"^\|(?!-).*\|$", table, re.M)]
        yield from rows[0] if rows else ()
        if table.startswith("Day\n"):
            yield from (row[0] for row in rows[1:])


def json_fields(value):
    """The names of all members."""
    for member in value if isinstance(value, list) else value.values() if isinstance(value, dict) else ():
        yield from json_fields(member)
    if isinstance(value, dict):
        yield from value


def fields(path):
    text = path.read_text()
    return set(json_fields(json.loads(text)) if text.lstrip().startswith("{") else table_fields(text))


def unnamed_fields(folder, named):
    for path in sorted(path for path in folder.rglob("*") if path.is_file()):
        for field in sorted(fields(path)):
            if f"`{field}`" not in named:
                yield f"{path.relative_to(folder)} has the field {field}, which docs/privacy.md does not name"


def fill(programs, world):
    """What else is stored: mouse, shortcuts, months, a folder that machines share, a report, practice, a chat."""
    data = ["--folder", f"{world.root}/data"]
    demo = str(ROOT / "resources/Demo/typing.evemu")
    for arguments in (["record", "--replay", demo, "--starting", "2026-08-20T09:00:00"], ["folder", "share"],
                      ["folder", "rollups"], ["widget", "write", "--today", "2026-08-20"],
                      ["report", "--save", "--of", "2026-08-20", "--today", "2026-09-01"]):
        outcome = world.run([str(programs / "tappora"), *arguments, *data])
        if outcome.status != 0:
            sys.exit(f"{arguments} failed: {outcome.err}")
    lesson = ("tappora-practice", *data, "--language", "en", "--layout", "qwerty", "--words", "5", "--seed", "7")
    for play in (practise(lesson, "asdf jkl"), ask("Which?", "--new", *data)):
        outcome = play(world, programs, None)
        if outcome.status != 0:
            sys.exit(f"the trainer or the assistant failed: {outcome.err}")


def main(programs, injector, stage_program, preloads):
    if not shutil.which("strace"):
        return 77
    complaints = []
    linked = subprocess.run(["ldd", str(programs / "tappora-record")], capture_output=True, text=True, check=True).stdout
    complaints += [f"linked with {name.strip()}" for name in linked.splitlines() if NETWORK_LIBRARIES.search(name)]
    with tempfile.TemporaryDirectory(dir="/tmp") as place:
        world = World(place, Path(injector).resolve(), SETTINGS, None)
        log = Path(place) / "strace"
        record_below_strace(programs, world, Stage(stage_program, preloads), log)
        calls = log.read_text()
        complaints += [f"a socket of {family}" for family in sorted(sockets(calls)) if family not in LOCAL_SOCKETS]
        own = (place + "/clock", place + "/calls")
        changed = {path for path in changed_places(calls) if not path.startswith(own)}
        complaints += [f"wrote to {path}" for path in sorted(changed) if not is_known(path, world)]
        if not changed:
            complaints.append("nothing was traced")
        fill(programs, world)
        complaints += unnamed_fields(world.root, (ROOT / "docs/privacy.md").read_text())
    for complaint in complaints:
        print(complaint, file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(Path(sys.argv[1]).resolve(), *sys.argv[2:]))
