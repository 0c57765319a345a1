#!/usr/bin/env python3
"""Checks the documents: tests/docs/check.py PROGRAMS COMPILER

In README.md, CONTRIBUTING.md and docs/*.md:

- Each block of C++ (```cpp) compiles against the tree.
- Each command line of tappora names a command and options that there are. It is also run, in an empty folder with
  some sample files, and exits with 0, unless it needs what a test has not (UNTRIED) or holds a placeholder (FILE).
- Each link to a file or a heading of the tree leads there.
"""

import functools
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = [ROOT / "README.md", ROOT / "CONTRIBUTING.md", *sorted((ROOT / "docs").glob("*.md"))]
TODAY = "2026-09-20"  # of the made-up days

# How a command line begins that is not run, and what it needs.
UNTRIED = {
    "record": "input devices", "widgets": "a desktop", "ask": "a provider", "widget --watch": "somebody to stop it",
    "practice": "a terminal", "mcp": "an agent", "setup": "systemd", "tray": "a desktop",
    "status": "a recorder", "pause": "a recorder", "resume": "a recorder",
}
# Those that need it not.
TRIED = ("record --replay", "practice lesson", "practice letters", "practice record", "practice --json", "setup --print")

# The files that examples name, and what they are here.
SAMPLES = {
    "FILE": "resources/Demo/typing.evemu", "typing.evemu": "resources/Demo/typing.evemu",
    "odd-keys.json5": "tests/data/boards/odd-keys.json5", "info.json": "tests/docs/samples/info.json",
    "keymap.c": "tests/docs/samples/keymap.c", "Mine.keylayout": "tests/data/layouts/ordinary.keylayout",
    "mine.json": "resources/Layouts/dvorak.json", "kept.tar.zst": "fuzz/seeds/backup/small.tar.zst",
    "counts.csv": "fuzz/seeds/rows/export.csv",
}

complaints = []


class Page:
    def __init__(self, path):
        self.name = str(path.relative_to(ROOT))
        self.text = path.read_text(encoding="utf-8")
        self.blocks = re.findall(r"^```(\w*)\n(.*?)^```$", self.text, re.M | re.S)
        self.prose = re.sub(r"^```\w*\n.*?^```$", "", self.text, flags=re.M | re.S)

    def complain(self, what, why):
        complaints.append(f"{self.name}: {what}: {why}")


def headings(text):
    """The names that links give to the headings of a page."""
    found = re.findall(r"^#+ (.*)$", text, re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in found}


def check_links(page):
    for link in re.findall(r"\]\(([^)\s]+)\)", page.prose):
        if "://" in link:
            continue
        name, _, heading = link.partition("#")
        target = (ROOT / page.name).parent / name if name else ROOT / page.name
        if not target.exists():
            page.complain(link, "no such file")
        elif heading and heading not in headings(target.read_text(encoding="utf-8")):
            page.complain(link, "no such heading")


def check_code(page, compiler):
    for language, code in page.blocks:
        if language != "cpp":
            continue
        made = subprocess.run([compiler, "-std=c++20", "-fsyntax-only", f"-I{ROOT}", "-x", "c++", "-"], input=code,
                              capture_output=True, text=True)
        if made.returncode:
            page.complain(code.splitlines()[0], "does not compile\n" + made.stderr)


def without_remark(line):
    """A command line, less what is said of it behind two spaces or a #."""
    return re.split(r"  +| #", line)[0]


def listed_commands(page):
    """The command lines at the start of lines of code. A line may hold two: "tappora boards, tappora layouts"."""
    code = [block for language, block in page.blocks if language in ("", "sh")]
    code += re.findall(r"^    .*$", page.prose, re.M)
    for line in "\n".join(code).splitlines():
        line = without_remark(re.sub(r"^ *(\$ )?", "", line))
        for part in re.split(", (?=tappora )", line) if line.startswith("tappora ") else []:
            yield part.removeprefix("tappora ")


def mentioned_commands(page):
    """Those between backquotes in running text."""
    return [re.sub(r"\s+", " ", quoted) for quoted in re.findall(r"`tappora\s([^`]*)`", page.prose)]


class Programs:
    """The programs, run in a scratch folder that is HOME."""

    def __init__(self, folder, scratch):
        self.home = scratch / "home"
        self.data = scratch / "data"
        subprocess.run([f"{folder}/tappora", "demo", self.data, "--months", "1", "--today", TODAY], check=True,
                       stdout=subprocess.DEVNULL)
        self.tidy()
        self.environment = {"PATH": f"{folder}:/usr/bin:/bin", "HOME": str(self.home), "TZ": "UTC", "NO_COLOR": "1",
                            "LC_ALL": "C.UTF-8", "XDG_RUNTIME_DIR": str(scratch), "XKB_DEFAULT_LAYOUT": "none"}

    def tidy(self):
        shutil.rmtree(self.home, ignore_errors=True)
        shutil.copytree(self.data, self.home / "Documents/Tappora")

    def put_samples(self, line):
        written = re.search(r" -o (\S+)", line)
        for name in set(shlex.split(line)) & set(SAMPLES) - {written and written[1]}:
            shutil.copy(ROOT / SAMPLES[name], self.home / name)

    def run(self, line):
        line = re.sub(r"^report\b(?!.* --today)", f"report --today {TODAY}", line)  # it needs days with counts
        return subprocess.run(["bash", "-c", f"tappora {line}"], cwd=self.home, env=self.environment, text=True,
                              stdin=subprocess.DEVNULL, capture_output=True)

    @functools.lru_cache(maxsize=None)
    def help(self, command):
        """The help of a command or a task; "" where its program was not built."""
        asked = self.run(f"{command} --help")
        return "" if "which is not installed" in asked.stderr else asked.stdout


def names(text):
    """The commands or tasks that a help text lists."""
    listed = re.search(r"^(?:Commands|Tasks):\n(.*?)(?:\n\n|\Z)", text, re.M | re.S)
    return re.findall(r"^  ([a-z]+)", listed[1], re.M) if listed else []


def options(text):
    """The options that a help text explains."""
    return [name for names in re.findall(r"^  (-\S+)", text, re.M) for name in names.split(",")]


def check_options(page, line, programs):
    """Complains of a command or an option that is not there; gives whether the program was built."""
    words = line.split(" |")[0].split()
    command, known = "", ["--help"]
    for word in [*words, ""]:
        text = programs.help(command)
        if not text:
            return False
        known += options(text)
        if word not in names(text):
            break
        command = f"{command} {word}".strip()
    if not command and re.match("[a-z]", line):
        page.complain(f"tappora {line}", "no such command")
    for option in words:
        if re.match("--?[a-z]", option) and option.split("=")[0] not in known:
            page.complain(f"tappora {line}", f"no such option: {option}")
    return True


def is_tried(line):
    if line.startswith(TRIED):
        return "TIME" not in line and "…" not in line
    outside_quotes = re.sub('"[^"]*"', "", line)
    if re.search(r"(?<!\S)[A-Z]{2,}(?!\S)|…", outside_quotes):
        return False
    return not any(line == start or line.startswith(start + " ") for start in UNTRIED)


def check_run(page, line, programs):
    programs.tidy()
    programs.put_samples(line)
    done = programs.run(line)
    if done.returncode:
        page.complain(f"tappora {line}", f"exits with {done.returncode}\n{done.stderr}")


def check_commands(page, programs, seen):
    listed, mentioned = list(listed_commands(page)), mentioned_commands(page)
    for line in listed + mentioned:
        if line in seen:
            continue
        seen.add(line)
        # A mention may leave out what the command needs, unless it is an example with options.
        if check_options(page, line, programs) and is_tried(line) and (line in listed or " -" in line):
            check_run(page, line, programs)


def main():
    compiler, seen = sys.argv[2], set()
    with tempfile.TemporaryDirectory() as scratch:
        programs = Programs(os.path.realpath(sys.argv[1]), pathlib.Path(scratch))
        for page in map(Page, PAGES):
            check_links(page)
            check_code(page, compiler)
            check_commands(page, programs, seen)
    sys.exit("\n".join(complaints) if complaints else 0)


main()
