"""Writes the archive that a kernel unpacks as its first file system ("newc", docs of the kernel: early-userspace)."""

import os
import stat


class Archive:
    def __init__(self, path):
        self.file = open(path, "wb")
        self.number = 0
        self.folders = {""}

    def add(self, name, mode, data=b""):
        self.number += 1
        encoded = name.encode() + b"\0"
        fields = (self.number, mode, 0, 0, 1, 0, len(data), 0, 0, 0, 0, len(encoded), 0)
        self.padded(b"070701" + b"".join(b"%08x" % field for field in fields) + encoded)
        self.padded(data)

    def padded(self, data):
        self.file.write(data + b"\0" * (-len(data) % 4))

    def folder(self, name):
        if name not in self.folders:
            self.folder(os.path.dirname(name))
            self.folders.add(name)
            self.add(name, stat.S_IFDIR | 0o755)

    def text(self, name, text, mode=0o644):
        self.folder(os.path.dirname(name))
        self.add(name, stat.S_IFREG | mode, text.encode())

    def copy(self, source, name):
        """A file of this machine, with what its links lead to."""
        self.folder(os.path.dirname(name))
        with open(source, "rb") as file:
            self.add(name, stat.S_IFREG | (0o755 if os.access(source, os.X_OK) else 0o644), file.read())

    def link(self, name, target):
        self.folder(os.path.dirname(name))
        self.add(name, stat.S_IFLNK | 0o777, target.encode())

    def close(self):
        self.add("TRAILER!!!", 0)
        self.file.close()
