"""Peer of the writing measurement: writes a result file with numpy.savetxt.

write_peer.py COLUMNS SIDE FORMAT ROUNDS OUT reads the columns (doubles, column after column, SIDE * SIDE rows) and
writes them to OUT, one block of lines per map row with an empty line behind it. Prints the best time in ms.
"""
import os
import sys
import time

try:
    import numpy
except ImportError:
    sys.exit(3)

columns, side, line_format, rounds, out = sys.argv[1], int(sys.argv[2]), sys.argv[3], int(sys.argv[4]), sys.argv[5]

table = numpy.fromfile(columns).reshape(-1, side * side).T.copy()
best = float("inf")
for _ in range(rounds):
    if os.path.exists(out):
        os.remove(out)
    start = time.perf_counter()
    with open(out, "w") as file:
        file.write("# 1301 made for measuring\n\n")
        for row in range(side):
            numpy.savetxt(file, table[row * side:(row + 1) * side], fmt=line_format)
            file.write("\n")
    best = min(best, time.perf_counter() - start)
print(f"{best * 1e3:.3f}")
