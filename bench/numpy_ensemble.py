"""The mean and the standard deviation of many trials, as a script of numpy does it in one process.

    /usr/bin/python3 bench/numpy_ensemble.py DIR

DIR holds the files that ensemble_bench writes: native binary, 8 channels of 2,000 samples each.
"""

import glob
import sys
import time

import numpy as np

HEADER = 4386
CHANNELS = 8
INTERVALS = 100


def average(paths):
    sums = np.zeros((CHANNELS, INTERVALS + 1))
    squares = np.zeros_like(sums)
    for path in paths:
        rows = np.fromfile(path, dtype="<f4", offset=HEADER).reshape(CHANNELS + 1, -1)
        samples = rows.shape[1]
        at = np.linspace(0, samples - 1, INTERVALS + 1)
        for channel in range(CHANNELS):
            x = np.interp(at, np.arange(samples), rows[channel + 1])
            sums[channel] += x
            squares[channel] += x * x
    n = len(paths)
    mean = sums / n
    return mean, np.sqrt(np.maximum(squares - sums * mean, 0) / (n - 1))


paths = sorted(glob.glob(sys.argv[1] + "/ensemble-*.vmb"))
times = []
for _ in range(9):
    start = time.process_time()
    average(paths)
    times.append(time.process_time() - start)
print(f"numpy: {len(paths)} files, median of 9: {np.median(times) * 1000:.1f} ms of the processor")
