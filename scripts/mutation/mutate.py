"""See scripts/mutate."""

import argparse
import collections
import dataclasses
import json
import pathlib
import random
import sys
import time

from mutants import Mutant, mutants_of
from suites import SUITES, suite_of
from workshop import Workshop

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
RESULTS = ROOT / "build/mutation/results.jsonl"
SLOWER = 10     # so many times the usual time of a test is too slow
AT_LEAST = 30   # seconds


def say(text):
    print(text, file=sys.stderr, flush=True)


def sources(workshop, folder):
    """The files below a folder that it, and not a folder with tests of its own, covers."""
    for path in sorted((workshop.tree / folder).rglob("*")):
        name = str(path.relative_to(workshop.tree))
        if path.suffix in (".cpp", ".h") and suite_of(name):
            yield name


def sample(workshop, folder, seed):
    """The possible changes of a folder, in an order by chance: for a seed and a tree always the same."""
    found = [mutant for file in sources(workshop, folder) for mutant in mutants_of(workshop.tree, file)]
    random.Random(f"{seed} {folder}").shuffle(found)
    return found


class Results:
    """What became of each change, kept in a file as soon as it is known. The last word on a change counts."""

    def __init__(self):
        self.known = {}
        for line in RESULTS.read_text().splitlines() if RESULTS.exists() else []:
            fields = json.loads(line)
            outcome = fields.pop("outcome")
            self.known[Mutant(**fields)] = outcome

    def keep(self, mutant, outcome):
        self.known[mutant] = outcome
        with RESULTS.open("a") as file:
            file.write(json.dumps(dataclasses.asdict(mutant) | {"outcome": outcome}) + "\n")


class Trial:
    def __init__(self, workshop):
        self.workshop = workshop
        self.usual = {}   # seconds of each test of a suite without any change

    def prepare(self, suite):
        """Builds the tests of a suite, and sees that they pass as things are."""
        if suite in self.usual:
            return
        say(f"building the tests of {suite.folder}")
        if (built := self.workshop.make(suite, capture_output=True, text=True)).returncode != 0:
            sys.exit(f"the tree does not build:\n{built.stdout[-3000:]}")
        self.usual[suite] = {}
        for name, command in self.workshop.commands(suite):
            start = time.monotonic()
            if why := self.workshop.run(command, 600):
                sys.exit(f"{name}: {why} without any change")
            self.usual[suite][name] = time.monotonic() - start

    def of(self, mutant):
        """"no change" for what does not compile, "survived", or the test that noticed."""
        suite = suite_of(mutant.file)
        self.prepare(suite)
        with self.workshop.changed(mutant):
            if self.workshop.make(suite, capture_output=True).returncode != 0:
                return "no change"
            for name, command in self.workshop.commands(suite):
                if why := self.workshop.run(command, max(AT_LEAST, SLOWER * self.usual[suite][name])):
                    return f"{name}: {why}"
        return "survived"


def described(mutant, outcome):
    return f"{mutant.file}:{mutant.line}: {mutant.before}  ->  {mutant.after}   [{outcome}]"


def try_sample(trial, results, folder, options):
    tried = []
    for mutant in sample(trial.workshop, folder, options.seed):
        if len(tried) == options.number:
            break
        if mutant not in results.known:
            results.keep(mutant, trial.of(mutant))
            say(described(mutant, results.known[mutant]))
        if results.known[mutant] != "no change":
            tried.append(mutant)
    return tried


def try_again(trial, results):
    survivors = [mutant for mutant, outcome in results.known.items() if outcome == "survived"]
    current = {mutant for file in {mutant.file for mutant in survivors} if (trial.workshop.tree / file).exists()
               for mutant in mutants_of(trial.workshop.tree, file)}
    tried = [mutant for mutant in survivors if mutant in current]
    for mutant in tried:
        results.keep(mutant, trial.of(mutant))
        say(described(mutant, results.known[mutant]))
    return tried


def report(tried, results):
    counts = collections.defaultdict(collections.Counter)
    for mutant in tried:
        outcome = results.known[mutant]
        counts[suite_of(mutant.file).folder]["survived" if outcome == "survived" else "caught"] += 1
    for mutant in sorted(tried, key=lambda mutant: (mutant.file, mutant.line)):
        if results.known[mutant] == "survived":
            print(described(mutant, "survived"))
    for folder, count in sorted(counts.items()):
        print(f"{folder:<16} {count['caught']:>4} of {count.total():>4} caught")


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description="Lists the changes of the code that no test "
                                     "notices.", epilog="Example: scripts/mutate drawing app/practice -n 30")
    parser.add_argument("folders", nargs="*", help="folders or files; all that have tests when not given")
    parser.add_argument("-n", "--number", type=int, default=20, help="how many changes of each folder (20)")
    parser.add_argument("--seed", type=int, default=1, help="another seed gives other changes (1)")
    parser.add_argument("--retry", action="store_true", help="try again what survived before")
    options = parser.parse_args()
    trial, results = Trial(Workshop(ROOT)), Results()
    if options.retry:
        tried = try_again(trial, results)
    else:
        folders = options.folders or [suite.folder for suite in SUITES]
        tried = [mutant for folder in folders for mutant in try_sample(trial, results, folder.rstrip("/"), options)]
    report(tried, results)


if __name__ == "__main__":
    main()
