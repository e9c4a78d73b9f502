// What the panel calculates from a sample whose truth is known, and what it writes.

#include "AnalystTools.h"
#include "analysis/results/ResultQuantities.h"

using namespace paneltools;

namespace
{

/// One number of a result file.
QString padded(double value)
{
    return QString("%1").arg(value, 10, 'g', 6);
}

} // namespace

class TestPanelResults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void nonEquivalentMap();
    void nonEquivalentTarget();
    void fourPointsMap();
    void fourPointsTarget();
    void linearCombination();
    void tooLargeMap_data();
    void tooLargeMap();

    void writtenFourPoints();
    void writtenNonEquivalent();
    void writtenSelections_data();
    void writtenSelections();
    void writtenWithoutResult();
    void writtenSilentlyAgain();
    void failingWrites();
    void calculateAndWrite();
    void mapsSavedAsText();
    void scatterCopied();

private:
    SampleFiles m_files;
    QVector<TruePixel> m_truth;
};

void TestPanelResults::initTestCase()
{
    QVERIFY(m_files.make());
    m_truth = readTruth(m_files.path("truth.txt"));
    QCOMPARE(m_truth.size(), 24);
    // Pixels of every kind: without the element, of two references, of three.
    const auto count = [this](const std::function<bool(const TruePixel &)> &isSo) {
        return std::count_if(m_truth.cbegin(), m_truth.cend(), isSo);
    };
    QVERIFY(count([](const TruePixel &p) { return p.thickness == 0; }) > 0);
    QVERIFY(count([](const TruePixel &p) { return p.thickness > 0.1 && p.fractions[2] == 0; }) > 4);
    QVERIFY(count([](const TruePixel &p) { return p.thickness > 0.1 && p.fractions[2] > 0; }) > 0);
}

// --- numbers ---

void TestPanelResults::nonEquivalentMap()
{
    Analyst user(m_files);
    const ResultRecords &results = user.results();
    QCOMPARE(results.method(), ResultRecords::Method::NonEquivalent);
    QCOMPARE(results.count(), std::size_t(m_truth.size()));
    const auto isNear = [](double found, double truth) {
        return qAbs(found - truth) < 1e-5;
    };
    for (int i = 0; i < m_truth.size(); ++i) {
        const TruePixel &truth = m_truth.at(i);
        const ResultRecord found = results.record(std::size_t(i));
        QCOMPARE(found.x, truth.x);
        QCOMPARE(found.y, truth.y);
        QVERIFY2(isNear(found.t, truth.thickness), qPrintable(QString("t %1").arg(i)));
        QCOMPARE(found.values.at(ResultPosition::amount), found.t);
        QCOMPARE(found.values.at(ResultPosition::ratio + 3), 0.0);
        if (truth.thickness < 0.1) // without the element there are no fractions
            continue;
        for (int j = 0; j < 3; ++j) {
            QVERIFY(isNear(found.values.at(ResultPosition::ratio + j), truth.fractions[j]));
            QVERIFY(isNear(found.values.at(ResultPosition::dMut + j), truth.fractions[j] * truth.thickness));
        }
        QVERIFY(isNear(found.values.at(ResultPosition::valence), truth.valence));
    }
}

void TestPanelResults::nonEquivalentTarget()
{
    Analyst user(m_files);
    user.panel.calcTarget();
    QCOMPARE(user.takeMessages(), QString("Result of NEQ :: 0.350 : 0.500 : 0.150, Valence = 2.800, t = 0.900\n"));
    const auto shows = [](QLineEdit *field, double expected) {
        const double value = field->text().toDouble();
        return qAbs(value - expected) < 1e-5 && sixDigits(value) == field->text() && field->cursorPosition() == 0;
    };
    for (int j = 0; j < 3; ++j) {
        const double fraction = sample::targetFractions[j];
        QVERIFY(shows(user.reference(j + 1)->findChild<QLineEdit *>("RatioDisp"), fraction));
        QVERIFY(shows(user.reference(j + 1)->findChild<QLineEdit *>("AmountDisp"), fraction * sample::targetThickness));
    }
    QVERIFY(shows(user.field("TargetDMut"), sample::targetThickness));
    QCOMPARE(user.ratio(4) + user.amount(4), QString());
    // Only the four-points method's target enters the comparison: it was found before the method was changed.
    QVERIFY2(qAbs(user.panel.analysis().fourPointsTarget()->result.a - 0.2) < 0.1,
             qPrintable(QString::number(user.panel.analysis().fourPointsTarget()->result.a)));
}

void TestPanelResults::fourPointsMap()
{
    Analyst user(m_files, "TypeFourPs");
    const ResultRecords &results = user.results();
    QCOMPARE(results.method(), ResultRecords::Method::FourPoints);
    QCOMPARE(results.count(), std::size_t(m_truth.size()));
    const double meanJump = (sample::edgeJumps[0] + sample::edgeJumps[1]) / 2;
    for (int i = 0; i < m_truth.size(); ++i) {
        const TruePixel &truth = m_truth.at(i);
        if (truth.thickness < 0.1 || truth.fractions[2] > 0)
            continue;
        const ResultRecord found = results.record(std::size_t(i));
        QVERIFY2(qAbs(found.a - truth.fractions[0]) < 1e-2, qPrintable(QString::number(found.a)));
        QVERIFY2(qAbs(found.t * meanJump - truth.thickness) < 1e-2, qPrintable(QString::number(found.t)));
        QVERIFY(found.values.isEmpty());
    }
}

void TestPanelResults::fourPointsTarget()
{
    Analyst user(m_files, "TypeFourPs");
    user.panel.calcTarget();
    const double a = user.panel.analysis().fourPointsTarget()->result.a;
    // The target holds some of the third reference: its valence comes out within about 0.02.
    QVERIFY2(qAbs(user.panel.analysis().fourPointsTarget()->valence - 2.8) < 0.03, qPrintable(QString::number(a)));
    QCOMPARE(user.panel.analysis().fourPointsTarget()->valence, 2 * a + 3 * (1 - a));
    const QString message = user.takeMessages();
    const QString start =
        QString("4ps2: a = %1, Valence = %2, t/ts = ").arg(a).arg(user.panel.analysis().fourPointsTarget()->valence);
    QVERIFY2(message.startsWith(start), qPrintable(message));
    const double meanJump = (sample::edgeJumps[0] + sample::edgeJumps[1]) / 2;
    QVERIFY(qAbs(message.mid(start.size()).toDouble() * meanJump - sample::targetThickness) < 0.02);

    for (int i : {3, 4})
        user.clickIn(user.row(i), "LCFCB");
    const int before = user.comparisons().size();
    user.click("LCFB");
    const QStringList fields = user.comparisons().value(before).split('\t');
    QCOMPARE(fields.value(0), sixDigits(user.panel.analysis().fourPointsTarget()->valence));
    QCOMPARE(fields.value(2), sixDigits(a));
}

void TestPanelResults::linearCombination()
{
    Analyst user(m_files);
    for (int i : {2, 6})
        user.clickIn(user.row(i), "LCFCB");
    auto *const text = user.find<QLineEdit>("LCFRes");
    auto *const quality = user.find<QLabel>("LCFQuality");
    QCOMPARE(user.comparisons().size(), 1); // the titles
    user.takeMessages();
    user.click("LCFB");
    const QString number("([ -]\\d\\.\\d{3})");
    const QRegularExpression pattern(QString("^Result of LCF :: %1 : %1 : %1, Valence = %1, Base = %1$").arg(number));
    const QRegularExpressionMatch match = pattern.match(text->text());
    QVERIFY2(match.hasMatch(), qPrintable(text->text()));
    // The spectra's oscillations make their post-edge lines differ a little.
    const double expected[] = {sample::targetFractions[0], sample::targetFractions[1], sample::targetFractions[2], 2.8,
                               0};
    for (int i = 0; i < 5; ++i)
        QVERIFY2(qAbs(match.captured(i + 1).toDouble() - expected[i]) < 0.02, qPrintable(match.captured(i + 1)));
    QVERIFY(text->text().contains("::  0.3")); // as wide as a negative number
    QCOMPARE(user.takeMessages(), text->text().simplified() + '\n');
    QCOMPARE(text->cursorPosition(), 0);
    QVERIFY(text->isReadOnly());
    QVERIFY(QRegularExpression("^R = [-+.e\\d]+, \\d+ points$").match(quality->text()).hasMatch());
    QVERIFY(!quality->toolTip().isEmpty());

    user.useReferences("12"); // recalculates: another fit, another point
    QCOMPARE(text->text().count(" : "), 1);
    const QStringList points = user.comparisons();
    user.click("LCFB");
    QCOMPARE(user.comparisons().size(), points.size() + 1);
    QCOMPARE(user.comparisons().mid(0, points.size()), points);
}

void TestPanelResults::tooLargeMap_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::newRow("four points") << QByteArray("TypeFourPs");
    QTest::newRow("non-equivalent") << QByteArray("TypeNonEquiv");
}

void TestPanelResults::tooLargeMap()
{
    QFETCH(QByteArray, method);
    Analyst user(m_files, method);
    const ResultRecord before = user.results().record(7);
    QByteArray large = bytesOf(m_files.map(method == "TypeFourPs" ? sample::vPoint + 1 : 1));
    large.replace("um 0.00 0.50 5", "um 0.00 0.50 19999").replace("um 0.00 0.50 3", "um 0.00 0.50 19999");
    QVERIFY(rowtools::write(m_files.path("large.txt"), large));
    user.load(user.row(method == "TypeFourPs" ? sample::vPoint + 1 : 1), m_files.path("large.txt"));
    user.takeMessages();
    user.click("CalcMapB");
    QCOMPARE(user.takeMessages(), QString("The map of 20000 x 20000 pixels is too large.\n"));
    QCOMPARE(user.results().count(), std::size_t(24));
    QCOMPARE(user.results().width(), 6);
    QCOMPARE(user.results().height(), 4);
    QCOMPARE(user.results().record(7).a, before.a);
    QCOMPARE(user.results().record(7).values, before.values);
}

// --- files ---

void TestPanelResults::writtenFourPoints()
{
    Analyst user(m_files, "TypeFourPs");
    const QString path = m_files.path("four.points.dat");
    QCOMPARE(user.writeTo(path), QString());
    // Header lines are those of the map of the first row used.
    QString expected = QString::fromLatin1(sample::mapHeader(0, {QString(), 6, 4, 1, 0})) + '\n';
    for (int i = 0; i < 24; ++i) {
        const ResultRecord pixel = user.results().record(std::size_t(i));
        expected += ' ' + padded(pixel.x) + ' ' + padded(pixel.y) + "    " + padded(pixel.a) + ' ' +
                    padded(pixel.a * 2 + (1 - pixel.a) * 3) + ' ' + padded(pixel.t) + '\n';
        if (i % 6 == 5)
            expected += '\n';
    }
    QCOMPARE(QString::fromLatin1(bytesOf(path)), expected);
    const QString info = user.find<AFileSelect>("SaveFSelect")->findChild<QLabel *>("ExInfo")->text();
    QVERIFY2(QRegularExpression("\\d\\d:\\d\\d:\\d\\d").match(info).hasMatch(), qPrintable(info));
    for (const char *const name : {"four.points.dat", "_HGAlpha", "_HGThick"})
        QVERIFY(info.contains(name));

    const QList<QByteArray> alpha = bytesOf(m_files.path("four.points_HGAlpha.dat")).split('\n');
    const QList<QByteArray> thick = bytesOf(m_files.path("four.points_HGThick.dat")).split('\n');
    QCOMPARE(alpha.size(), 51 + 2 + 1); // after the last line feed there is nothing
    QCOMPARE(thick.size(), 51 + 2 + 1);
    // Valences from 1.5 to 3.5 in 51 boxes, the first and last centred on the ends.
    QVERIFY(alpha.at(0).startsWith("1.44 1.46 1.48  "));
    QVERIFY(alpha.at(1).startsWith("1.48 1.5 1.52  "));
    QVERIFY(alpha.at(52).startsWith("3.52 3.54 3.56  "));
    for (const QList<QByteArray> &lines : {alpha, thick}) {
        int sum = 0;
        for (const QByteArray &line : lines)
            sum += line.split(' ').last().toInt();
        QCOMPARE(sum, 24);
    }
}

void TestPanelResults::writtenNonEquivalent()
{
    Analyst user(m_files);
    const QString path = m_files.path("neq.dat");
    QCOMPARE(user.writeTo(path), QString());
    QString expected = QString::fromLatin1(sample::mapHeader(0, {QString(), 6, 4, 1, 0})) + '\n';
    for (int i = 0; i < 24; ++i) {
        const ResultRecord pixel = user.results().record(std::size_t(i));
        expected += ' ' + padded(pixel.x) + ' ' + padded(pixel.y);
        for (const double value : pixel.values)
            expected += ' ' + padded(value);
        expected += QLatin1String(i % 6 == 5 ? "\n\n" : "\n");
    }
    QCOMPARE(QString::fromLatin1(bytesOf(path)), expected);
    QVERIFY(QFile::exists(m_files.path("neq_HGAlpha.dat")) && QFile::exists(m_files.path("neq_HGThick.dat")));
}

void TestPanelResults::writtenSelections_data()
{
    QTest::addColumn<int>("position"); // of the only quantity recorded; none for -1
    QTest::newRow("none") << -1;
    for (const ResultQuantity &quantity : resultQuantities)
        QTest::newRow(quantity.recordBox) << quantity.position;
}

void TestPanelResults::writtenSelections()
{
    QFETCH(int, position);
    Analyst user(m_files);
    for (const ResultQuantity &quantity : resultQuantities)
        user.find<QAbstractButton>(quantity.recordBox)->setChecked(quantity.position == position);
    const QString path = m_files.path("selection.dat");
    QCOMPARE(user.writeTo(path), QString());
    const ResultRecord pixel = user.results().record(15);
    QString expected = ' ' + padded(pixel.x) + ' ' + padded(pixel.y);
    if (position >= 0)
        expected += ' ' + padded(pixel.values.at(position));
    // Four header lines, an empty one, two map rows of six and an empty line each, then the fourth pixel.
    QCOMPARE(QString::fromLatin1(bytesOf(path).split('\n').value(4 + 1 + 2 * 7 + 3)), expected);
}

void TestPanelResults::writtenWithoutResult()
{
    User user;
    const QString path = m_files.path("nothing");
    rowtools::type(user.find<AFileSelect>("SaveFSelect")->findChild<QLineEdit *>("FileName"), path);
    user.click("WriteB");
    QCOMPARE(bytesOf(path), QByteArray("\n"));
    QCOMPARE(user.takeMessages(), QString());
    // A dot stands before the suffix even if there is none.
    QVERIFY(QFile::exists(path + "_HGAlpha.") && QFile::exists(path + "_HGThick."));
}

void TestPanelResults::writtenSilentlyAgain()
{
    Analyst user(m_files, "TypeFourPs");
    const QString path = m_files.path("again.dat");
    QVERIFY(rowtools::write(path, QByteArray(100000, 'x')));
    QVERIFY(rowtools::write(m_files.path("again_HGThick.dat"), QByteArray(100000, 'x')));
    QCOMPARE(user.writeTo(path), QString());
    const QByteArray first = bytesOf(path);
    QVERIFY(!first.contains("xxx"));
    QVERIFY(!bytesOf(m_files.path("again_HGThick.dat")).contains('x'));
    QCOMPARE(user.writeTo(path), QString());
    QCOMPARE(bytesOf(path), first);
}

void TestPanelResults::failingWrites()
{
    Analyst user(m_files);
    auto *const info = user.find<AFileSelect>("SaveFSelect")->findChild<QLabel *>("ExInfo");
    QCOMPARE(user.writeTo(m_files.path("fine.dat")), QString());
    QVERIFY(!info->text().isEmpty());
    const QString missing = m_files.path("missing/result.dat");
    QCOMPARE(user.writeTo(missing), "Can't open the file [" + missing + "]\n");
    QCOMPARE(info->text(), QString());
    QVERIFY(!QFileInfo(m_files.path("missing")).exists());
    QCOMPARE(user.writeTo(QString()), QString("Can't open the file []\n"));

    // A result that cannot be opened does not keep the histograms from being written.
    QVERIFY(QDir(m_files.dir()).mkdir("folder.dat"));
    const QString folder = m_files.path("folder.dat");
    QCOMPARE(user.writeTo(folder), "Can't open the file [" + folder + "]\n");
    QCOMPARE(bytesOf(m_files.path("folder_HGAlpha.dat")).split('\n').size(), 54);
    QVERIFY(QFile::exists(m_files.path("folder_HGThick.dat")));

    if (!QFile::exists("/dev/full"))
        QSKIP("no device that is always full");
    const QString full = m_files.path("full.dat");
    QVERIFY(QFile::link("/dev/full", full));
    QCOMPARE(user.writeTo(full), "Can't write the file [" + full + "]\n");
    QCOMPARE(info->text(), QString());
    QVERIFY(QFileInfo(full).isSymLink());
}

void TestPanelResults::calculateAndWrite()
{
    Analyst user(m_files);
    const QString path = m_files.path("both.dat");
    QCOMPARE(user.writeTo(path), QString());
    const QByteArray before = bytesOf(path);
    user.reference(1)->valenceEdit()->setText("5");
    user.click("WriteB"); // the results are as they were
    QCOMPARE(bytesOf(path), before);
    user.click("CalcWriteB");
    QVERIFY(bytesOf(path) != before);
}

void TestPanelResults::mapsSavedAsText()
{
    Analyst user(m_files);
    QString answer;
    user.panel.askMapFile = [&answer] {
        return answer;
    };
    const auto saveTo = [&](DispMBase *map, const QString &path) {
        answer = path;
        map->headerMenu()->menu->actions().last()->trigger();
        return user.takeMessages();
    };
    QByteArray expected;
    for (int i = 0; i < 24; ++i)
        expected += sixDigits(user.results().record(std::size_t(i)).values.at(ResultPosition::valence)).toLatin1() +
                    (i % 6 == 5 ? '\n' : ' ');
    const QString path = m_files.path("map.txt");
    QVERIFY(rowtools::write(path, QByteArray(10000, 'x')));
    QCOMPARE(saveTo(user.map(), path), QString());
    QCOMPARE(bytesOf(path), expected);
    QCOMPARE(saveTo(user.map(), QString()), QString()); // a change of mind

    user.clickIn(user.row(4), "ShowMapB");
    QCOMPARE(saveTo(user.panel.dataMap(), path), QString());
    QVERIFY(bytesOf(path).startsWith(sixDigits(user.row(4)->data().absorptions().data()[0]).toLatin1() + ' '));
    const QString missing = m_files.path("missing/map.txt");
    QCOMPARE(saveTo(user.map(), missing), "Can't open the file [" + missing + "]\n");
}

void TestPanelResults::scatterCopied()
{
    Analyst user(m_files, "TypeFourPs");
    HeaderMenu *const menu = user.panel.displays()->dabs[Displays::M2M3]->headerMenu();
    const QStringList lines = user.copied(menu);
    QCOMPARE(lines.size(), 1 + 24);
    QCOMPARE(lines.first(), QString("M2\tM3"));
    const auto absorption = [&user](int row, int pixel) {
        return user.row(row)->data().absorptions().data()[pixel];
    };
    for (const int pixel : {0, 23}) { // the anchor points are the rows 1 and 2 first
        const double p = absorption(1, pixel);
        QCOMPARE(lines.at(1 + pixel),
                 sixDigits(absorption(2, pixel) - p) + '\t' + sixDigits(absorption(sample::vPoint + 1, pixel) - p));
    }
    user.clickIn(user.row(sample::vPoint + 1), "VPointCB");
    QCOMPARE(user.copied(menu), QStringList("M2\tM3")); // nothing is drawn, either
}

QTEST_MAIN(TestPanelResults)
#include "TestPanelResults.moc"
