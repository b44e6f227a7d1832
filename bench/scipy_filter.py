#!/usr/bin/env python3
"""Zero-lag low-pass of 64 channels of 1,000,000 samples with scipy.signal.sosfiltfilt, best of both layouts.

Beside it, by turns, the same of ours:
    python3 bench/scipy_filter.py 2 build/bench/bin/recursive_filter_bench ChannelsOf64/all_machine
    python3 bench/scipy_filter.py 4 build/bench/bin/filter_design_bench ZeroLagButterworth/avx2
The order of the filter, a benchmark's path and which of its rows; prints the ratio of the medians.
Needs numpy and scipy (Debian: python3-scipy).
"""

import json
import statistics
import subprocess
import sys
import time

import numpy
from scipy import signal

CHANNELS = 64
SAMPLES = 1_000_000
RATE = 1000.0
CUTOFF = 6.0
TURNS = 5


def seconds(work):
    start = time.perf_counter()
    work()
    return time.perf_counter() - start


def ours(benchmark, row):
    """Seconds of one run over all channels."""
    command = [benchmark, f"--benchmark_filter={row}$", "--benchmark_format=json", "--benchmark_min_time=0.2"]
    report = json.loads(subprocess.run(command, check=True, capture_output=True).stdout)
    return report["benchmarks"][0]["real_time"] / 1000.0


def main():
    order, benchmark, row = int(sys.argv[1]), sys.argv[2], sys.argv[3]
    noise = numpy.random.default_rng(1).standard_normal((SAMPLES, CHANNELS + 1)).astype(numpy.float32)
    by_channel = numpy.ascontiguousarray(noise[:, 1:].T)
    sections = signal.butter(order, CUTOFF / 0.802, fs=RATE, output="sos")
    layouts = {
        "a row per channel": lambda: signal.sosfiltfilt(sections, by_channel, axis=1, padlen=10),
        "a row per sample": lambda: signal.sosfiltfilt(sections, noise[:, 1:], axis=0, padlen=10),
    }
    times = {name: [] for name in layouts}
    own = []
    for _ in range(TURNS):
        for name, work in layouts.items():
            times[name].append(seconds(work))
        own.append(ours(benchmark, row))
    medians = {name: statistics.median(values) for name, values in times.items()}
    for name, median in medians.items():
        print(f"sosfiltfilt, {name}: {median:.3f} s")
    median = statistics.median(own)
    print(f"{row}: {median:.4f} s; sosfiltfilt at its best takes {min(medians.values()) / median:.0f} x,")
    print(f"on the same layout {medians['a row per sample'] / median:.0f} x as long")


if __name__ == "__main__":
    main()
