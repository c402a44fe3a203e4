#!/usr/bin/env python3
"""Compares the mutable data of the static library with a list kept beside the tests.

All state of the program is in run/shared_records. A global variable anywhere else, or a static one inside a function,
would be state that no test resets to its start value, so it has to be added to the list by hand.

Usage: data_symbols.py LIBRARY LIST
"""

import re
import subprocess
import sys

SYMBOL = re.compile(r"^[0-9a-f]{8,16} .{6}O (\S+)\t[0-9a-f]+ +(?:\.hidden )?(.+)$")
WRITABLE = re.compile(r"^\.(data|bss|tdata|tbss)\b(?!\.rel\.ro)|^\*COM\*$")


def mutable_symbols(library):
    """The program's symbols in writable sections, each after the name of its object file."""
    output = subprocess.run(["objdump", "--syms", "--demangle", library],
                            check=True, capture_output=True, text=True, timeout=120).stdout
    symbols = set()
    unit = ""
    for line in output.splitlines():
        if line.endswith("file format elf64-x86-64"):
            unit = line.split(".")[0]
        match = SYMBOL.match(line)
        if match and WRITABLE.match(match[1]) and "varnolix::" in match[2]:
            symbols.add(f"{unit}: {match[2]}")
    return symbols


def listed_symbols(path):
    """The lines of the list, without comments and empty ones."""
    with open(path, encoding="utf-8") as lines:
        return {line.strip() for line in lines if line.strip() and not line.startswith("#")}


def main(arguments):
    """Returns 0 if library and list agree, 1 if not."""
    if len(arguments) != 3:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    found = mutable_symbols(arguments[1])
    listed = listed_symbols(arguments[2])
    if not found:
        print(f"{arguments[1]}: no data symbols at all; is this the library?")
        return 1
    for symbol in sorted(found - listed):
        print(f"in the library, not in the list: {symbol}")
    for symbol in sorted(listed - found):
        print(f"in the list, not in the library: {symbol}")
    return 0 if found == listed else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv))
