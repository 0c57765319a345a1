"""A small program that adds a press to a day's file, carefully or with a known fault: careless.py HOW FOLDER. The
checks must find each fault; self_test.py sees to that."""

import os
import sys
from pathlib import Path


def text_of(count):
    return f"* Keys\n| 9 | 0 | {count} |\n"


def flush(folder):
    opened = os.open(folder, os.O_RDONLY | os.O_DIRECTORY)
    try:
        os.fsync(opened)
    finally:
        os.close(opened)


def write(path, flags, text, is_flushed=True):
    file = os.open(path, flags, 0o600)
    try:
        data = text.encode()
        while data:
            data = data[os.write(file, data):]
        if is_flushed:
            os.fsync(file)
    finally:
        os.close(file)


def replace(how, path, text):
    temporary = path.parent / (f".{os.getpid()}.tmp" if how == "leaves its temporary" else ".tappora.tmp")
    try:
        write(temporary, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, text)
        os.rename(temporary, path)
    except OSError:
        if how != "leaves its temporary":
            temporary.unlink(missing_ok=True)
        raise
    try:
        flush(path.parent)
    except OSError as error:
        if how == "fails late":
            raise
        if how != "keeps quiet":
            print(f"tappora: {path.parent}: {error.strerror}; what was written stands", file=sys.stderr)


def add(how, path):
    count = int(path.read_text().split("|")[3]) + 1
    if how == "writes in place":
        write(path, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, text_of(count))
    else:
        replace(how, path, text_of(count))
    if how == "adds twice":
        replace(how, path, text_of(count + 1))
    print("one press")


def main(how, folder):
    path = Path(folder, "days/2026-09-20.org")
    try:
        add(how, path)
    except OSError as error:
        if how == "says done":
            print("one press")
            return 0
        named = "not stored" if how == "names nothing" else f"{path}: {error.strerror}"
        print(f"tappora: {named}", file=sys.stderr)
        return 3 if how == "ends oddly" else 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
