"""The end-to-end bench: runs the finished Tidewell.exe and looks at it from outside."""

import os
import sys
from pathlib import Path

_REPOSITORY = Path(__file__).resolve().parents[3]
LONG = os.environ.get("TIDEWELL_LONG") == "1"  # a long run is asked for

sys.path += [str(_REPOSITORY / "resources"), str(_REPOSITORY / "tests/oracle")]  # make_icons.py, moon_oracle.py
