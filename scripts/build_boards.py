#!/usr/bin/env python3
"""Writes resources/Boards/*.json from the descriptions in scripts/boards. With --check it only compares."""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True

from boards import alice, apple, grid, large_split, small_split, standard  # noqa: E402

FOLDER = Path(__file__).resolve().parent.parent / "resources" / "Boards"


def files():
    for module in (apple, standard, alice, grid, small_split, large_split):
        for board in module.boards():
            yield f"{board.id}.json", board.text()


def differences(wanted):
    for name in sorted(set(wanted) | {path.name for path in FOLDER.glob("*.json")}):
        path = FOLDER / name
        if name not in wanted:
            yield f"{path}: nothing describes it"
        elif not path.exists() or path.read_bytes() != wanted[name].encode():
            yield f"{path}: not as described"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--check", action="store_true", help="write nothing, and fail where a file differs")
    wanted = dict(files())
    if parser.parse_args().check:
        found = list(differences(wanted))
        sys.exit("\n".join(found) if found else 0)
    FOLDER.mkdir(parents=True, exist_ok=True)
    for name, text in wanted.items():
        (FOLDER / name).write_bytes(text.encode())


if __name__ == "__main__":
    main()
