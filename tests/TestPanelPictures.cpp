// What the panel's two maps show of results whose truth is known.

#include "AnalystTools.h"
#include "DisplayHelpers.h"
#include "analysis/drawing/MapDrawing.h"
#include "analysis/panel/RegionsView.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "numeric/RealToInt.h"

using namespace paneltools;

namespace
{

/// A display's drawing area as it is on screen.
QImage shot(DispMBase *map)
{
    return map->area()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The screen position of the middle of a cell.
QPoint middleOf(DispMBase *map, int column, int row)
{
    const ChCoord &cc = map->area()->cc;
    return {numeric::truncToInt(cc.r2sx(column + 0.5)), numeric::truncToInt(cc.r2sy(row + 0.5))};
}

/// That of cell i of a map of 6 columns.
QPoint cellOf(DispMBase *map, int i)
{
    return middleOf(map, i % 6, i / 6);
}

/// What the map shows beside itself while the mouse is over cell i.
QString valueAt(DispMBase *map, int i)
{
    moveTo(map->area(), cellOf(map, i));
    return map->ui.Val->text();
}

} // namespace

class TestPanelPictures : public QObject
{
    Q_OBJECT

    SampleFiles m_files;

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    // --- how far it can be trusted ---

    void standardErrors()
    {
        SampleFiles noisy;
        QVERIFY(noisy.make(12, 8, 40000));
        Analyst user(noisy);
        user.panel.show();
        user.panel.showKind(ResultMapView::Kind::Error);
        const UncertaintyMap &errors = *user.panel.quality().known({});
        QCOMPARE(user.map()->ui.Title->text(), QString("Result map, Valence ±"));
        std::vector<double> sorted(errors.valence.data(), errors.valence.data() + 96);
        std::sort(sorted.begin(), sorted.end());
        QCOMPARE(user.limits(), "0 to " + sixDigits(sorted[93])); // rank 0.98 * 95
        moveTo(user.map()->area(), middleOf(user.map(), 3, 2));
        QCOMPARE(user.map()->ui.Val->text(), sixDigits(errors.valence[27]));
        QCOMPARE(user.text("ResultMap/ValError"), QString());

        user.field("ErrorAbove")->setText(sixDigits((sorted[89] + sorted[90]) / 2));
        QCOMPARE(user.copied(user.map()->headerMenu()).join('\t').count("nan"), 6);
        user.field("ErrorAbove")->setText(QString());
        user.click("MapC1"); // of which there is none
        QCOMPARE(user.map()->ui.Title->text(), QString("Result map, C1"));
        QCOMPARE(user.text("StatusLine"), QString("C1 has no standard error."));
        user.panel.showKind(ResultMapView::Kind::Misfit);
        QCOMPARE(user.map()->ui.Title->text(), QString("Result map, misfit"));
        user.panel.showKind(ResultMapView::Kind::Value);
        user.click("MapValence");
        moveTo(user.map()->area(), middleOf(user.map(), 3, 2));
        QCOMPARE(user.map()->ui.Val->text(), sixDigits(user.results().quantity(ResultPosition::valence)[27]));
        QCOMPARE(user.text("ResultMap/ValError"), "± " + QString::number(errors.valence[27], 'g', 2));
        QCOMPARE(user.limits(), QString("1.5 to 4.5"));
        user.panel.longestQuietMap = 0; // the mouse waits for nothing
        user.click("CalcMapB");
        moveTo(user.map()->area(), middleOf(user.map(), 3, 2));
        QCOMPARE(user.text("ResultMap/ValError"), QString());
    }

    /// Drags with Control, docked and popped out: the map itself neither moves nor hears of anything but the release.
    void regions()
    {
        Analyst user(m_files);
        user.panel.show();
        user.tick("3", "ShowMapB");
        DispArea *const area = user.map()->area();
        const RegionsView &regions = *user.panel.regions();
        shot(user.map());
        const RealRange range = area->shownRange();
        QStringList heard;
        connect(area, &DispArea::mPressed, this, [&heard] { heard << "press"; });
        connect(area, &DispArea::mDragging, this, [&heard] { heard << "drag"; });
        connect(area, &DispArea::mReleased, this, [&heard] { heard << "release"; });
        const auto controlDrag = [&](const QPoint &from, const QPoint &to) {
            drag(area, from, to, Qt::ControlModifier);
        };
        controlDrag(cellOf(user.map(), 8), cellOf(user.map(), 8) + QPoint(2, 2)); // a click
        QVERIFY(regions.regions().empty() && !user.panel.regions()->isVisible());
        controlDrag(cellOf(user.map(), 15), cellOf(user.map(), 8));
        user.click("ResultMap/PopDockB");
        shot(user.map());
        controlDrag(cellOf(user.map(), 23), QPoint(area->width() + 50, -50)); // beyond the corner
        QCOMPARE(heard.join(' '), QString("release release release"));
        QVERIFY(area->shownRange() == range);
        QVERIFY(user.panel.regions()->isVisible());

        const auto corners = [&regions](std::size_t i) {
            const PixelRectangle &r = *regions.regions().at(i).rectangle;
            return QVector<int>{r.x0, r.y0, r.x1, r.y1};
        };
        QCOMPARE(corners(0), (QVector<int>{2, 1, 3, 2}));
        QCOMPARE(corners(1), (QVector<int>{5, 3, 5, 3}));
        for (DispMBase *const map : {user.map(), user.panel.dataMap()}) {
            const ChCoord &cc = map->area()->cc;
            const QImage image = shot(map);
            const QPoint edge(qRound(cc.r2sx(2)), qRound(cc.r2sy(2)));
            bool isOutlined = false;
            for (int dx = -2; dx <= 2; ++dx)
                isOutlined |= image.pixelColor(edge + QPoint(dx, 0)) == resultdrawing::regionColour(0);
            QVERIFY(isOutlined);
        }

        // Its numbers are those of the pixels, also after a change.
        user.panel.longestQuietMap = 1e9;
        QVector<double> means;
        for (const char *const valence : {"2.5", "3.5"}) {
            for (const char *const reference : {"Ref1File/Valence", "Ref2File/Valence"})
                user.type(reference, valence);
            double amount = 0, weighted = 0;
            for (const int i : {8, 9, 14, 15}) {
                amount += user.results().t()[i];
                weighted += user.results().t()[i] * user.results().quantity(ResultPosition::valence)[i];
            }
            QVERIFY(qAbs(regions.statistics()[0].mean - weighted / amount) < 1e-12);
            means << regions.statistics()[0].mean;
        }
        QVERIFY(qAbs(means[0] - means[1]) > 1e-3);
        QVERIFY(regions.spectrumText().count('\n') > sample::mapCount + 3); // points and curve

        user.panel.askThickness = [] {
            return std::optional<double>(0.5);
        };
        const auto choose = [&user](const char *entry) {
            user.chooseInMap(entry);
        };
        choose("Region: above thickness...");
        QVERIFY(regions.statistics()[2].pixels < 24);
        moveTo(area, cellOf(user.map(), 14));
        while (regions.regions().size() < 8)
            choose("Region: this pixel");
        QCOMPARE(corners(3), (QVector<int>{2, 2, 2, 2}));
        choose("Region: this pixel");
        QVERIFY(user.text("StatusLine").startsWith("There are 8 regions already"));
        QCOMPARE(regions.tableText().count('\n'), 9);
        choose("Regions: clear");
        QVERIFY(regions.regions().empty() && regions.outlines().isEmpty());
    }

    // --- colours of the result map ---

    void ownRanges()
    {
        Analyst user(m_files);
        const double jumps = user.jump(1) + user.jump(2) + user.jump(3);
        QVERIFY(qAbs(jumps - 3.28) < 1e-3);
        struct Case {
            const char *name;
            QString range;
        };
        const QString none = "-7 to 7";
        const auto check = [&](const Case &c) {
            for (const QString &quantity : QString(c.name).split(' ')) {
                user.click(quantity == "C1" ? "MapC2" : "MapC1");
                user.map()->setLimits(-7, 7);
                user.click("Map" + quantity);
                QCOMPARE(quantity + ' ' + user.limits(), quantity + ' ' + c.range);
                QCOMPARE(user.panel.selectedNewMap(), c.range != none);
            }
        };
        forEach<Case>(
            {{"Ratio1 Ratio2 Ratio3 Ratio4", "-0.1 to 1.1"},
             {"DMut1 DMut2 DMut3 DMut4 Mut0 Amount", sixDigits(-0.1 * jumps) + " to " + sixDigits(1.1 * jumps)},
             {"Valence", "1.5 to 4.5"},
             {"C1 C2", none}},
            check);
    }

    /// The user's own limits stay until the natural ones become others: the next map would be shown in the colours of
    /// the one before.
    void limitsFollowTheirRange()
    {
        Analyst user(m_files);
        user.panel.show();
        const auto recalculated = [&user](const char *valence) {
            user.type("Ref3File/Valence", valence);
            user.click("CalcMapB");
            shot(user.map());
            return user.limits();
        };
        QCOMPARE(recalculated("4"), QString("1.5 to 4.5"));
        QCOMPARE(recalculated("5"), QString("1.5 to 5.5"));
        user.type("ResultMap/MinV", "2");
        user.type("ResultMap/MaxV", "3");
        QCOMPARE(recalculated("5"), QString("2 to 3"));
        QCOMPARE(recalculated("6"), QString("1.5 to 6.5"));
        user.type("ResultMap/MinV", "2");
        user.click("MapRatio1");
        QCOMPARE(user.limits(), QString("-0.1 to 1.1"));
        QVERIFY(user.map()->ui.Title->text().endsWith("Ratio 1"));
    }

    /// Plain, with Shift and with Control; of the pixels that are shown.
    void doubleClickedLimits()
    {
        SampleFiles larger;
        QVERIFY(larger.make(12, 8));
        Analyst user(larger);
        user.click("MapAmount");
        user.panel.show();
        DispArea *const area = user.map()->area();
        const QString own = user.limits();
        const auto doubleClick = [&](Qt::KeyboardModifiers modifiers, Qt::MouseButton button = Qt::LeftButton) {
            QTest::mouseDClick(area, button, modifiers, area->rect().center());
            shot(user.map()); // drawing leaves them
            return user.limits();
        };
        // The ranges of all values, and of those of the thicker pixels.
        QSet<QString> ranges;
        for (const char *const hidden : {"", "0.5"}) {
            user.field("MaskBelow")->setText(hidden);
            std::vector<double> shown;
            for (int i = 0; i < 96; ++i) {
                if (user.results().t()[i] >= QString(hidden).toDouble() || !*hidden)
                    shown.push_back(user.results().t()[i]);
            }
            std::sort(shown.begin(), shown.end());
            const auto at = [&shown](double fraction) {
                return sixDigits(shown[std::size_t(qRound(fraction * double(shown.size() - 1)))]);
            };
            const QString all = at(0) + " to " + at(1), most = at(0.02) + " to " + at(0.98);
            QCOMPARE(doubleClick(Qt::ShiftModifier), all);
            QCOMPARE(doubleClick(Qt::NoModifier, Qt::RightButton), all);
            QCOMPARE(doubleClick(Qt::NoModifier), own);
            QCOMPARE(doubleClick(Qt::ControlModifier), most);
            doubleClick(Qt::NoModifier);
            emit user.map()->bar()->percentilesWanted();
            shot(user.map());
            QCOMPARE(user.limits(), most);
            ranges << all << most;
        }
        QCOMPARE(ranges.size(), 4);
        user.click("MapDMut2");
        user.click("MapAmount"); // its own range again
        QCOMPARE(user.limits(), own);

        Analyst other(m_files, "TypeFourPs"); // whose limits stay
        for (const Qt::KeyboardModifier modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
            QTest::mouseDClick(other.map()->area(), Qt::LeftButton, modifier, QPoint(100, 100));
            shot(other.map());
            QCOMPARE(other.limits(), QString("1.5 to 3.5"));
        }
        emit other.map()->bar()->percentilesWanted();
        QVERIFY(other.limits() != "1.5 to 3.5");
        DispMBase *const measured = other.panel.dataMap();
        other.click("Energy4/ShowMapB");
        emit measured->bar()->percentilesWanted();
        const double *const values = other.row(4)->data().absorptions().data();
        QCOMPARE(measured->bar()->zmax(), percentileRange(values, 24)->max);
    }

    void proposedPictureName()
    {
        Analyst user(m_files);
        QString proposed;
        user.map()->headerMenu()->askFileName = [&proposed](const QString &name) {
            proposed = name;
            return QString();
        };
        forRows<const char *, const char *>(
            {{"before", "", "Result_map__Valence.png"}, {"result", "/tmp/cell1.a.dat", "cell1.a_Valence.png"}},
            [&](const char *path, const char *name) {
                user.type("SaveFSelect/FileName", path);
                user.map()->headerMenu()->menu->actions().at(1)->trigger();
                QCOMPARE(proposed, QString(name));
            });
    }

    // --- cells of the result map ---

    void cells()
    {
        for (const char *const method : {"TypeNonEquiv", "TypeFourPs"}) {
            Analyst user(m_files, method);
            user.panel.show();
            for (const ResultQuantity &quantity : resultQuantities) {
                user.click(quantity.mapButton);
                const QImage image = shot(user.map());
                for (int i = 0; i < 24; ++i) {
                    const ResultRecord pixel = user.results().record(std::size_t(i));
                    const QMap<int, double> fourPoints{{ResultPosition::ratio, pixel.a},
                                                       {ResultPosition::ratio + 1, 1 - pixel.a},
                                                       {ResultPosition::valence, 3 - pixel.a},
                                                       {ResultPosition::amount, pixel.t}};
                    if (pixel.values.isEmpty() && !fourPoints.contains(quantity.position))
                        continue;
                    const double value = pixel.values.value(quantity.position, fourPoints[quantity.position]);
                    const QColor colour = user.map()->bar()->getColor(value);
                    QVERIFY2(image.pixelColor(cellOf(user.map(), i)) == colour, quantity.mapButton);
                    QVERIFY2(valueAt(user.map(), i) == sixDigits(value), quantity.mapButton);
                }
            }
            moveTo(user.map()->area(), QPointF(1, 1));
            QCOMPARE(user.text("ResultMap/Val"), QString());
        }
    }

    /// The valences are those of the run, whatever became of the references.
    void valencesOfTheRun()
    {
        Analyst user(m_files, "TypeFourPs");
        user.panel.longestQuietMap = 0;
        const auto shown = [&user] {
            user.click("MapAmount");
            user.click("MapValence");
            return user.copied(user.map()->headerMenu());
        };
        const QStringList before = shown();
        QVERIFY(before.size() == 4 && before.first() != QString("0\t0\t0\t0\t0\t0"));
        user.type("Ref1File/Valence", "5");
        QCOMPARE(shown(), before);
        user.click("Ref2File/UseCB"); // nothing can be calculated
        QCOMPARE(shown(), before);
        user.useReferences("");
        QCOMPARE(shown(), before);
    }

    void hiddenPixels()
    {
        Analyst user(m_files);
        user.panel.show();
        QCoreApplication::processEvents(); // every part has its place
        const QImage open = shot(user.map());
        const double *const amounts = user.results().t();
        std::vector<double> sorted(amounts, amounts + 24);
        std::sort(sorted.begin(), sorted.end());
        QVERIFY(sorted[20] - sorted[19] > 1e-3);
        const double limit = (sorted[19] + sorted[20]) / 2; // four pixels stay
        user.field("MaskBelow")->setText(sixDigits(limit));
        const QImage masked = shot(user.map());
        for (int i = 0; i < 24; ++i) {
            const QPoint cell = cellOf(user.map(), i);
            QCOMPARE(masked.pixelColor(cell), amounts[i] < limit ? QColor(215, 215, 215) : open.pixelColor(cell));
        }
        QCOMPARE(user.writeTo(m_files.path("masked.dat")), QString());
        user.field("MaskBelow")->setText(QString());
        QVERIFY(shot(user.map()) == open);
        QCOMPARE(user.writeTo(m_files.path("open.dat")), QString());
        QCOMPARE(bytesOf(m_files.path("masked.dat")), bytesOf(m_files.path("open.dat")));
    }

    // --- data map ---

    void dataMapOfOneRow()
    {
        Analyst user(m_files);
        DispMBase *const map = user.panel.dataMap();
        const auto pressed = [&user] {
            QString rows;
            for (int i = 1; i <= sample::mapCount; ++i)
                rows += user.row(i)->showMapButton()->isChecked() ? QString::number(i) : QString();
            return rows;
        };
        QCOMPARE(pressed(), QString());
        for (const int i : {3, 8}) {
            user.tick(QString::number(i), "ShowMapB");
            QCOMPARE(pressed(), QString::number(i));
            QVERIFY(map->isVisible());
            QCOMPARE(map->ui.Title->text().section(' ', -2), user.row(i)->energyText() + " eV");
            const QImage image = shot(map);
            const double *const values = user.row(i)->data().absorptions().data();
            QCOMPARE(map->ui.MinV->text(), sixDigits(*std::min_element(values, values + 24)));
            QCOMPARE(map->ui.MaxV->text(), sixDigits(*std::max_element(values, values + 24)));
            for (int k = 0; k < 24; ++k) {
                QCOMPARE(image.pixelColor(cellOf(map, k)), map->bar()->getColor(values[k]));
                QCOMPARE(valueAt(map, k), sixDigits(values[k]));
            }
        }
        user.click("Energy8/ShowMapB");
        QCOMPARE(pressed(), QString());
        QCOMPARE(map->ui.Title->text(), QString("Data map"));
    }

    /// Another file and another energy of the row that is shown; a file without all of its lines; none.
    void dataMapFollowsItsRow()
    {
        SampleFiles larger;
        QVERIFY(larger.make(12, 8));
        User user;
        user.panel.show();
        user.load(m_files, "", false, "3");
        DispMBase *const map = user.panel.dataMap();
        user.click("Energy3/ShowMapB");
        shot(map);
        map->chooseLimits({-7, 7});              // the user's own, of this map
        map->area()->cc.setRealArea(1, 1, 2, 2); // and a zoom
        map->area()->scaleFixed = true;
        struct Case {
            const char *name;
            QString path;
            int width, height, records;
        };
        QByteArray lines = bytesOf(m_files.map(5));
        for (int i = 0; i < 8; ++i) // all but the last eight pixels, which do not begin a row
            lines.truncate(lines.trimmed().lastIndexOf('\n') + 1);
        QVERIFY(rowtools::write(m_files.path("short.txt"), lines));
        QVERIFY(rowtools::write(m_files.path("other.txt"), bytesOf(m_files.map(5)).replace("8352.000", "8388.560")));
        const auto check = [&](const Case &c) {
            user.load(user.row(3), c.path);
            const QImage image = shot(map);
            const ChCoord &cc = map->area()->cc;
            QCOMPARE(QRectF(cc.rx0(), cc.ry0(), cc.rx1(), cc.ry1()), QRectF(0, 0, c.width, c.height));
            const double *const values = user.row(3)->data().absorptions().data();
            QCOMPARE(map->ui.MaxV->text(), sixDigits(*std::max_element(values, values + c.records)));
            QCOMPARE(map->ui.Title->text().section(' ', -2), user.row(3)->energyText() + " eV");
            for (int i = 0; c.width == 6 && i < 24; ++i) {
                const bool isThere = i < c.records;
                QCOMPARE(valueAt(map, i), isThere ? sixDigits(values[i]) : QString());
                QCOMPARE(image.pixelColor(cellOf(map, i)),
                         isThere ? map->bar()->getColor(values[i]) : resultdrawing::notFiniteColour);
            }
        };
        forEach<Case>({{"larger", larger.map(4), 12, 8, 96},
                       {"with fewer lines", m_files.path("short.txt"), 6, 4, 16},
                       {"whole", m_files.map(6), 6, 4, 24},
                       {"of the same energy", m_files.path("other.txt"), 6, 4, 24}},
                      check);
        user.typeEnergy(3, "8111");
        QCOMPARE(map->ui.Title->text().section(' ', -2), QString("8111 eV"));
        const QPoint cell = cellOf(map, 8);
        user.click("Energy3/ClearB");
        QCOMPARE(shot(map).pixelColor(cell), QColor(Qt::white));
        user.load(m_files, "", false, "3");
        QVERIFY(shot(map).pixelColor(cell) != QColor(Qt::white));
        user.click("Energy7/ShowMapB"); // has no data
        QCOMPARE(shot(map).pixelColor(cell), QColor(Qt::white));
        QCOMPARE(valueAt(map, 8), QString());
    }
};

QTEST_MAIN(TestPanelPictures)
#include "TestPanelPictures.moc"
