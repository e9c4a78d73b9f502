// Any bytes as a job file: every mistake is a sentence of one line, and a job without one says the same after it was
// written and read again. To be run with ASAN_OPTIONS=detect_leaks=0: Qt's parser leaks what a key held that is given
// again.
#include "analysis/job/Job.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <tuple>

namespace
{

auto asTuple(const Job::Reference &reference)
{
    return std::tie(reference.file, reference.use, reference.valence, reference.dE);
}

auto asTuple(const Job::Energy &energy)
{
    return std::tie(energy.energy, energy.map, energy.use, energy.vPoint, energy.lcf);
}

template <class Entry>
bool areSame(const QVector<Entry> &l, const QVector<Entry> &r)
{
    const auto isSame = [](const Entry &one, const Entry &other) {
        return asTuple(one) == asTuple(other);
    };
    return std::equal(l.begin(), l.end(), r.begin(), r.end(), isSame);
}

bool isSame(const Job &l, const Job &r)
{
    const auto rest = [](const Job &job) {
        return std::tie(job.target.file, job.target.dE, job.settings, job.resultFile, job.qualityFile, job.pictures,
                        job.report, job.lenient, job.hasFractionErrors);
    };
    return areSame(l.references, r.references) && areSame(l.energies, r.energies) && rest(l) == rest(r);
}

[[noreturn]] void fail(const char *what, const QByteArray &text)
{
    std::fprintf(stderr, "%s:\n%s\n", what, text.constData());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const JobOrErrors read = parseJob(text, QStringLiteral("/jobs"));
    for (const QString &error : read.errors) {
        if (error.trimmed().isEmpty() || error.contains(QLatin1Char('\n')))
            fail("no sentence", error.toUtf8());
    }
    if (!read.errors.isEmpty())
        return 0;
    const QByteArray written = read.job.toJson();
    const JobOrErrors again = parseJob(written, QStringLiteral("/elsewhere"));
    if (!again.errors.isEmpty())
        fail(qPrintable(again.errors.first()), written);
    if (!isSame(read.job, again.job))
        fail("changed", written + again.job.toJson());
    return 0;
}
