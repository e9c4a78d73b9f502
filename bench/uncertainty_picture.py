"""Draws docs/uncertainty.png: uncertainty_picture.py POINTS PICTURE, where `coverage POINTS` wrote the points."""
import sys

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt
import numpy as np

lines = [line.split() for line in open(sys.argv[1])]
error, sigma = np.array([line[1:] for line in lines if line[0] == "s"], dtype=float).T
t, least_squares, non_equivalent = np.array([line[1:] for line in lines if line[0] == "b"], dtype=float).T

figure, (left, right) = plt.subplots(1, 2, figsize=(11, 4.4), dpi=110)
shown = (sigma > 0.007) & (sigma < 0.3)
left.scatter(sigma[shown], error[shown] / sigma[shown], s=1.5, alpha=0.15, linewidths=0, color="tab:blue", rasterized=True)
edges = np.geomspace(0.008, 0.3, 12)
centres, bands = [], []
for low, high in zip(edges, edges[1:]):
    ratio = (error / sigma)[(sigma >= low) & (sigma < high)]
    if len(ratio) >= 200:
        centres.append(np.sqrt(low * high))
        bands.append(np.quantile(ratio, [0.0228, 0.1587, 0.5, 0.8413, 0.9772]))
left.plot(centres, bands, color="black", marker="o", markersize=3, linewidth=1)
for level in (-2, -1, 0, 1, 2):
    left.axhline(level, color="tab:orange", linewidth=0.8)
left.set(xscale="log", ylim=(-4, 4), xlabel="predicted standard error of V", ylabel="true error of V / predicted",
         title="Sample, 40 000 quanta, non-equivalent method")
right.plot(t, 100 * (least_squares - 1), marker="o", label="four points, least squares")
right.plot(t, 100 * (non_equivalent - 1), marker="s", label="non-equivalent")
right.set(xscale="log", xlabel="true t", ylabel="median of t found above true t (%)", title="Bias of thin pixels")
right.legend()
figure.tight_layout()
figure.savefig(sys.argv[2])
