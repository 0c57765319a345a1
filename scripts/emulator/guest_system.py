"""Makes the file system that the emulated machine starts with: the built programs, what they are linked with, udev and
BusyBox from this machine, and modules of the kernel's package."""

import re
import subprocess
from pathlib import Path

from cpio import Archive

HERE = Path(__file__).resolve().parent
RESOURCES = HERE.parent.parent / "resources"
PROGRAMS = ("tappora", "tappora-record", "tappora-practice")
BUSYBOX = "/bin/busybox"
SYSTEM = ("/lib/systemd/systemd-udevd", "/bin/udevadm", "/usr/bin/setpriv", "/usr/bin/script", "/bin/bash")
UDEV = Path("/usr/lib/udev")
TERMINALS = Path("/lib/terminfo")
MODULES = ("evdev", "uinput", "uhid", "psmouse", "hid-generic", "usbhid", "xhci-pci", "virtio_pci", "virtio_input",
           "virtio_console", "virtio_blk", "crc32c_generic", "ext4")
USERS = {"ada": 1000, "bob": 1001}  # ada is in the group input
PASSWD = "root:x:0:0::/root:/bin/sh\n" + "".join(f"{name}:x:{uid}:{uid}::/home/{name}:/bin/sh\n"
                                                  for name, uid in USERS.items())


def groups():
    """The groups of this machine that udev's rules name, and those of the users."""
    known = Path("/etc/group").read_text().splitlines()
    lines = [line.rsplit(":", 1)[0] + ":" for line in known]
    lines = [line + "ada" if line.startswith("input:") else line for line in lines]
    if not any(line.startswith("input:") for line in lines):
        lines.append("input:x:999:ada")
    return "\n".join(lines + [f"{name}:x:{uid}:" for name, uid in USERS.items()]) + "\n"


def libraries(program):
    listed = subprocess.run(["ldd", str(program)], capture_output=True, text=True, check=False).stdout
    return set(re.findall(r"(/\S+) \(0x", listed))


def with_needs(modules, found):
    """These modules and those they need, in the order in which they can be loaded."""
    wanted = []

    def add(name):
        path, needed = found[name.replace("-", "_")]
        for other in needed:
            add(Path(other).name.partition(".ko")[0])
        if path not in wanted:
            wanted.append(path)

    for module in modules:
        if module.replace("-", "_") in found:  # or it is in the kernel itself
            add(module)
    return wanted


def kernel_modules(kernel):
    """The paths of what is needed, below lib/modules/VERSION."""
    [folder] = (kernel / "lib/modules").iterdir()
    subprocess.run([BUSYBOX, "depmod", "-b", str(kernel), folder.name], check=True)
    found = {}
    for line in (folder / "modules.dep").read_text().splitlines():
        path, _, needed = line.partition(":")
        found[Path(path).name.partition(".ko")[0].replace("-", "_")] = (path, needed.split())
    return [folder / path for path in with_needs(MODULES, found)]


def build_helper(place):
    helper = place / "helper"
    source = HERE / "helper.cpp"
    if not helper.exists() or helper.stat().st_mtime < source.stat().st_mtime:
        subprocess.run(["c++", "-std=c++20", "-O2", "-static", "-Wall", "-Wextra", "-o", str(helper), str(source)],
                       check=True)
    return helper


def make(programs, kernel, place):
    """Writes the archive, and gives its path."""
    path = place / "system.cpio"
    archive = Archive(path)
    for name in ("dev", "proc", "sys", "run", "tmp", "home", "root", "var", "mnt"):
        archive.folder(name)
    archive.link("lib64", "usr/lib64")
    archive.link("lib", "usr/lib")
    archive.link("bin", "usr/bin")
    archive.link("sbin", "usr/bin")
    copied = [programs / name for name in PROGRAMS if (programs / name).exists()]
    for program in copied:
        archive.copy(program, f"tappora/{program.name}")
    for program in SYSTEM:
        archive.copy(program, merged(program))
    archive.copy(BUSYBOX, "usr/bin/busybox")
    archive.copy(build_helper(place), "usr/bin/helper")
    for library in sorted(set().union(*map(libraries, [*copied, *SYSTEM]))):
        archive.copy(library, merged(library))
    for source, name in ((RESOURCES, "resources"), (UDEV / "rules.d", "usr/lib/udev/rules.d"),
                         (Path("/usr/share/libinput"), "usr/share/libinput"), (TERMINALS / "x", "usr/lib/terminfo/x")):
        copy_tree(archive, source, name)
    for program in ("hwdb.bin", "libinput-device-group", "libinput-fuzz-extract", "libinput-fuzz-to-zero"):
        if (UDEV / program).exists():
            archive.copy(UDEV / program, f"usr/lib/udev/{program}")
    for order, module in enumerate(kernel_modules(kernel)):
        archive.copy(module, f"modules/{order:02}-{module.name}")
    archive.copy("/usr/share/zoneinfo/UTC", "usr/share/zoneinfo/UTC")
    archive.text("etc/passwd", PASSWD)
    archive.text("etc/group", groups())
    archive.text("init", (HERE / "init").read_text(), 0o755)
    archive.close()
    return path


def copy_tree(archive, source, name):
    for path in sorted(source.rglob("*")):
        if path.is_file():
            archive.copy(path, f"{name}/{path.relative_to(source)}")


def merged(path):
    """Where a file is in a system whose /lib and /bin are links into /usr."""
    name = str(path).lstrip("/").replace("sbin/", "bin/")
    return name if name.startswith("usr/") else "usr/" + name
