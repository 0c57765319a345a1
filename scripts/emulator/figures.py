"""What a recorder costs: wake-ups, processor time, memory."""

import random
import re

from check import check, ends_well
from key_checks import LETTERS
from lab import as_user

PRESSES = 10_000


def wake_ups(lab):
    """Of each thread, the first one first."""
    text = lab.machine.must(f"cat /proc/{lab.recorder}/task/*/status")
    return list(map(int, re.findall(r"^voluntary_ctxt_switches:\s*(\d+)", text, re.M)))


def processor_time(lab, process=None):
    """In milliseconds, of all threads."""
    text = lab.machine.must(f"cat /proc/{process or lab.recorder}/task/*/schedstat")
    return sum(int(line.split()[0]) for line in text.split("\n") if line.strip()) / 1e6


@check("figure: wake-ups in an idle minute")
def idle_minute(lab):
    # The emulated machine has no system bus, and to ask for one every ten seconds would be counted too.
    lab.machine.must(f"cd /home/ada && HOME=/home/ada {as_user('ada')} /tappora/tappora settings set record.pauseWhenLocked false")
    lab.set_clock("2026-09-20 10:00:55")
    lab.start()
    lab.machine.must("while [ $(date +%S) != 05 ]; do sleep 0.3; done")
    before, time_before = wake_ups(lab), processor_time(lab)
    lab.machine.must("sleep 60")
    after, time_after = wake_ups(lab), processor_time(lab)
    ends_well(lab)
    each = [late - early for early, late in zip(before, after)]
    return f"{sum(each)} wake-ups of {len(each)} threads {each}, {time_after - time_before:.1f} ms of the emulated processor"


@check("figure: processor time for 10,000 presses, and memory")
def ten_thousand(lab):
    lab.start()
    yardstick = "$(pidof helper)"  # it reads the same events and writes each down
    before, other_before = processor_time(lab), processor_time(lab, yardstick)
    lab.typist.type(random.choices(LETTERS, k=PRESSES), "screen1")
    spent, other = processor_time(lab) - before, processor_time(lab, yardstick) - other_before
    text = lab.machine.must(f"cat /proc/{lab.recorder}/status")
    memory = {name: int(size) / 1024 for name, size in re.findall(r"^(VmHWM|VmRSS|RssAnon):\s*(\d+) kB", text, re.M)}
    ends_well(lab)
    return (f"{spent:.0f} ms of the emulated processor, where a program that only prints the events takes {other:.0f} ms; {memory['VmHWM']:.1f} MB at most, of which "
            f"{memory['RssAnon']:.1f} MB are its own")
