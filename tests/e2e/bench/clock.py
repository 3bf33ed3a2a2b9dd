"""The movable clock of one program (native/clock_preload.c reads it)."""

import ctypes
import datetime
import mmap
import os

UTC = datetime.timezone.utc
EPOCH = datetime.datetime(1970, 1, 1, tzinfo=UTC)


class _File(ctypes.Structure):
    _fields_ = [("microseconds", ctypes.c_int64), ("readings", ctypes.c_uint32)]


class Clock:
    """Stands still at an instant until it is moved."""

    def __init__(self, path, at):
        path.write_bytes(bytes(ctypes.sizeof(_File)))
        self.path = path
        with open(path, "r+b") as file:
            self._file = _File.from_buffer(mmap.mmap(file.fileno(), 0))
        self.set(at)

    def environment(self, preload):
        """The environment of a program that reads this clock. It names the library without its folder, since LD_PRELOAD
        splits its value at blanks."""
        folders = [str(preload.parent), *filter(None, [os.environ.get("LD_LIBRARY_PATH")])]
        return {"LD_PRELOAD": preload.name, "LD_LIBRARY_PATH": ":".join(folders), "TIDEWELL_E2E_CLOCK": str(self.path)}

    def set(self, at):
        """Moves the clock to an instant, a datetime with a zone."""
        self.at = at.astimezone(UTC)
        self._file.microseconds = (self.at - EPOCH) // datetime.timedelta(microseconds=1)

    def advance(self, **time):
        """Moves the clock by timedelta(**time)."""
        self.set(self.at + datetime.timedelta(**time))

    @property
    def readings(self):
        """How often the program has read the clock."""
        return self._file.readings
