#pragma once

#include "RowTools.h"
#include "analysis/panel/FourPs.h"
#include "samples/EdgeModel.h"
#include "samples/SampleWriter.h"

#include <QAbstractButton>
#include <QTemporaryDir>
#include <QTextEdit>

/// What the tests of the analysis panel share: a user at the panel, and small sample data for him.
namespace paneltools
{

/// Three references, a target and eight small maps, without noise unless asked for, in a directory of their own.
class SampleFiles
{
public:
    bool make(int width = 6, int height = 4, double noise = 0)
    {
        sample::SampleOptions options;
        options.directory = m_dir.path();
        options.width = width;
        options.height = height;
        options.noise = noise;
        QString error;
        return m_dir.isValid() && sample::writeSample(options, &m_written, &error);
    }
    QString dir() const { return QDir(m_dir.path()).canonicalPath(); }
    QString path(const QString &name) const { return m_dir.filePath(name); }
    QString map(int number) const { return named(QStringLiteral("map%1_").arg(number)); }
    /// There are three; the fourth is the first once more.
    QString reference(int number) const { return named(QStringLiteral("ref%1_").arg((number - 1) % 3 + 1)); }
    QString target() const { return named(QStringLiteral("target")); }

private:
    QString named(const QString &start) const { return m_written.filter('/' + start).value(0); }

    QTemporaryDir m_dir;
    QStringList m_written;
};

/// A user at the panel, who knows every control by its name, or by those of its row and its own: "Energy3/Mut1". Rows
/// count from 1.
class User
{
public:
    template <class Control>
    Control *find(const QString &path)
    {
        QWidget *found = &panel;
        for (const QString &name : path.split('/'))
            found = found ? found->findChild<QWidget *>(name) : nullptr;
        auto *const control = qobject_cast<Control *>(found);
        if (!control)
            qFatal("no control %s", qPrintable(path));
        return control;
    }
    ARefFile *reference(int number) { return find<ARefFile>(QStringLiteral("Ref%1File").arg(number)); }
    AXafsFileSelect *target() { return find<AXafsFileSelect>(QStringLiteral("TargetFS")); }
    AEPoint *row(int number) { return find<AEPoint>(QStringLiteral("Energy%1").arg(number)); }
    QLineEdit *field(const QString &path) { return find<QLineEdit>(path); }
    QString text(const QString &path) { return find<QWidget>(path)->property("text").toString(); }
    QString rowText(int number, const char *name) { return text(QStringLiteral("Energy%1/%2").arg(number).arg(name)); }
    QTextEdit *messageArea() { return find<QTextEdit>(QStringLiteral("Messages")); }

    void click(const QString &path) { find<QAbstractButton>(path)->click(); }
    /// The same button of several rows: tick("136", "UseCB").
    void tick(const QString &rows, const char *name)
    {
        for (const QChar number : rows)
            click(QStringLiteral("Energy%1/%2").arg(number).arg(name));
    }
    void type(const QString &path, const QString &text) { rowtools::type(field(path), text); }
    void typeEnergy(int number, const QString &text) { rowtools::type(row(number)->energyEdit(), text); }
    void load(QWidget *onto, const QString &path) { QVERIFY(rowtools::drop(onto, QUrl::fromLocalFile(path))); }
    /// References that are used are still those that were: they come as from a job.
    void load(const SampleFiles &files, const QString &references, bool withTarget = false, const QString &maps = {})
    {
        for (const QChar number : references)
            reference(number.digitValue())->selector()->choose(files.reference(number.digitValue()));
        if (withTarget)
            load(target(), files.target());
        for (const QChar number : maps)
            load(row(number.digitValue()), files.map(number.digitValue()));
    }
    void choose(const QString &selector, const QStringList &paths)
    {
        emit find<AFileSelect>(selector)->dialog()->filesSelected(paths);
    }
    /// The edge is the user's, whatever the spectra say.
    void keepEdge(const QString &energy)
    {
        click(QStringLiteral("EdgeFixed"));
        type(QStringLiteral("EdgeE"), energy);
    }

    /// Exactly these references are used.
    void useReferences(const QString &numbers)
    {
        for (int i = 1; i <= 4; ++i) {
            if (reference(i)->isUsed() != numbers.contains(QString::number(i)))
                click(QStringLiteral("Ref%1File/UseCB").arg(i));
        }
    }

    /// What the message area holds; it is empty afterwards.
    QString takeMessages()
    {
        const QString text = messageArea()->toPlainText();
        click(QStringLiteral("ClearMessages"));
        return text;
    }
    /// How often the map calculation was run, as told by its first check failing, since the messages were taken last.
    int failedMapRuns() { return takeMessages().split('\n').count(QStringLiteral("V Point is not selected")); }

    FourPs panel;
};

/// A spectrum as the panel should have it after loading `path` with these settings (eV).
inline AMutE spectrumOf(const QString &path, double edge, double pre = -50, double post = 100, double dE = 0)
{
    AMutE spectrum;
    spectrum.setPreEdgeEnd(edge + pre);
    spectrum.setEdgeEnergy(edge);
    spectrum.setPostEdgeStart(edge + post);
    spectrum.setDE(dE);
    if (!spectrum.read(path))
        qFatal("no spectrum %s", qPrintable(path));
    return spectrum;
}

inline QString sixDigits(double value)
{
    return QString::number(value, 'g', 6);
}

/// The value of a spectrum at an energy as a field shows it: mu less a line, empty outside of the spectrum.
inline QString shownValue(const AMutE &spectrum, double energy, bool minusPostLine = false)
{
    double value = 0.0;
    return spectrum.valueMinusLine(energy, minusPostLine, &value) ? sixDigits(value) : QString();
}

} // namespace paneltools
