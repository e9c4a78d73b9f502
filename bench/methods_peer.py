"""Peer of the method measurement: the same maps through numpy.

methods_peer.py CONDITIONS COUNTS OUT reads the conditions (JSON) and the counts (per energy I0, then I, as 16-bit
integers), runs every method with one and with all threads and prints one line per method and number of threads:
the best times in ms with the logarithm ln(I0 / I) included, with the absorptions at hand, with the logarithm of the
form one would write first, and of the standard errors and the misfit. OUT gets, per method, two columns of results and
those of sigma_V, sigma_t and, where there are residuals, the misfit, as doubles in the order of the methods.

numpy's fastest form works in blocks of 16384 pixels and keeps its temporaries: that stays in the cache. Threads share
the blocks; numpy lets go of the interpreter lock. The form written first takes the whole map at once.
"""
import json
import os
import sys
import time
from concurrent.futures import ThreadPoolExecutor

try:
    import numpy as np
except ImportError:
    sys.exit(3)

BLOCK = 1 << 14
conditions = json.load(open(sys.argv[1]))
pixels, rounds = conditions["pixels"], conditions["rounds"]
energies = np.array(conditions["energies"])
counts = np.fromfile(sys.argv[2], dtype=np.uint16).reshape(len(energies), 2, pixels)
incident = counts[:, 0].astype(float)
transmitted = counts[:, 1].astype(float)
del counts
absorption = np.log(incident / transmitted)
result = np.zeros((13, pixels))


def non_equivalent(method):
    """The pseudo-inverse times all pixels, then fractions, amounts, valence and t: the same quantities."""
    columns = np.array(method["columns"])
    length = 12398.424360387684 / energies
    ones = np.ones_like(energies)
    background = [ones, length**3, length**4] if method["victoreen"] else [ones, energies]
    inverse = np.linalg.pinv(np.vstack([columns, background]).T)
    jumps = np.array(method["jumps"])
    weights = (jumps / jumps.sum())[:, None]
    m, valences, total = len(jumps), np.array(method["valences"]), jumps.sum()

    def solve(part, y, keep):
        out = result[:, part]
        c = np.matmul(inverse, y, out=keep("c", len(inverse), y))
        s = keep("s", 1, y)[0]
        c[:m] *= weights
        np.add.reduce(c[:m], axis=0, out=s)
        np.divide(c[:m], s, out=out[:m])
        np.multiply(s, total, out=out[12])
        np.multiply(out[:m], out[12], out=out[4 : 4 + m])
        out[8 : 8 + len(background)] = c[m:]
        np.matmul(valences, out[:m], out=out[11])

    return solve, (11, 12)


def fraction(x4, a4, b4, l4, c2, r):
    u = c2 * (1 / (1 + r))
    w = u * r
    return ((l4 - x4) * u + b4) * w / (b4 * w - a4 * u)


def three_points(method):
    a, b = np.array(method["a"]), np.array(method["b"])
    height_a, height_b = (a[2] - a[0]) / (a[1] - a[0]), (b[2] - b[0]) / (b[1] - b[0])
    scale_a, scale_t = 1 / (height_a - height_b), 2 / ((b[1] - b[0]) + (a[1] - a[0]))

    def solve(part, y, keep):
        step = y[1] - y[0]
        np.multiply(step, scale_t, out=result[1, part])
        np.subtract(y[2], y[0], out=result[0, part])
        result[0, part] /= step
        result[0, part] -= height_b
        result[0, part] *= scale_a

    return solve, (0, 1)


def exact(method):
    a, b, e = (np.array(method[name]) for name in ("a", "b", "e"))
    s = a[:3] + b[:3]
    curvature = np.array([e[2] - e[1], e[0] - e[2], e[1] - e[0]])
    d = curvature @ s
    # The background line at the V point is linear in the three absorptions: one product gives it and C(X).
    slope = np.array([s[1] - s[2], s[2] - s[0], s[0] - s[1]]) / d
    intercept = -np.array([e[2] * s[1] - e[1] * s[2], e[0] * s[2] - e[2] * s[0], e[1] * s[0] - e[0] * s[1]]) / d
    rows = np.vstack([curvature / d, intercept + slope * e[3]])

    def solve(part, y, keep):
        inverse_q, line = np.matmul(rows, y[:3], out=keep("rows", 2, y))
        np.multiply(inverse_q, 2, out=result[1, part])
        result[0, part] = fraction(y[3], a[3], b[3], line, 1 / inverse_q, method["r"])

    return solve, (0, 1)


def least_squares(method):
    """The regression on X after the constant and E are projected out: no system to solve per pixel."""
    a, b, e = (np.array(method[name]) for name in ("a", "b", "e"))
    s = a[:-1] + b[:-1]
    base = np.vstack([np.ones(len(s)), e[:-1] - e[:-1].mean()]).T
    hat = np.linalg.pinv(base)
    project = np.eye(len(s)) - base @ hat
    at_v = np.array([1, e[-1] - e[:-1].mean()]) @ hat  # the fitted line's value at the V point
    rows = np.vstack([project, s @ project, at_v])
    line_s = at_v @ s

    def solve(part, y, keep):
        x = y[:-1]
        products = np.matmul(rows, x, out=keep("rows", len(rows), y))
        c2 = products[-2] / np.einsum("ij,ij->j", x, products[:-2])
        np.divide(2, c2, out=result[1, part])
        result[0, part] = fraction(y[-1], a[-1], b[-1], products[-1] - line_s / c2, c2, method["r"])

    return solve, (0, 1)


CHI_SQUARE_MEDIANS = {1: 0.45493642, 2: 1.38629436, 3: 2.36597388, 4: 3.35669398, 5: 4.35146019}


def complement(design):
    """An orthonormal basis of what the columns of `design` cannot describe."""
    return np.linalg.svd(design, full_matrices=True)[0][:, design.shape[1] :]


def error_constants(method):
    """Rows of t = B y and t q = A y (q: V, or a times `factor`), the complement N, and the position of q and t in
    `result`."""
    if method["kind"] == "neq":
        columns, jumps, valences = (np.array(method[name]) for name in ("columns", "jumps", "valences"))
        x = (energies - energies.mean()) / energies.mean()
        background = [np.ones_like(x), x]
        if method["victoreen"]:
            background = [np.ones_like(x), (1 + x) ** -3.0 - 1, (1 + x) ** -4.0 - 1]
        design = np.vstack([columns, background]).T
        inverse = np.linalg.pinv(design)[: len(jumps)]
        return dict(amount=jumps @ inverse, row=(jumps * valences) @ inverse, factor=1.0, n=complement(design),
                    value=11, t=12)
    a, b, e, valences = (np.array(method[name]) for name in ("a", "b", "e", "valences"))
    found = dict(factor=valences[0] - valences[1], value=0, t=1, n=np.zeros((len(e), 0)))
    if method["kind"] == "three":
        height_a, height_b = (a[2] - a[0]) / (a[1] - a[0]), (b[2] - b[0]) / (b[1] - b[0])
        step = np.array([-1.0, 1.0, 0.0]) * 2 / (b[1] - b[0] + a[1] - a[0])
        height = np.array([-1.0, 0.0, 1.0]) * 2 / (b[1] - b[0] + a[1] - a[0])
        return dict(found, amount=step, row=(height - height_b * step) / (height_a - height_b))
    s, r = a[:-1] + b[:-1], method["r"]
    base = np.vstack([np.ones(len(s)), e[:-1] - e[-1]]).T
    at_v = np.linalg.pinv(base)[0]
    left = s - base @ (np.linalg.pinv(base) @ s)
    k, g = r / (r * b[-1] - a[-1]), 2 / (1 + r)
    found["amount"] = np.append(2 * left / (left @ left), 0.0)
    found["row"] = k * g * np.append(at_v, -1.0)
    found["offset"] = k * (b[-1] - g * (at_v @ s) / 2)
    if method["kind"] == "least squares":
        found["n"] = np.vstack([complement(np.column_stack([base, s])), np.zeros(len(s) - 3)])
        found["norm"] = 8 / (left @ left)
    return found


def find_errors(method, constants, errors, threads, pool):
    """sigma_V, sigma_t and misfit of the whole map into the rows of `errors`."""
    points, n = method["points"], constants["n"]
    degrees, t_all, value_all = n.shape[1], result[constants["t"]], result[constants["value"]]
    pairs = [(i, j) for i in range(degrees) for j in range(i + 1)]
    products = np.array([n[:, i] * n[:, j] for i, j in pairs])

    def solve(part):
        y = absorption[points, part]
        s = 1 / transmitted[points, part]
        s += 1 / incident[points, part]
        t, value = t_all[part], value_all[part]
        gradient = constants["amount"][:, None]
        if degrees:
            z = n.T @ y
            m = dict(zip(pairs, products @ s))
            if "norm" in constants:
                direct = constants["amount"] @ y
                gradient = gradient * (2 - t / direct) + (n @ z) * (constants["norm"] / direct)
            chi = 0.0
            for j in range(degrees):
                chi = chi + z[j] * z[j] / m[j, j]
                for i in range(j + 1, degrees):
                    low = m[i, j] / m[j, j]
                    z[i] -= low * z[j]
                    for h in range(j + 1, i + 1):
                        m[i, h] -= low * m[h, j]
            errors[2, part] = chi
        np.einsum("ik,ik,ik->k", np.broadcast_to(gradient, y.shape), np.broadcast_to(gradient, y.shape), s,
                  out=errors[1, part])
        w = (constants.get("offset", 0.0) - value) * gradient
        w += constants["row"][:, None]
        w *= w
        w *= s
        np.add.reduce(w, axis=0, out=errors[0, part])
        errors[0, part] *= constants["factor"] ** 2
        errors[0, part] /= t * t
        if not degrees:
            np.sqrt(errors[:2, part], out=errors[:2, part])

    blocks = [slice(first, min(first + BLOCK, pixels)) for first in range(0, pixels, BLOCK)]
    list(map(solve, blocks) if threads == 1 else pool.map(solve, blocks))
    if degrees:
        squares, middle = errors[2], CHI_SQUARE_MEDIANS[degrees]
        rough = np.median(squares[: 1 << 16]) / middle
        material = t_all > 3 * np.sqrt(rough * errors[1])
        gamma = np.median(squares[material]) / middle

        def scale(part):
            errors[:2, part] *= gamma
            np.sqrt(errors[:2, part], out=errors[:2, part])
            errors[2, part] /= gamma * degrees

        list(map(scale, blocks) if threads == 1 else pool.map(scale, blocks))


def best_error_time(method, errors, threads, pool):
    constants = error_constants(method)
    best = float("inf")
    for _ in range(rounds):
        start = time.perf_counter()
        find_errors(method, constants, errors, threads, pool)
        best = min(best, time.perf_counter() - start)
    return best * 1e3


def run(solve, points, with_logarithm, part, size):
    buffer = np.empty((len(points), size))
    kept = {}

    def keep(name, rows, like):
        if name not in kept:
            kept[name] = np.empty((rows, size))
        return kept[name][:, : like.shape[1]]

    for first in range(part.start, part.stop, size):
        block = slice(first, min(first + size, part.stop))
        y = buffer[:, : block.stop - block.start]
        for row, point in zip(y, points):
            if with_logarithm:
                np.divide(incident[point, block], transmitted[point, block], out=row)
            else:
                row[:] = absorption[point, block]
        if with_logarithm:
            np.log(y, out=y)
        solve(block, y, keep)


def best_time(solve, points, with_logarithm, threads, pool, size=BLOCK):
    cuts = [pixels // BLOCK * i // threads * BLOCK for i in range(threads)] + [pixels]
    parts = [slice(*cut) for cut in zip(cuts, cuts[1:])]
    best = float("inf")
    for _ in range(rounds):
        start = time.perf_counter()
        if threads == 1:
            run(solve, points, with_logarithm, parts[0], size)
        else:
            list(pool.map(lambda part: run(solve, points, with_logarithm, part, size), parts))
        best = min(best, time.perf_counter() - start)
    return best * 1e3


kinds = {"neq": non_equivalent, "three": three_points, "exact": exact, "least squares": least_squares}
errors = np.zeros((3, pixels))
with open(sys.argv[3], "wb") as out:
    for threads in (1, os.cpu_count()):
        with ThreadPoolExecutor(threads) as pool:
            for method in conditions["methods"]:
                solve, columns = kinds[method["kind"]](method)
                points = method["points"]
                times = [best_time(solve, points, logarithm, threads, pool) for logarithm in (True, False)]
                times.append(best_time(solve, points, True, threads, pool, pixels))
                times.append(best_error_time(method, errors, threads, pool))
                print(*(f"{ms:.3f}" for ms in times), flush=True)
                if threads == 1:
                    for column in columns:
                        result[column].tofile(out)
                    errors[: 2 + (error_constants(method)["n"].shape[1] > 0)].tofile(out)
