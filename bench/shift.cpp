// Whether the energy shift of maps is found as well as its error says: the sample maker's maps with known shifts, 100
// repetitions each. Fails where fewer than 90 of them lie within two of their errors.
#include "analysis/shift/MapShift.h"
#include "bench/ShiftedMaps.h"

#include <cmath>
#include <cstdio>

int main()
{
    constexpr int repetitions = 100, least = 90;
    bool good = true;
    std::printf("  counts  pixels  shift  found within 2 errors  cannot be told   mean found  scatter  mean error\n");
    for (const double counts : {2000.0, 40000.0}) {
        for (const double shift : {-1.0, -0.3, 0.1, 0.5, 1.5}) {
            int within = 0, refused = 0;
            double sum = 0.0, squares = 0.0, errors = 0.0;
            constexpr int width = 48, height = 36;
            for (int i = 0; i < repetitions; ++i) {
                const ShiftedSample maps(width, height, counts, shift, static_cast<std::uint64_t>(i) + 1);
                const EnergyShift found = findMapShift(maps.input());
                refused += !found.isFound();
                within += found.isFound() && std::abs(found.shift - shift) <= 2.0 * found.error;
                sum += found.shift / repetitions;
                squares += found.shift * found.shift / repetitions;
                errors += found.error / repetitions;
            }
            std::printf("%8.0f %7d %6.1f %22d %15d %12.4f %8.4f %11.4f\n", counts, width * height, shift, within,
                        refused, sum, std::sqrt(std::max(0.0, squares - sum * sum)), errors);
            good = good && within >= least;
        }
    }
    std::printf(good ? "\nall within bounds\n" : "\nOUT OF BOUNDS\n");
    return good ? 0 : 1;
}
