"""Peer of the whole-job measurement: the sample's non-equivalent analysis with pandas and numpy.

job_peer.py CONDITIONS OUT reads the conditions (JSON: map files, energies, the references' columns, edge jumps and
valences), loads the maps, fits every pixel and writes the result file with all its quantities and the two
histograms beside it.
"""
import json
import os
import sys

try:
    import numpy as np
    import pandas as pd
except ImportError:
    sys.exit(3)

conditions = json.load(open(sys.argv[1]))
out = sys.argv[2]
maps = [
    pd.read_csv(path, engine="c", sep=r"\s+", comment="#", header=None).to_numpy() for path in conditions["maps"]
]
pixels = len(maps[0])
columns = np.array(conditions["columns"])
energies = np.array(conditions["energies"])
jumps = np.array(conditions["jumps"])
valences = np.array(conditions["valences"])
m, total = len(jumps), jumps.sum()
inverse = np.linalg.pinv(np.vstack([columns, np.ones_like(energies), energies]).T)

table = np.zeros((pixels, 15))
table[:, 0] = maps[0][:, 0]
table[:, 1] = maps[0][:, 1]
block = 1 << 14
for first in range(0, pixels, block):
    part = slice(first, min(first + block, pixels))
    y = np.log(np.stack([one[part, 3] / one[part, 2] for one in maps]))
    c = inverse @ y
    shares = c[:m] * (jumps / total)[:, None]
    s = shares.sum(axis=0)
    fractions = shares / s
    t = s * total
    result = table[part]
    result[:, 2 : 2 + m] = fractions.T
    result[:, 6 : 6 + m] = (fractions * t).T
    result[:, 10:12] = c[m:].T
    result[:, 13] = valences @ fractions
    result[:, 14] = t

side = conditions["side"]
with open(out, "w") as file:
    file.write("# 1301 made for measuring\n\n")
    for row in range(0, pixels, side):
        np.savetxt(file, table[row : row + side], fmt=" %10.6g" * 15)
        file.write("\n")
for name, values in (("HGAlpha", table[:, 13]), ("HGThick", table[:, 14])):
    counts, edges = np.histogram(values, bins=51, range=(1.5, 4.5))
    np.savetxt(os.path.splitext(out)[0] + "_" + name + ".dat", np.column_stack([edges[:-1], edges[1:], counts]))
