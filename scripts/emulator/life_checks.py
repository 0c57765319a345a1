"""How a recorder ends, what the clock does, slow disks and logins."""

import random
import time

from check import check, ends_well, expect
from key_checks import LETTERS
from lab import FIRST, as_user

SECOND = "2026-09-21"


@check("SIGTERM, SIGINT and SIGHUP right after a press: it is stored")
def signals(lab):
    for signal in ("TERM", "INT", "HUP"):
        lab.start()
        lab.typist.type("asdf")
        ends_well(lab, signal)


@check("each minute is stored when it ends")
def each_minute(lab):
    lab.start()
    for _ in range(3):
        lab.typist.type("asdf")
        lab.end_minute()
        expect(not lab.complaints(), "; ".join(lab.complaints()))
    ends_well(lab)


@check("kill -9 at random moments: at most the minute under way is lost")
def killed(lab, times=8):
    safe = lost = 0
    for _ in range(times):
        lab.start()
        for minute in range(random.randrange(3)):
            lab.typist.type(random.choices(LETTERS, k=12))
            lab.end_minute()
        stored = dict(lab.counts())
        expect(not lab.complaints(), "; ".join(lab.complaints()))
        lab.typist.type(random.choices(LETTERS, k=random.randrange(1, 13)))
        if random.random() < 0.5:
            lab.machine.must("date -s @$(($(date +%s) + 60))")  # it is killed while it stores, perhaps
            time.sleep(random.random() / 5)
        lab.end("KILL")
        found, typed = lab.counts(), lab.typist.expected.get(FIRST, {})
        wrong = [label for label in set(found) | set(stored)
                 if not stored.get(label, 0) <= found.get(label, 0) <= typed.get(label, 0)]
        expect(not wrong, f"lost or doubled: {wrong}")
        safe += sum(stored.values())
        lost += sum(typed.values()) - sum(found.values())
        lab.typist.expected[FIRST].clear()
        lab.typist.expected[FIRST].update(found)
    return f"{times} kills, {lost} presses of minutes under way lost, none of others"


@check("the clock passes midnight")
def midnight(lab):
    lab.start()
    lab.set_clock(f"{FIRST} 23:59:50")
    lab.typist.type("asdf")
    lab.machine.wait_for(f'[ "$(date +%F)" = {SECOND} ]', "midnight")
    lab.typist.at(SECOND, 0)
    lab.typist.type("jkl")
    ends_well(lab)


@check("the clock is set over midnight, and back")
def set_over_midnight(lab):
    lab.set_clock(f"{FIRST} 23:30:10")
    lab.start()
    lab.typist.type("asdf")
    lab.set_clock(f"{SECOND} 00:10:00")
    lab.typist.type("jkl")
    lab.set_clock(f"{FIRST} 22:00:00")
    lab.typist.type("qwe")
    ends_well(lab)


@check("a folder that is renamed while it runs, and back")
def folder_goes_away(lab):
    lab.start()
    lab.typist.type("asdf")
    lab.end_minute()
    lab.machine.must(f"mv {lab.folder} /home/ada/Away")
    lab.typist.type("jkl")
    lab.machine.must("date -s @$(($(date +%s) + 60))")
    lab.heard("cannot store")
    lab.typist.type("qwe")
    lab.machine.must(f"[ ! -e {lab.folder} ] && mv /home/ada/Away {lab.folder}")
    lab.end_minute()
    lab.heard("stored again")
    ends_well(lab)


@check("a disk of one write a second, while somebody types")
def slow_disk(lab):
    machine = lab.machine
    machine.must("mkdir -p /mnt/slow && mount -t ext4 /dev/vda /mnt/slow && mkdir -p /mnt/slow/ada/Keys && chown -R ada: /mnt/slow/ada")
    try:
        lab.start(folder="/mnt/slow/ada/Keys")
        lab.typist.type("asdf")
        lab.end_minute()
        throttle(machine, 1)
        began = time.monotonic()
        machine.must("dd if=/dev/zero of=/mnt/slow/other bs=4k count=1 conv=fsync")
        expect(time.monotonic() - began > 1, "the disk is fast")
        machine.must("date -s @$(($(date +%s) + 60))")
        began, presses = time.monotonic(), 0
        while time.monotonic() < began + 15:
            lab.typist.type(random.choices(LETTERS, k=24))
            presses += 24
            machine.must("date -s @$(($(date +%s) + 20))")
        throttle(machine, 0)
        expect("not seen" not in lab.said(), lab.said())
        ends_well(lab)
        return f"{presses} presses in {time.monotonic() - began:.0f} seconds"
    finally:
        throttle(machine, 0)
        machine.run("umount /mnt/slow")


def throttle(machine, writes):
    """So many writes a second; 0 takes the brake off."""
    none = dict.fromkeys(("bps", "bps_rd", "bps_wr", "iops", "iops_rd"), 0)
    machine.ask_monitor("block_set_io_throttle", id="/machine/peripheral/slow-disk/virtio-backend", iops_wr=writes, **none)


@check("a login after the start of the service: it is found, it goes on, and heeds the trainer")
def login_after_the_start(lab):
    machine, ada = lab.machine, f"cd /home/ada && HOME=/home/ada XDG_RUNTIME_DIR=/run/user/1000 {as_user('ada')}"
    lab.start()
    lab.typist.type("asdf")
    machine.must("mkdir -p -m 755 /run/user && mkdir -m 700 /run/user/1000 && chown ada: /run/user/1000")
    try:
        lab.end_minute()
        said = machine.must(f"{ada} /tappora/tappora status --folder {lab.folder}")
        expect(said.startswith("Counting.\n"), said)
        text, status = machine.run(f"{ada} /tappora/tappora-record --folder {lab.folder}")
        expect(status == 1, f"a second recorder ended with {status}: {text}")
        trainer = f"/tappora/tappora-practice --folder {lab.folder} --language en --layout qwerty --seed 7"
        machine.must(f"({ada} /usr/bin/script -qfc {trainer!r} /tmp/trainer.log </dev/zero >/dev/null 2>&1 & echo $! >/tmp/trainer.pid)")
        machine.wait_for("grep -q leaves /tmp/trainer.log", "the trainer starts")
        lab.typist.type("jkl", counts=False)
        machine.must("killall -9 tappora-practice; true")
        machine.wait_for("! pidof tappora-practice", "the trainer ends")
        lab.typist.type("qwe")
        ends_well(lab)
    finally:
        machine.run("killall -9 tappora-practice script; rm -rf /run/user/1000")
