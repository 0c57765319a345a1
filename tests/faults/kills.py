"""Kills commands at random moments, and sees that nothing is lost and nothing doubled."""

import random
import signal
import tempfile
import time
from pathlib import Path

import ledger
from checks import CHANGES
from run import Trial, place_for
from world import Fault

SOON = 1500  # microseconds


class Killings(Trial):
    """One command, that is killed again and again."""

    def learn(self):
        """How long the command takes, and which of its calls change something."""
        calls = self.undisturbed()
        self.changes = [call.number for call in calls if call.name in CHANGES]
        self.world.make()
        began = time.monotonic()
        self.go()
        self.duration = int((time.monotonic() - began) * 1_000_000)
        self.killed = 0

    def moment(self):
        """Half of them at any time, half shortly after a call that changes something."""
        if self.changes and random.random() < 0.5:
            return Fault(random.choice(self.changes), "kill-later", int(random.expovariate(4 / SOON)))
        return Fault(0, "kill-later", random.randrange(self.duration + SOON))

    def kill(self, fault):
        self.world.make()
        outcome = self.go(fault)
        now = ledger.read(self.world.root)
        found = [f"lost or doubled: {text}" for text in self.judgement.wrong_items(now)]
        found += [f"wrong for good: {text}" for text in ledger.month_problems(self.world.root)]
        if outcome.status == -signal.SIGKILL:
            self.killed += 1
        elif outcome.status != 0:
            found.append(f"ended with {outcome.status}")
        found += self.another_run(now)
        said = (outcome.err or outcome.out).strip()
        self.failures += [f"{self.command.name}: killed {fault.later} µs after call {fault.at}: {text}\n    it said: {said}"
                          for text in found]


def kill_often(command, programs, injector, stage, times):
    """How often it was killed before it was done, and what was wrong."""
    with tempfile.TemporaryDirectory(prefix="faults-", dir=place_for(command)) as place:
        trial = Killings(command, programs, injector, Path(place).resolve(), stage)
        trial.learn()
        for _ in range(times):
            trial.kill(trial.moment())
    return trial.killed, trial.failures
