"""The commands that are disturbed, one row each: what they are called with, what is there before, what is special."""

import hashlib
import io
import json
import tarfile
from collections.abc import Callable
from dataclasses import dataclass, field
from pathlib import Path

from actors import ask, counted, practise, record, remember, said_lost
from ledger import digest

SETTINGS = '{"machine.id": "0123456789abcdef0123456789abcdef", "machine.name": "vm"}\n'


@dataclass(frozen=True)
class Command:
    name: str
    arguments: tuple  # the program first; {root} is the world's place
    files: dict = field(default_factory=dict)
    adds: bool = False  # another run adds what this one adds once more
    destroys: bool = False  # what is gone in part may stay so, until it is run again
    sure: bool = False  # it says that it is done only when it knows that nothing is left of what was before
    reads: bool = False  # it changes nothing: its text is what counts
    again: int = 0  # how another run may end when nothing is left to be done
    follows: tuple = ()  # what may come later, when that is said: kinds of items, or names of files
    partial: bool = False  # what it adds may be added in part; it says then how much is lost
    says: Callable | None = None  # what is wrong with what it said of a failure
    midway: tuple = ()  # items that may be missing on the way
    most: int = 36  # faults in an ordinary run
    play: Callable | None = None  # how it is run, when it needs somebody at it


def keys(*rows):
    """A day's text, of either format: (hour, key, count)."""
    return "* Keys\n" + "".join(f"| {h} | {k} | {n} |\n" for h, k, n in rows)


def chords(text, *rows):
    return text + "* Chords\n" + "".join(f"| {h} | {m} | {k} | {n} |\n" for h, m, k, n in rows)


def practice(presses):
    return ("* Letters\n| letter | layout | presses | misses | timed | ms |\n"
            f"| a | qwerty | {presses} | 1 | 3 | 815 |\n* Day\n| lessons | 1 |\n")


def month(name, *rows):
    total = sum(count for _, count in rows)
    return (f"#+title: {name}\n\n* Days\n| date | keystrokes | active_hours | peak | clicks |\n"
            + "".join(f"| {day} | {count} | 1 | 0 | 0 |\n" for day, count in rows)
            + f"* Keys\n| 0 | {total} |\n* Chords\n")


def config(text):
    return '{"format": "%s"}\n' % text


def recording():
    """Three taps at a keyboard, a second between them, as evemu-record writes it."""
    lines = ["# EVEMU 1.3", "N: A keyboard", "I: 0003 046d 0001 0111", "P: 00 00 00 00 00 00 00 00",
             "B: 00 0b 00 00 00 00 00 00 00"]
    lines += ["B: 01 " + " ".join(["fe"] + ["ff"] * 7), "B: 01 " + " ".join(["ff"] * 7 + ["00"])]
    lines += ["B: 01 " + " ".join(["00"] * 8)] * 10
    for second, key in enumerate((30, 48, 46)):
        for later, value in ((0, 1), (100_000, 0)):
            moment = f"{second}.{later:06d}"
            lines += [f"E: {moment} 0001 {key:04x} {value:04d}", f"E: {moment} 0000 0000 0000"]
    return "\n".join(lines) + "\n"


def backup(files):
    """An archive as tappora backup writes it, made by other hands."""
    listed = {name: {"bytes": len(text), "sha256": hashlib.sha256(text.encode()).hexdigest()}
              for name, text in files.items()}
    manifest = json.dumps({"backup": 1, "program": "tappora", "files": listed})
    packed = io.BytesIO()
    with tarfile.open(fileobj=packed, mode="w:gz") as archive:
        for name, text in {**files, "manifest.json": manifest}.items():
            entry = tarfile.TarInfo(name)
            entry.size, entry.mtime = len(text.encode()), 1_789_000_000
            archive.addfile(entry, io.BytesIO(text.encode()))
    return packed.getvalue()


def record_says(outcome, changed, now):
    """All that was counted is stored or said to be lost, when the recorder itself ends."""
    stored = sum(sum(value[0].values()) for name, value in now.items() if name == ("day", "2026-09-20"))
    lost = said_lost(outcome)
    if stored + lost == counted(outcome):
        return []
    return [f"{counted(outcome)} counted, {stored} stored, {lost} said to be lost"]


def replay_says(outcome, changed, now):
    """"nothing is stored", or which days are; it must be exactly so."""
    stored = sorted(name[1] for name, done in changed.items() if done and name[0] == "day")
    if stored and f"stored already: {', '.join(stored)}; another replay would count that twice" not in outcome.err:
        return [f"stored is {stored}, which was not said"]
    if not stored and "stored already" in outcome.err:
        return ["said to be stored, and it is not"]
    return []


def data(name):
    return (Path(__file__).resolve().parent.parent / "data" / name).read_text()


OWN = {"home/.config/tappora/settings.json": SETTINGS}
DAYS = {
    "data/days/2026-08-30.org": keys((9, 0, 40)),
    "data/days/2026-09-18.org": chords(keys((9, 0, 1200), (10, 1, 3)), (9, "cmd", 8, 3)),
    "data/days/2026-09-19.org": chords(keys((9, 0, 100)), (9, "cmd", 8, 5)),
    "data/days/2026-09-19.md": keys((8, 0, 60)).replace("*", "##"),
}
MONTHS = {
    "data/months/2026-08.org": month("2026-08", ("2026-08-30", 40)),
    "data/months/2026-09.org": month("2026-09", ("2026-09-18", 1203), ("2026-09-19", 160)),
}
OUTDATED = {  # a month that was summed before a day changed, and cannot be summed again while another day is away
    "data/months/2026-08.org": month("2026-08", ("2026-08-30", 40), ("2026-08-31", 7)),
    "data/days/2026-08-30.org": keys((9, 0, 45)),
    "data/days/.2026-08-31.org.icloud": "",
}
MERGED, HELD = keys((8, 0, 60), (9, 0, 50)), keys((8, 0, 60)).replace("*", "##")
CUT_MERGE = {  # when the merged text had taken its place, and not all else was done
    "data/days/2026-09-20.org": MERGED,
    "data/days/2026-09-20.md": HELD,
    "data/days/.2026-09-20.merging": f"# Merging\n| {digest(MERGED.encode())} | 2026-09-20.org |\n"
    f"| {digest(HELD.encode())} | 2026-09-20.md |\n| {digest(keys((9, 0, 50)).encode())} | 2026-09-20.org |\n",
}
PRACTICE = {"data/practice/2026-09-19.org": practice(4)}
CONFIG = {"data/.keys/config.json": config("org")}
CHAT = {"data/assistant/chat.org": "#+title: Ask AI\n\n* You\n\nWhat?\n\n* Answer\n\nThat.\n"}
EVERYTHING = OWN | DAYS | MONTHS | PRACTICE | CONFIG | CHAT | {"data/reports/2026-08.md": "a report\n"}

QUIET = {
    "home/.config/tappora/settings.json": SETTINGS.replace("}", ', "privacy.hourly": true}'),
    "data/.keys/config.json": config("org"),
    "data/days/2026-09-19.org": keys((9, 0, 50)),
}
ROWS = ("machine,day,hour,kind,keycode,modifiers,count\nHome,2026-09-18,9,key,0,,5\nHome,2026-09-19,9,key,0,,6\n"
        "Home,2026-09-19,9,chord,8,cmd,2\nStudio,2026-09-19,9,key,0,,7\n")
CUT_IMPORT = {  # one day has taken its rows
    "in/rows.csv": ROWS,
    "data/.importing": ROWS,
    "data/days/2026-09-18.org": keys((9, 0, 1205)) + "* Day\n| import-%s | Home |\n" % digest(
        "".join(ROWS.splitlines(keepends=True)[:2]).encode()),
}
OLD = {
    "old/days/2026-09-18.org": keys((9, 0, 1200)),
    "old/days/2026-09-19.org": keys((9, 0, 100)),
    "old/months/2026-09.org": month("2026-09", ("2026-09-18", 1200)),
    "old/practice/2026-09-19.org": practice(4),
    "old/.keys/config.json": config("org"),
    "old/reports/2026-08.md": "a report\n",
}
CUT_ADOPTION = {  # one day was taken and counted into since, one waits for its place, and is counted meanwhile
    "data/days/2026-09-18.org": keys((9, 0, 1207)),
    "data/days/2026-09-19.org": keys((9, 0, 7)),
    "data/.adopting." + digest(b"days/2026-09-19.org"): keys((9, 0, 100)),
    "data/.adopting": "{root}/old\n" + "".join(
        f"{digest(OLD[f'old/{day}'].encode())} {day} {day}\n" for day in ("days/2026-09-18.org", "days/2026-09-19.org")),
}

KEPT = {"in/kept.tar.gz": backup({name.replace("old/", "folder/"): text for name, text in OLD.items()}
                                 | {"settings/settings.json": '{"practice.length": 45}'})}

AT = ("--folder", "{root}/data", "--today", "2026-09-20")


def folder(name, *words, files=None, **special):
    return Command(name, ("tappora", "folder", *words, *AT), files or EVERYTHING, **special)


REPLAY = ("tappora-record", "--replay", "{root}/in/typing.evemu", "--starting")
TYPING = {"in/typing.evemu": recording()}

COMMANDS = [
    Command("replay", (*REPLAY, "2026-09-20T23:59:59", "--folder", "{root}/data", "--today", "2026-09-21"),
            OWN | CONFIG | TYPING | {"data/days/2026-09-20.org": keys((9, 0, 50)),
                                     "data/days/2026-09-20.md": keys((8, 0, 60)).replace("*", "##")},
            adds=True, follows=("month", "formats"), says=replay_says),
    Command("replay-after-a-cut-merge", (*REPLAY, "2026-09-20T10:00:00", *AT), OWN | CONFIG | TYPING | CUT_MERGE,
            adds=True, follows=("month",), says=replay_says),
    Command("replay-into-a-new-folder", (*REPLAY, "2026-09-20T10:00:00", "--today", "2026-09-20"), OWN | TYPING,
            adds=True, follows=("month",), says=replay_says),
    Command("replay-shared", (*REPLAY, "2026-09-20T10:00:00", *AT, "--shared"), OWN | TYPING | CONFIG | DAYS,
            adds=True, follows=("month",), says=replay_says),
    folder("convert", "convert", "--to", "markdown", sure=True),
    folder("convert-outdated", "convert", "--to", "markdown", sure=True, files=OWN | OUTDATED, most=18),
    folder("rollups", "rollups", sure=True, files=OWN | DAYS | CONFIG | {
        "data/months/2026-08.org": month("2026-08", ("2026-08-29", 7)),
        "data/months/2026-07.org": month("2026-07", ("2026-07-01", 7))}),
    folder("share", "share"),
    folder("adopt", "adopt", "{root}/old", again=1, sure=True, follows=("month",), files=OWN | OLD),
    folder("adopt-again", "adopt", "{root}/old", again=1, sure=True, follows=("month", "formats"),
           files=OWN | OLD | CUT_ADOPTION, most=18),
    Command("backup", ("tappora-backup", "backup", "{root}/out.tar.gz", *AT), EVERYTHING | {"out.tar.gz": "an earlier one\n"},
            most=24),
    Command("restore", ("tappora-backup", "restore", "{root}/in/kept.tar.gz", *AT), OWN | KEPT, sure=True, follows=("month",)),
    Command("restore-adding", ("tappora-backup", "restore", "{root}/in/kept.tar.gz", "--add", *AT),
            OWN | KEPT | {"data/days/2026-09-19.org": keys((9, 0, 7))}, sure=True, follows=("month", "formats")),
    Command("import", ("tappora", "import", "{root}/in/rows.csv", *AT), OWN | DAYS | MONTHS | CONFIG | {"in/rows.csv": ROWS},
            sure=True, follows=("month", "formats")),
    Command("import-cut-off", ("tappora", "import", "{root}/in/rows.csv", *AT), OWN | DAYS | CONFIG | CUT_IMPORT,
            sure=True, follows=("month", "formats"), most=24),
    folder("clear-day", "clear", "2026-09-19", "--yes", destroys=True, sure=True),
    folder("clear-counts", "clear", "counts", "--yes", destroys=True, sure=True),
    folder("clear-all", "clear", "all", "--yes", destroys=True, sure=True),
    folder("reset-heatmap", "reset", "heatmap", "--yes", destroys=True, sure=True),
    folder("reset-shortcuts", "reset", "shortcuts", "--yes", destroys=True, sure=True),
    folder("reset-practice", "reset", "practice", "--yes", destroys=True, sure=True),
    Command("set", ("tappora", "folder", "set", "{root}/other"), OWN),
    Command("set-usual", ("tappora", "folder", "set", "--usual"), {
        "home/.config/tappora/settings.json": SETTINGS.replace("}", ', "folder.path": "{root}/data"}')}),
    Command("settings-set", ("tappora", "settings", "set", "practice.length", "45"), OWN),
    Command("settings-set-with-folder", ("tappora", "settings", "set", "named_keys", "true", *AT), OWN | CONFIG, most=24),
    Command("keys-label", ("tappora", "keys", "label", "53", "quit", "--board", "macbook-ansi", "--layout", "qwerty", *AT),
            OWN | CONFIG, most=24),
    Command("boards-import", ("tappora", "boards", "import", "{root}/in/board.json", "-o", "{root}/out.json"),
            {"in/board.json": data("boards/full-size-german.json")}, most=16),
    Command("layouts-import", ("tappora", "layouts", "import", "{root}/in/a.keylayout", "-o", "{root}/out.json", *AT),
            {"in/a.keylayout": data("layouts/ordinary.keylayout")}, most=16),
    Command("practice", (), OWN | PRACTICE | CONFIG, adds=True, play=practise(
        ("tappora-practice", *AT, "--language", "en", "--layout", "qwerty", "--words", "5", "--seed", "7"),
        "asdf jkl")),
    Command("practice-keep", ("tappora-practice", "--json", "--keep", "--language", "de", "--layout", "qwertz", "--words",
                              "5", "--capitals", "--seed", "7", *AT), OWN | PRACTICE | CONFIG, most=24),
    Command("heatmap-picture", ("tappora-paint", "heatmap", "-o", "{root}/out.svg", *AT),
            EVERYTHING | {"out.svg": "an earlier one\n"}, most=24),
    Command("fingers-picture", ("tappora-paint", "fingers", "-o", "{root}/out.svg", *AT), EVERYTHING, most=12),
    Command("widget-pictures", ("tappora-paint", "widget", "-o", "{root}/pictures", "--svg"), EVERYTHING, most=24),
    Command("remember", (), OWN, play=remember("week", "today")),
    Command("ask", (), OWN | CHAT | CONFIG, adds=True, play=ask("Which?", "--continue", *AT)),
    Command("ask-new", (), OWN | CHAT | CONFIG, adds=True, play=ask("Which?", "--new", *AT),
            midway=(("file", "data/assistant/chat.org"),)),
    Command("record", (), OWN | CONFIG | {"data/days/2026-09-19.org": keys((9, 0, 50))},
            adds=True, partial=True, most=30, play=record("--folder", "{root}/data"), says=record_says,
            follows=("month", "formats", "home/.local/share/Tappora/widget.json")),
    Command("record-hourly", (), QUIET | {"{waiting}/2026-09-19-23.org": keys((23, 0, 7)),
                                          "{waiting}/2026-09-18-09.org": keys((9, 0, 3), (9, 1, 1))},
            adds=True, partial=True, most=45, play=record("--folder", "{root}/data", later=58), says=record_says,
            follows=("month", "formats", "home/.local/share/Tappora/widget.json")),
    folder("clear-day-that-waits", "clear", "2026-09-19", "--yes", destroys=True, sure=True,
           files=QUIET | {"{waiting}/2026-09-19-23.org": keys((23, 0, 7))}),
    folder("reset-heatmap-that-waits", "reset", "heatmap", "--yes", destroys=True, sure=True,
           files=QUIET | {"{waiting}/2026-09-20-09.org": chords(keys((9, 0, 7)), (9, "cmd", 0, 2))}),
    Command("report-save", ("tappora", "report", "month", "--of", "2026-09-19", "--save", *AT),
            EVERYTHING | {"data/reports/2026-09.md": "an earlier one\n"}, most=24),
    Command("widget-write", ("tappora", "widget", "write", *AT), EVERYTHING),
    Command("summary", ("tappora", "summary", "--from", "2026-07-01", "--json", *AT), EVERYTHING, reads=True),
    Command("day", ("tappora", "day", "2026-09-19", *AT), EVERYTHING, reads=True),
]
