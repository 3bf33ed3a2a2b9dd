#!/usr/bin/env python3
"""Writes the source of support::ResetModule, which resets every variable of the portable headers.

Usage: make_reset.py OUT HEADER...
"""

import re
import sys
from pathlib import Path

VARIABLE = re.compile(r"inline (?!constexpr)[\w:]+ (\w+)(?: = (.+?))?;")

includes, resets = [], []
for header in sys.argv[2:]:
    namespace = None
    for line in Path(header).read_text(encoding="utf-8").splitlines():
        if match := re.match(r"namespace (\w+) \{", line):
            namespace = match[1]
        elif match := VARIABLE.match(line):
            resets.append(f"  {namespace}::{match[1]} = {match[2] or '{}'};\n")
            includes.append(f'#include "{header}"\n')

Path(sys.argv[1]).write_text(
    '#include "support/module_test.h"\n\n' + "".join(dict.fromkeys(includes)) + "\nvoid support::ResetModule() {\n"
    + "".join(resets) + "}\n", encoding="utf-8")
