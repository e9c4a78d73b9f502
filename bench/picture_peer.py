"""Peer of the picture measurement: colours values through a table with numpy.

picture_peer.py VALUES TABLE ZMIN ZMAX ROUNDS OUT reads doubles and 32-bit colours, prints the best times in ms of
index-and-take written as one expression and written with arrays that are kept from round to round, and writes the
colours to OUT.
"""
import sys
import time

try:
    import numpy
except ImportError:
    sys.exit(3)

values = numpy.fromfile(sys.argv[1], dtype="float64")
table = numpy.fromfile(sys.argv[2], dtype="uint32")
zmin, zmax, rounds = float(sys.argv[3]), float(sys.argv[4]), int(sys.argv[5])
per_unit = table.size / (zmax - zmin)

position = numpy.empty_like(values)
index = numpy.empty(values.size, dtype="intp")
pixels = numpy.empty(values.size, dtype="uint32")


def expression():
    return table[numpy.clip(per_unit * (values - zmin), 0, table.size - 1).astype("intp")]


def kept():
    numpy.subtract(values, zmin, out=position)
    numpy.multiply(position, per_unit, out=position)
    numpy.clip(position, 0, table.size - 1, out=position)
    numpy.copyto(index, position, casting="unsafe")
    return numpy.take(table, index, out=pixels, mode="clip")


def best(colour):
    shortest = float("inf")
    for _ in range(rounds):
        start = time.perf_counter()
        colour()
        shortest = min(shortest, time.perf_counter() - start)
    return shortest * 1e3


print(f"{best(expression):.3f} {best(kept):.3f}")
kept().tofile(sys.argv[6])
