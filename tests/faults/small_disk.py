"""Commands on a real disk that has only a few free pages: what does not fit is said, and nothing is lost."""

import os
import subprocess
import tempfile
from pathlib import Path

import ledger
from run import Trial

PAGE = 4096
SIZE = 2 * 1024 * 1024


class Narrow(Trial):
    def fill(self, free):
        """Leaves so many bytes."""
        room = os.statvfs(self.world.place)
        (self.world.place / "filler").write_bytes(b"x" * max(0, room.f_bavail * room.f_frsize - free))

    def try_with(self, free):
        self.world.make()
        self.fill(free)
        outcome = self.go()
        now = ledger.read(self.world.root)
        found = [f"lost or doubled: {text}" for text in self.judgement.wrong_items(now)]
        if outcome.status == 1 and "No space left on device" not in outcome.err:
            found.append("it does not say that the disk is full")
        if outcome.status not in (0, 1):
            found.append(f"ended with {outcome.status}")
        (self.world.place / "filler").unlink()
        found += self.another_run(now)
        self.failures += [f"{self.command.name}: with {free} bytes left: {text}\n    it said: {outcome.err.strip()}"
                          for text in found]
        return outcome.status == 1


def fill_up(command, programs, injector, pages):
    """How often the disk was full, and what was wrong. Needs the right to mount."""
    with tempfile.TemporaryDirectory(prefix="faults-") as place, tempfile.TemporaryDirectory(prefix="faults-") as other:
        subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={SIZE}", "small", place], check=True)
        try:
            trial = Narrow(command, programs, injector, Path(place).resolve(), None)
            trial.world.log = Path(other, "calls")  # which would take room
            trial.undisturbed()
            full = sum(trial.try_with(PAGE * free) for free in range(pages))
        finally:
            subprocess.run(["umount", place], check=True)
    return full, trial.failures
