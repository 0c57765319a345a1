"""Reads a folder of the tests without the program: what docs/file-formats.md and docs/data-folder.md say that its files
hold. It shares no line with the program's own readers, so that a fault in those is seen."""

import json
import re
from collections import Counter

EXTENSIONS = ("org", "md", "tsv")
TEMPORARY = ".tappora.tmp"
WAITING = "home/.local/state/tappora/waiting"
UNNAMED = ".tappora.new"  # a machine's folder before it has its name
LINE_ENDS = re.compile("[\n\r\v\f\x85\u2028\u2029]")
RULE = re.compile("[-:+]+")


def sections(text):
    """The tables of a text: (name, rows of cells)."""
    found = []
    for line in LINE_ENDS.split(text):
        line = line.strip(" \t")
        if line.startswith(("*", "#")):
            words = line.lstrip("*#").split()
            if words and all(c.isalpha() or c == "_" for c in words[0]):
                found.append((words[0].lower(), []))
        elif found and len(line) > 1 and line.startswith("|") and line.endswith("|"):
            cells = [cell.strip(" \t") for cell in line[1:-1].split("|")]
            if not all(RULE.fullmatch(cell) for cell in cells):
                found[-1][1].append(cells)
        elif found and "\t" in line:
            found[-1][1].append(line.split("\t"))
    return found


def numbers(cells):
    return [int(cell) if re.fullmatch(r"-?\d+", cell) else None for cell in cells]


def day_counts(text):
    """Counts of a day by table, hour and what is counted; the peak and the rest of the Day table apart."""
    counts, day = Counter(), {}
    for name, rows in sections(text):
        for cells in rows:
            *labels, last = cells
            if name in ("keys", "chords", "hours") and numbers([last])[0]:
                if len(cells) == {"keys": 3, "chords": 4, "hours": 2}[name]:
                    counts[(name, *labels)] += int(last)
            if name == "mouse" and len(cells) == 6 and None not in numbers(cells):
                for column, count in enumerate(numbers(cells)[1:]):
                    counts[(name, cells[0], column)] += count
            if name in ("day", "meta") and len(cells) == 2 and cells != ["key", "value"]:
                day[cells[0]] = cells[1]
    return counts, day


def practice_counts(text):
    """Right presses, misses and lessons. Times are the machine's."""
    counts = Counter()
    for name, rows in sections(text):
        for cells in rows:
            if name == "letters" and len(cells) == 6 and cells[2].isdigit():
                counts[(cells[0], cells[1], "presses")] += int(cells[2])
                counts[(cells[0], cells[1], "misses")] += int(cells[3])
            if name == "day" and cells[0] == "lessons":
                counts["lessons"] += int(cells[1])
    return counts, {}


def digest(data):
    """FNV-1a of 64 bits, by which a note of merging names texts."""
    value = 0xCBF29CE484222325
    for byte in data:
        value = (value ^ byte) * 0x100000001B3 % 2**64
    return f"{value:016x}"


def superseded(folder, name, copies):
    """The copies that a note of merging says are counted in the merged one. It says so from when the merged text has
    taken its place."""
    note = folder / f".{name}.merging"
    if not note.is_file():
        return set()
    (target, text), *held = [(row[1], row[0]) for _, rows in sections(note.read_text()) for row in rows]
    real = {path.name: digest(path.read_bytes()) for path in copies}
    waits = (folder / f".{name}.merged").exists()
    is_merged = real.get(target) == text
    if target not in real or (not is_merged and (waits or (target, real[target]) in held)):
        return set()
    return {path for path in copies if path.name != target and (path.name, real[path.name]) in held}


def copies_of(folder):
    """The copies that count, by the day's or month's name."""
    names = {}
    for path in sorted(folder.glob("*")):
        if path.suffix[1:] in EXTENSIONS and re.fullmatch(r"\d{4}-\d\d(-\d\d)?", path.stem):
            names.setdefault(path.stem, []).append(path)
    return {name: [p for p in copies if p not in superseded(folder, name, copies)] for name, copies in names.items()}


def merged(total, counts, day):
    """Adds a copy to a day's total; the busiest minute is the larger one."""
    sums, known = total
    sums.update(counts)
    peak = max(int(known.get("peak", 0)), int(day.get("peak", 0)))
    known.update({key: value for key, value in day.items() if key not in known})
    if peak:
        known["peak"] = str(peak)


def read_part(part, items):
    """What one machine's folder holds, added to what others hold of the same day."""
    for folder, kind, reader in (("days", "day", day_counts), ("practice", "practice", practice_counts)):
        for name, copies in copies_of(part / folder).items():
            for path in copies:
                merged(items.setdefault((kind, name), (Counter(), {})), *reader(path.read_text()))
                items.setdefault(("formats", folder, name), set()).add(path.suffix)
    for name, copies in copies_of(part / "months").items():
        items[("month", part.name, name)] = sections(copies[0].read_text())
        items[("formats", part.name, "months", name)] = {path.suffix for path in copies}


def read_waiting(root, items):
    """The hours that wait for the data folder are counts of their days, until these hold them."""
    for path in sorted(root.glob(f"{WAITING}/*/*.org")):
        day, days = path.stem[:10], root / "data/days"
        copies = [p for p in sorted(days.glob(day + ".*")) if p.suffix[1:] in EXTENSIONS] + [path]
        if path not in superseded(days, day, copies):
            merged(items.setdefault(("day", day), (Counter(), {})), *day_counts(path.read_text()))


def content(path):
    text = path.read_text()
    return json.loads(text) if path.suffix == ".json" or path.name == ".keys-mac" else text


def is_note(path):
    """What is there on the way alone."""
    return (path.name == TEMPORARY or path.parent.name == UNNAMED or path.suffix in (".merging", ".merged")
            or path.name.startswith((".adopting", ".restored", ".importing")))


def is_read_as_table(path, data):
    return path.is_relative_to(data) and path.parent.name in ("days", "months", "practice") and (
        path.suffix[1:] in EXTENSIONS and "as it was" not in path.name)


def read(root):
    """All that a world's folder holds, by what it is: {("day", "2026-09-20"): …}. A value that cannot be read, as a
    file that was cut off, is the error's text, and so unlike any other."""
    items, data = {}, root / "data"
    marked = sorted(mark.parent for mark in data.glob("*/.keys-mac") if mark.parent.name != UNNAMED)
    for part in [data, *marked]:
        read_part(part, items)
    read_waiting(root, items)
    for path in sorted(p for p in root.rglob("*") if p.is_file()):
        waits = path.is_relative_to(root / WAITING)
        if is_note(path) or waits or path.is_relative_to(root / "run") or is_read_as_table(path, data):
            continue
        name = ("file", name_of(path, root, [name for _, *names in items for name in names]))
        try:
            items[name] = content(path)
        except ValueError as error:
            items[name] = f"damaged: {error}"
    return items


def name_of(path, root, known):
    """A file's name; a conversation that was put away, which bears the moment's, is named after its text."""
    name = str(path.relative_to(root))
    if path.parent.name != "history" or path.is_dir():
        return name
    name = f"{path.parent.relative_to(root)}/{digest(path.read_bytes())}"
    while name in known:
        name += " again"
    return name


def tree(root):
    """The names and bytes of all files, but for locks."""
    files = {}
    for path in sorted(p for p in root.rglob("*") if not p.is_relative_to(root / "run")):
        files[name_of(path, root, files)] = None if path.is_dir() else path.read_bytes()
    return files


def month_problems(root):
    """Month files that are wrong and will stay so: they list exactly the days that there are, here or in iCloud Drive,
    were written after them all, and have other sums."""
    found = []
    for month in (root / "data").rglob("months/*"):
        if month.suffix[1:] not in EXTENSIONS or month.name.startswith("."):
            continue
        listed = {row[0]: row[1] for name, rows in sections(month.read_text()) if name == "days" for row in rows[1:]}
        folder = month.parent.parent / "days"
        days = {n: c for n, c in copies_of(folder).items() if n in listed}
        away = {placeholder.name[1:11] for placeholder in folder.glob(".*.icloud")}
        written = [path.stat().st_mtime_ns for copies in days.values() for path in copies]
        if set(days) | away != set(listed) or max(written, default=0) > month.stat().st_mtime_ns:
            continue
        for name, copies in days.items():
            presses = sum(count for path in copies for label, count in day_counts(path.read_text())[0].items()
                          if label[0] in ("keys", "hours"))
            if str(presses) != listed[name]:
                found.append(f"{month.name} has {listed[name]} for {name}, which has {presses}")
    return found
