"""What must hold after a fault, whatever failed: the figures, what the program said, and its exit status."""

import signal
from pathlib import Path

HARMLESS = ("EINTR", "short")  # a call that is merely to be made again disturbs nothing
CHANGES = ("open-new", "write", "fsync", "rename", "unlink", "mkdir", "link", "truncate", "chmod")

# One of these for each call in turn, in the ordinary run; all of them in a thorough one.
ERRORS = {
    "open": ("EIO", "EMFILE", "EACCES", "EINTR", "ESTALE"),
    "open-new": ("ENOSPC", "EACCES", "EMFILE", "EROFS"),
    "open-folder": ("EIO", "EMFILE", "EACCES", "ESTALE"),
    "opendir": ("EACCES", "EIO", "EMFILE", "ESTALE"),
    "readdir": ("EIO", "ESTALE"),
    "read": ("EIO", "short", "EINTR", "ESTALE"),
    "write": ("ENOSPC", "short", "EIO", "EINTR"),
    "fsync": ("EIO", "ENOSPC", "EINTR"),
    "close": ("EIO",),
    "rename": ("EIO", "ENOSPC", "EACCES"),
    "unlink": ("EIO", "EACCES"),
    "mkdir": ("ENOSPC", "EACCES"),
    "stat": ("EIO", "EACCES", "ESTALE"),
    "flock": ("EINTR", "ENOLCK", "EIO"),
}
USUAL = ("EIO", "EACCES")


def errors_of(call):
    return ERRORS.get(call.name, USUAL)


def nearby(err, call, root):
    """Whether what was said names the file of the failed call, one beside it, or a folder above it."""
    path = Path(call.path)
    known = [str(path.parent), *(str(p) for p in path.parents if p != root and p.is_relative_to(root))]
    return any(name in err for name in known)


def shown(value):
    text = repr(value)
    return text if len(text) < 300 else text[:300] + "…"


def differing(now, allowed):
    """The items that are in none of the allowed states, each with a text that says so."""
    names = set(now).union(*allowed)
    return {
        name: f"{name}: is {shown(now.get(name))}, not " + " or ".join(shown(state.get(name)) for state in allowed)
        for name in sorted(names, key=str)
        if all(now.get(name) != state.get(name) for state in allowed)
    }


def lagging(name, command):
    return name[0] in command.follows or (name[0] == "file" and name[1] in command.follows)


class Judgement:
    """Compares what became of a command with what may become of it. `before` and `wanted` are what the folder holds
    before the command and after it went undisturbed, as `plain`."""

    def __init__(self, command, root, before, wanted, plain):
        self.command, self.root = command, root
        self.before, self.wanted, self.plain = before, wanted, plain

    def done(self, now):
        """The items that the command changes, with whether it did."""
        names = set(self.before) | set(self.wanted)
        return {n: now.get(n) == self.wanted.get(n) for n in names if self.before.get(n) != self.wanted.get(n)}

    def complaints(self, fault, call, outcome, now):
        found = [f"lost or doubled: {text}" for text in self.wrong_items(now)]
        if fault.action == "kill" and outcome.status == -signal.SIGKILL:
            return found
        if fault.action in HARMLESS and (outcome.status != self.plain.status or outcome.out != self.plain.out):
            found.append("failed, where the call was merely to be made again")
        if outcome.status == self.plain.status:
            return found + self.of_success(fault, call, outcome, now)
        if outcome.status == 1:
            return found + self.of_failure(call, outcome, now)
        return found + [f"ended with {outcome.status}"]

    def wrong_items(self, now):
        """What is neither as it was nor as it is to be. Months follow the days, and have a check of their own; a file
        may be in both formats on the way, and what is to be destroyed may be gone in part."""
        wrong = differing(now, (self.before, self.wanted))
        return [text for name, text in wrong.items() if not self.is_between(name, now.get(name))]

    def is_between(self, name, value):
        before, wanted = self.before.get(name), self.wanted.get(name)
        if name[0] == "month" or (name in self.command.midway and value is None):
            return True
        if name[0] == "formats":
            return bool(value) and value <= (before or set()) | (wanted or set())
        if lagging(name, self.command):
            return "damaged" not in str(value)
        if self.command.partial and name[0] == "day" and value:
            return value[0] <= wanted[0]
        if self.command.destroys and name[0] in ("day", "practice") and value:
            return value[0] <= before[0] and (not wanted or value[0] >= wanted[0])
        return False

    def of_success(self, fault, call, outcome, now):
        named = nearby(outcome.err, call, self.root)
        undone = [name for name, done in self.done(now).items() if not done]
        grave = [name for name in undone if not lagging(name, self.command)]
        found = [f"success was said, but not done: {name}" for name in grave]
        if undone and not grave and not named:
            found.append(f"nothing was said of what is not done: {undone}")
        if outcome.out != self.plain.out and not named:
            found.append("success, but with another text")
        home = f"{self.root}/home"
        is_kept = not Path(call.path).is_relative_to(f"{home}/.local/share") and call.path not in (home, f"{home}/.local")
        if call.name == "fsync" and is_kept and fault.action not in (*HARMLESS, "full") and not named:
            found.append("nothing was said of what may not be safe yet")
        return found

    def of_failure(self, call, outcome, now):
        found = []
        changed = {n: d for n, d in self.done(now).items() if not lagging(n, self.command)}
        if changed and all(changed.values()) and not self.command.sure:
            found.append("a failure was said, though all of it took effect")
        if not nearby(outcome.err, call, self.root):
            found.append("the message names no file")
        if outcome.out and outcome.out == self.plain.out and not self.command.reads:
            found.append("a failure, with the text of success")
        return found + (self.command.says(outcome, changed, now) if self.command.says else [])

    def after_again(self, outcome, earlier, now, twice):
        """What is wrong when the command was run again, undisturbed: it does what had not been done. One that adds
        then adds to what had; `twice` is what the folder holds when it is run twice, undisturbed."""
        wanted = {name: self.wanted_again(name, earlier, twice) for name in set(twice) | set(self.wanted)}
        found = [f"after another run: {text}" for name, text in differing(now, (wanted,)).items()
                 if not lagging(name, self.command)]
        return found if outcome.status in (self.plain.status, self.command.again) else found + [
            f"another run ends with {outcome.status}: {outcome.err}"]

    def wanted_again(self, name, earlier, twice):
        wanted, before, value = self.wanted.get(name), self.before.get(name), earlier.get(name)
        if not self.command.adds:
            return wanted
        if name[0] in ("day", "practice") and value and wanted:
            added = wanted[0] - before[0] if before else wanted[0]
            return value[0] + added, (twice if value == wanted else self.wanted)[name][1]
        done = self.done(earlier)
        return twice.get(name) if done.get(name, all(done.values())) else wanted
