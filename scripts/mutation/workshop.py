"""A copy of the tree that may be broken: built with -O0, and tested."""

import contextlib
import os
import pathlib
import resource
import shutil
import subprocess

SMALL = 256 << 20   # no test writes larger files
MEMORY = 4 << 30


def limited():
    resource.setrlimit(resource.RLIMIT_FSIZE, (SMALL, SMALL))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


def is_there(command):
    return shutil.which(command) is not None


class Workshop:
    """Makes the copy what the tree is now: the files that git knows, and new ones it does not ignore."""

    def __init__(self, root):
        self.tree = root / "build/mutation/tree"
        self.build = self.tree / "build/dev"
        self.home = root / "build/mutation/home"
        self.home.mkdir(parents=True, exist_ok=True)
        self.environment = {key: value for key, value in os.environ.items() if not key.startswith(("XDG_", "TAPPORA_"))}
        self.environment |= {"HOME": str(self.home), "TZ": "UTC", "LC_ALL": "C.UTF-8"}
        self.copy(root)
        if not (self.build / "build.ninja").exists():
            self.configure()

    def copy(self, root):
        listed = subprocess.run(["git", "-C", root, "ls-files", "-coz", "--exclude-standard"], check=True,
                                capture_output=True, text=True).stdout
        names = {name for name in listed.split("\0") if name and (root / name).is_file()}
        for name in sorted(names):
            source, target = root / name, self.tree / name
            if not target.exists() or source.read_bytes() != target.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        for path in [path for path in self.tree.rglob("*") if path.is_file() and self.build not in path.parents]:
            if str(path.relative_to(self.tree)) not in names:
                path.unlink()

    def configure(self):
        """Warnings are errors: what the compiler complains of needs no test."""
        linker = "-fuse-ld=mold" if is_there("mold") else ""
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                        "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0", "-DTAPPORA_WARNINGS_AS_ERRORS=ON", f"-DCMAKE_EXE_LINKER_FLAGS={linker}",
                        f"-DCMAKE_SHARED_LINKER_FLAGS={linker}"], check=True, stdout=subprocess.DEVNULL)

    def make(self, suite, **how):
        return subprocess.run(["ninja", "-C", self.build, *suite.units, *suite.programs], **how)

    def run(self, command, timeout):
        """None, or why the command did not succeed."""
        try:
            with subprocess.Popen(command, cwd=self.tree, env=self.environment, preexec_fn=limited,
                                  start_new_session=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL) as process:
                try:
                    status = process.wait(timeout)
                finally:
                    with contextlib.suppress(ProcessLookupError):
                        os.killpg(process.pid, 9)
            return None if status == 0 else "failed"
        except subprocess.TimeoutExpired:
            return "too slow"

    def commands(self, suite):
        """The tests in the order in which they are tried, the quickest first."""
        for name in suite.units:
            yield name, [self.build / "bin" / name, "--gtest_fail_fast", "--gtest_brief=1"]
        cases = self.tree / "tests/cli"
        for folder in suite.cases:
            for case in sorted(cases.glob(f"{folder}/*.case")):
                yield str(case.relative_to(cases)), [cases / "run", self.build / "bin", case]

    @contextlib.contextmanager
    def changed(self, mutant):
        path = pathlib.Path(self.tree / mutant.file)
        text = path.read_text()
        path.write_text(mutant.applied(text))
        try:
            yield
        finally:
            path.write_text(text)
