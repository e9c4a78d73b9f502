"""Peer of the loading measurement: reads a map data file with pandas' C engine.

load_peer.py FILE ROUNDS OUT prints the best time in ms and the peak memory in MB that reading took, and writes the
first four columns, read with correct rounding, to OUT as doubles, column after column.
"""
import resource
import sys
import time

try:
    import pandas
except ImportError:
    sys.exit(3)

path, rounds, out = sys.argv[1], int(sys.argv[2]), sys.argv[3]


def read(**options):
    return pandas.read_csv(path, engine="c", sep=r"\s+", comment="#", header=None, **options)


def peak_mb():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024


before = peak_mb()
best = float("inf")
for _ in range(rounds):
    start = time.perf_counter()
    frame = read()
    best = min(best, time.perf_counter() - start)
    del frame
peak = peak_mb() - before
with open(out, "wb") as columns:
    read(float_precision="round_trip").to_numpy(dtype="float64").T.tofile(columns)
print(f"{best * 1e3:.3f} {peak:.1f}")
