"""Renames the data folder while a command works in it, and names it back afterwards: what is in it is as it was, or as
it is to be. A command may make the folder again; what it wrote there is put aside."""

import shutil
import tempfile
from pathlib import Path

import ledger
from run import Trial, place_for, spread
from world import Fault

MOST = 40  # of the calls of a command


class Vanishing(Trial):
    def vanish(self, at):
        self.world.make()
        outcome = self.go(Fault(at, "vanish"))
        data, gone = self.world.root / "data", self.world.root / "gone"
        found = [] if outcome.status in (0, 1) else [f"ended with {outcome.status}"]
        was_made_again = data.exists() and gone.exists()
        if was_made_again:
            data.rename(self.world.place / "made")
            shutil.rmtree(self.world.place / "made")
        if gone.exists():
            gone.rename(data)
        now = ledger.read(self.world.root)
        found += [f"lost or doubled: {text}" for text in self.judgement.wrong_items(now)]
        if not was_made_again:
            found += self.another_run(now)
        said = (outcome.err or outcome.out).strip()
        self.failures += [f"{self.command.name}: the folder vanishes at call {at}: {text}\n    it said: {said}" for text in found]


def vanish_often(command, programs, injector):
    """How often the folder vanished, and what was wrong."""
    with tempfile.TemporaryDirectory(prefix="faults-", dir=place_for(command)) as place:
        trial = Vanishing(command, programs, injector, Path(place).resolve(), None)
        calls = spread(trial.undisturbed(), MOST)
        for call in calls:
            trial.vanish(call.number)
    return len(calls), trial.failures
