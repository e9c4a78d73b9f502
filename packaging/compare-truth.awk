# awk -f compare-truth.awk truth.txt four-points.dat: mean error and scatter of the valence over the pixels that hold
# material and only the first two references. Truth lines: x y f1 f2 f3 thickness valence; result lines: x y a valence t.
/^#/ || NF < 5 { next }
FNR == NR { key = $1 + 0 " " $2 + 0; third[key] = $5; thickness[key] = $6; valence[key] = $7; next }
{
    key = $1 + 0 " " $2 + 0
    if (!(key in valence)) { unknown++; next }
    if (thickness[key] < 0.2 || third[key] > 0.001) next
    error = $4 - valence[key]
    n++; sum += error; squares += error * error
    truth += valence[key]; found += $4
}
END {
    if (unknown || !n) { print "the result does not belong to this truth"; exit 1 }
    mean = sum / n
    printf "  pixels compared: %d\n  valence: %.4f found, %.4f true; mean error %.4f, scatter %.4f\n",
        n, found / n, truth / n, mean, sqrt(squares / n - mean * mean)
}
