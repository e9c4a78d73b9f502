# awk -f compare-truth.awk truth.txt result.dat: how far a result is from the truth, over the pixels that hold material.
# Truth lines: x y f1 f2 f3 thickness valence. Result lines of the four-points method: x y a valence t, compared where
# only the first two references are; of the non-equivalent method with all quantities: x y, four fractions, four
# amounts, three coefficients, valence, t.
/^#/ || NF < 5 { next }
FNR == NR { key = $1 + 0 " " $2 + 0; for (i = 1; i <= 5; i++) truth[key, i] = $(i + 2); next }
{
    key = $1 + 0 " " $2 + 0
    if (!((key, 1) in truth)) { unknown++; next }
    two = NF == 5
    if (truth[key, 4] < 0.2 || (two && truth[key, 3] > 0.001)) next
    found = two ? $4 : $14
    error = found - truth[key, 5]
    n++; sum += error; squares += error * error; mean += truth[key, 5]; mean_found += found
    for (j = 1; j <= (two ? 1 : 3); j++) {
        off = $(j + 2) - truth[key, j]
        fractions++; fraction_sum += off; fraction_squares += off * off
    }
}
END {
    if (unknown || !n) { print "the result does not belong to this truth"; exit 1 }
    printf "  pixels compared: %d\n", n
    printf "  valence:   %.4f found, %.4f true; mean error %+.4f, scatter %.4f\n",
        mean_found / n, mean / n, sum / n, sqrt(squares / n - (sum / n) ^ 2)
    printf "  fractions: mean error %+.4f, scatter %.4f\n",
        fraction_sum / fractions, sqrt(fraction_squares / fractions - (fraction_sum / fractions) ^ 2)
}
