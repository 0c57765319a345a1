#!/usr/bin/env python3
"""Writes a data folder of made-up days: scripts/sample_days.py FOLDER LAST_DAY DAYS

English text as it falls on the keys of a QWERTY layout, with the keys beside the letters in plausible shares. The same
arguments give the same files."""

import datetime
import pathlib
import random
import sys

# Presses in ten thousand, by macOS key code.
SHARES = {
    14: 890, 17: 640, 0: 570, 31: 540, 34: 500, 45: 490, 1: 450, 15: 430, 4: 400, 37: 300, 2: 290, 8: 210, 32: 200,
    46: 180, 35: 160, 3: 150, 5: 150, 13: 140, 16: 130, 11: 110, 9: 80, 40: 70, 7: 18, 38: 13, 12: 10, 6: 9,  # letters
    49: 1250, 51: 620, 36: 260, 48: 130, 53: 60, 117: 12,  # space, delete, return, tab, esc
    43: 90, 47: 95, 44: 30, 41: 22, 39: 40, 27: 45, 24: 22, 33: 14, 30: 13, 42: 8, 50: 9, 10: 3,  # signs
    18: 30, 19: 26, 20: 20, 21: 15, 23: 14, 22: 12, 26: 11, 28: 12, 25: 13, 29: 28,  # digits
    123: 110, 124: 120, 125: 150, 126: 130, 115: 8, 119: 9, 116: 7, 121: 9,  # arrows and jumps
    122: 2, 120: 6, 96: 5, 103: 2, 111: 3,  # function keys
}
HOURS = {8: 4, 9: 10, 10: 13, 11: 12, 12: 5, 13: 7, 14: 12, 15: 12, 16: 11, 17: 7, 20: 4, 21: 3}


def day_file(day, draw):
    presses = draw.gauss(16000, 4000) if day.weekday() < 5 else draw.gauss(3500, 2500)
    rows = []
    for hour, weight in HOURS.items():
        in_hour = max(presses, 0) * weight / sum(HOURS.values())
        for code, share in sorted(SHARES.items()):
            count = round(in_hour * share / 10000 * draw.uniform(0.6, 1.4))
            if count:
                rows.append(f"| {hour:4} | {code:7} | {count:5} |")
    head = f"#+title: {day}\n\n* Keys\n\n| hour | keycode | count |\n|------+---------+-------|\n"
    return head + "\n".join(rows) + "\n"


def main(folder, last, days):
    draw = random.Random(20)
    target = pathlib.Path(folder) / "days"
    target.mkdir(parents=True, exist_ok=True)
    for back in range(int(days)):
        day = datetime.date.fromisoformat(last) - datetime.timedelta(back)
        (target / f"{day}.org").write_text(day_file(day, draw), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
