"""A file system of four megabytes that only the planner on it sees."""
import os
import pathlib
import subprocess


class SmallDisk:
    def __init__(self, directory, is_full=False):
        self.directory = pathlib.Path(directory)
        self.directory.mkdir()
        fill = f"dd if=/dev/zero of='{self.directory}/filler' 2>&-;" if is_full else ""
        mount = f"mount -t tmpfs -o size=4m tessaly '{self.directory}' && {fill} exec"
        # As root, or in a name space in which the user may mount, and then in another where the user is the user again.
        again = "" if os.getuid() == 0 else f" unshare --map-user={os.getuid()} --map-group={os.getgid()}"
        rights = "-m" if os.getuid() == 0 else "-rm"
        self.launcher = ["unshare", rights, "sh", "-c", f'{mount}{again} "$0" "$@"']

    @staticmethod
    def is_possible():
        return subprocess.run(["unshare", "-m" if os.getuid() == 0 else "-rm", "mount", "-t", "tmpfs", "tessaly", "/mnt"],
                              stderr=subprocess.DEVNULL).returncode == 0

    def fill(self, process):
        """Writes until not a byte is left; the disk is that of the process."""
        with open(self._filler(process), "wb", buffering=0) as filler:
            for size in (65536, 4096, 1):
                try:
                    while filler.write(bytes(size)) == size:
                        pass
                except OSError:
                    pass

    def make_room(self, process):
        self._filler(process).unlink()

    def _filler(self, process):
        return pathlib.Path(f"/proc/{process.pid}/root{self.directory}/filler")
