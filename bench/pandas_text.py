#!/usr/bin/env python3
"""Delimited text of 1,000,000 lines x 16 columns: pandas' C reader beside the load of text_bench, by turns.

    python3 bench/pandas_text.py build/bench/bin/text_bench
The file is made here, in a temporary folder, like the benchmark's own. Both read 32-bit numbers from a warm
page cache. Needs pandas (Debian: python3-pandas); ends with a word when it is not there.
"""

import json
import os
import random
import statistics
import subprocess
import sys
import tempfile
import time

COLUMNS = 16
LINES = 1_000_000
TURNS = 5


def make_file(path):
    """Lines of numbers with 3 to 6 decimals; a thousand different ones are enough for a reader."""
    dice = random.Random(1)
    lines = []
    for _ in range(1000):
        cells = ((dice.randrange(2_000_001) - 1e6) / 1e3 / (1000 if c % 4 == 0 else 1) for c in range(COLUMNS))
        lines.append(",".join(f"{cell:.{3 + c % 4}f}" for c, cell in enumerate(cells)) + "\n")
    with open(path, "w", encoding="ascii") as file:
        for _ in range(LINES // len(lines)):
            file.writelines(lines)


def ours(benchmark):
    command = [benchmark, "--benchmark_filter=LoadText/again", "--benchmark_format=json"]
    report = json.loads(subprocess.run(command, check=True, capture_output=True).stdout)
    return report["benchmarks"][0]["real_time"] / 1000.0


def main():
    try:
        import pandas
    except ImportError:
        sys.exit("pandas is not installed: nothing was compared")
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "text.csv")
        make_file(path)
        theirs, own = [], []
        for _ in range(TURNS):
            start = time.perf_counter()
            frame = pandas.read_csv(path, header=None, dtype="float32", engine="c")
            theirs.append(time.perf_counter() - start)
            assert frame.shape == (LINES, COLUMNS)
            own.append(ours(sys.argv[1]))
    ratio = statistics.median(theirs) / statistics.median(own)
    print(f"pandas {pandas.__version__}: {statistics.median(theirs):.2f} s, load: {statistics.median(own):.2f} s, "
          f"{ratio:.1f} x")


if __name__ == "__main__":
    main()
