"""Checks that the oracle writes the tables of tests/data again, byte for byte.

    python3 test_data.py
"""

import os
import sys
import tempfile

import make_data

with tempfile.TemporaryDirectory() as folder:
    make_data.write_all(folder)
    names = sorted(os.listdir(folder))
    others = []
    for name in names:
        with open(os.path.join(folder, name), "rb") as made, open(os.path.join(make_data.FOLDER, name), "rb") as kept:
            if made.read() != kept.read():
                others.append(name)
print("%d tables made again; other than the kept ones: %s" % (len(names), ", ".join(others) or "none"))
sys.exit(1 if others or not names else 0)
