#include "samples/SampleTexts.h"

#include "mapdata/MapText.h"
#include "samples/NumberText.h"
#include "samples/Random.h"
#include "spectrum/SpectrumText.h"

namespace sample
{

namespace
{

QByteArray fixed(double value, int decimals)
{
    QByteArray text;
    appendFixed(&text, value, decimals);
    return text;
}

double targetMu(const EdgeModel &model, double energyEv)
{
    const double ratio = edgeEnergy / energyEv;
    double mu = 0.10 + 0.25 * ratio * ratio * ratio; // a Victoreen background of its own
    for (int j = 0; j < referenceCount; ++j)
        mu += targetThickness * targetFractions[j] * model.normalized(j, energyEv);
    return mu;
}

QByteArray energyText(int k)
{
    return fixed(mapEnergies[k], 3);
}

QByteArray jobReferences(Method method)
{
    QByteArray text = "  \"references\": [\n";
    const int used = method == Method::FourPoints ? 2 : referenceCount;
    for (int j = 0; j < used; ++j) {
        text += "    {\"file\": \"" + referenceFileName(j) +
                "\", \"use\": true, \"valence\": " + fixed(valences[j], 0) + ", \"dE\": 0}";
        text += j + 1 < used ? ",\n" : "\n";
    }
    return text + "  ],\n";
}

QByteArray jobEnergies(Method method)
{
    QByteArray text = "  \"energies\": [\n";
    for (int k = 0; k < mapCount; ++k) {
        const bool use = method == Method::NonEquivalent || k == vPoint || isAnchor[k];
        const double energy = mapEnergies[k];
        const bool lcf = energy > edgeEnergy + preEdgeEnd && energy < edgeEnergy + postEdgeStart;
        text += "    {\"energy\": " + fixed(energy, 2) + ", \"map\": \"" + mapFileName(k) +
                "\", \"use\": " + (use ? "true" : "false") + ", \"vPoint\": " + (k == vPoint ? "true" : "false") +
                ", \"lcf\": " + (lcf ? "true" : "false") + "}";
        text += k + 1 < mapCount ? ",\n" : "\n";
    }
    return text + "  ],\n";
}

} // namespace

QByteArray referenceFileName(int j)
{
    return "ref" + fixed(j + 1, 0) + "_valence" + fixed(valences[j], 0) + ".dat";
}

QByteArray targetFileName()
{
    return "target.dat";
}

QByteArray mapFileName(int k)
{
    return "map" + fixed(k + 1, 0) + "_" + energyText(k) + "eV.txt";
}

QByteArray spectrumText(const EdgeModel &model, int j, const SampleOptions &options)
{
    constexpr double incident = 1.0e6;         // counts of the ion chamber at the start of the scan
    constexpr double photonsPerPixel = 5000.0; // the whole beam counts as much as this many pixels of a map
    const bool isTarget = j == referenceCount;
    const auto &scan = model.scan();
    const double photons = options.noise * photonsPerPixel;
    Random random(options.seed, 100 + static_cast<std::uint64_t>(j));

    SpectrumHead head;
    head.titles << " Step scan, made by flokluk-sample"
                << (isTarget ? QByteArray("target, mixture of the references")
                             : "reference of valence " + fixed(valences[j], 0));
    head.spacing = fixed(latticeSpacing, 5);
    head.firstAngle = fixed(scan.front().angleDegrees, 5);
    head.method = "Transmission";
    head.points = static_cast<int>(scan.size());
    QByteArray text = spectrumHead(head);
    for (std::size_t i = 0; i < scan.size(); ++i) {
        const double energy = scan[i].energyEv;
        const double mu = isTarget ? targetMu(model, energy) : model.mu(j, energy);
        const double drift = 1.0 - 0.08 * static_cast<double>(i) / static_cast<double>(scan.size());
        double i0 = incident * drift;
        double transmitted = i0 * portable::exp(-mu);
        if (options.noise > 0.0) {
            i0 = random.counts(photons * drift) * (incident / photons);
            transmitted = random.counts(photons * drift * portable::exp(-mu)) * (incident / photons);
        }
        appendFixed(&text, scan[i].angleDegrees, angleDecimals, 12);
        appendFixed(&text, scan[i].angleDegrees, angleDecimals, 13);
        text += "    1.00";
        appendFixed(&text, i0, 4, 16);
        appendFixed(&text, transmitted, 4, 16);
        text += '\n';
    }
    return text;
}

QByteArray mapHeader(int k, const SampleOptions &options)
{
    if (options.format == MapFormat::ColumnMapped)
        return columnMapHeader(energyText(k), {"time", "I0", "I"});
    const auto axis = [](const char *name, int count) -> MapAxisText {
        return {name, "um", "0.00", fixed(pixelPitch, 2), count};
    };
    return plainMapHeader(energyText(k), axis("x", options.width), axis("y", options.height));
}

QByteArray truthHeader(const SampleOptions &options)
{
    QByteArray text = "# What the sample truly is. Columns: x y f1 f2 f3 thickness valence\n"
                      "# x, y: position, um. f1, f2, f3: fractions of the references 1, 2, 3 in units of edge jump.\n"
                      "# thickness: total edge jump. valence: mean valence f1*2 + f2*3 + f3*4. Where there is no\n"
                      "# element all are 0. Absorption of a pixel at energy E:\n"
                      "#   ln(I0/I) = thickness * sum of fj * (mu_j(E) - pre_j(E)) / jump_j + mu0 + k * E\n"
                      "# with pre_j the reference's pre-edge line and mu0, k a background of the pixel's own.\n";
    text += "# size " + QByteArray::number(options.width) + " x " + QByteArray::number(options.height) + ", seed " +
            QByteArray::number(options.seed) + ", incident counts per pixel " + fixed(options.noise, 0) +
            " (0: no noise)\n";
    text += "# edge energy " + fixed(edgeEnergy, 1) + " eV, pre-edge line below " + fixed(edgeEnergy + preEdgeEnd, 1) +
            " eV, post-edge line above " + fixed(edgeEnergy + postEdgeStart, 1) + " eV\n";
    text += "# edge jumps of the references:";
    for (double jump : edgeJumps)
        text += " " + fixed(jump, 3);
    double targetValence = 0.0;
    text += "\n# target: fractions";
    for (int j = 0; j < referenceCount; ++j) {
        text += " " + fixed(targetFractions[j], 3);
        targetValence += targetFractions[j] * valences[j];
    }
    text += ", thickness " + fixed(targetThickness, 3) + ", valence " + fixed(targetValence, 3) + "\n";
    text += "# The four-points method knows references 1 and 2 only. Pixels with f3 = 0 follow its model: a = f1.\n"
            "# Where f3 > 0 the mean valence still comes out within about 0.02, with a = 3 - valence: the V point is\n"
            "# an energy at which the normalised references are evenly spaced.\n";
    return text;
}

QByteArray jobText(Method method)
{
    const bool fourPoints = method == Method::FourPoints;
    QByteArray text = "{\n" + jobReferences(method);
    text += "  \"target\": {\"file\": \"" + targetFileName() + "\", \"dE\": 0},\n";
    text += jobEnergies(method);
    text += "  \"settings\": {\n    \"EdgeE\": " + fixed(edgeEnergy, 0) +
            ",\n    \"PreEEndDE\": " + fixed(preEdgeEnd, 0) + ",\n    \"PostEStartDE\": " + fixed(postEdgeStart, 0) +
            ",\n";
    text +=
        fourPoints ? "    \"TypeTMKisLS\": true,\n" : "    \"TypeNonEquiv\": true,\n    \"NonEquivBGLinear\": true,\n";
    text += "    \"SubPreEforRef\": true,\n    \"SubPreEforTarget\": true,\n    \"MaskBelow\": 0.2\n  },\n";
    const QByteArray name = fourPoints ? "four-points" : "non-equivalent";
    text += "  \"output\": {\"result\": \"" + name + ".dat\", \"pictures\": \"pictures\", \"report\": \"" + name +
            "-report.json\"}\n}\n";
    return text;
}

} // namespace sample
