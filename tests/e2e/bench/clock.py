"""The movable clock of one program (native/clock_preload.c reads it)."""

import datetime
import mmap
import os
import struct

UTC = datetime.timezone.utc
EPOCH = datetime.datetime(1970, 1, 1, tzinfo=UTC)


class Clock:
    """Stands still at an instant until it is moved."""

    _LAYOUT = struct.Struct("<IIq")  # version, readings, microseconds since the epoch

    def __init__(self, path, at):
        path.write_bytes(bytes(self._LAYOUT.size))
        self.path = path
        with open(path, "r+b") as file:
            self._file = mmap.mmap(file.fileno(), self._LAYOUT.size)
        self._version = 0
        self.set(at)

    def environment(self, preload):
        """The environment of a program that reads this clock. It names the library without its folder, since LD_PRELOAD
        splits its value at blanks."""
        folders = [str(preload.parent), *filter(None, [os.environ.get("LD_LIBRARY_PATH")])]
        return {"LD_PRELOAD": preload.name, "LD_LIBRARY_PATH": ":".join(folders), "TIDEWELL_E2E_CLOCK": str(self.path)}

    def set(self, at):
        """Moves the clock to an instant, a datetime with a zone."""
        self.at = at.astimezone(UTC)
        microseconds = (self.at - EPOCH) // datetime.timedelta(microseconds=1)
        struct.pack_into("<I", self._file, 0, self._version + 1)  # odd: being written
        struct.pack_into("<q", self._file, 8, microseconds)
        self._version += 2
        struct.pack_into("<I", self._file, 0, self._version)

    def advance(self, **time):
        """Moves the clock by timedelta(**time)."""
        self.set(self.at + datetime.timedelta(**time))

    @property
    def readings(self):
        """How often the program has read the clock."""
        return struct.unpack_from("<I", self._file, 4)[0]
