// A random user at the panel: types, clicks, drags, zooms and drops files, whole ones and broken ones, for a number of
// seconds. Each round begins a new panel with a seed of its own, which is printed and can be given to have the same
// round again. Ends with 1 when a result without the mark is another one than a calculation of what is set gives.

#include "analysis/model/Staleness.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "tests/PanelTools.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWheelEvent>

#include <cstdio>
#include <cstring>
#include <random>

using namespace paneltools;

namespace
{

constexpr int actionsOfARound = 400;

class RandomUser
{
public:
    RandomUser(const QStringList &files, const QString &directory, quint64 seed)
        : m_random(seed)
        , m_files(files)
        , m_directory(directory)
    {
        m_user.panel.resize(1300, 700);
        m_user.panel.show();
        m_user.panel.askMapFile = [this] {
            return m_directory + "/map.txt";
        };
        m_user.panel.askJobFile = [this] {
            return oneOf(m_files);
        };
        for (QWidget *const control : m_user.panel.findChildren<QWidget *>()) {
            const QString name = control->objectName();
            const bool opensDialog = name == "SelectB" || name == "MenuB";
            if (!opensDialog && !name.startsWith("qt_"))
                m_controls << control;
        }
        for (DispABase *const display : qAsConst(m_user.panel.displays()->dabs))
            m_areas << display->area();
        m_areas << m_user.panel.resultMap()->area() << m_user.panel.dataMap()->area();
    }

    void act()
    {
        const int kind = below(10);
        if (kind < 3)
            click();
        else if (kind < 5)
            type();
        else if (kind < 6)
            drop();
        else if (kind < 9)
            useMouse();
        else
            m_user.panel.resize(200 + below(1500), 100 + below(1000));
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    }

    /// Without a mark, what is shown is what a calculation of what is set gives.
    bool isTrue()
    {
        const Analysis &shown = m_user.panel.analysis();
        const AnalysisInput input = m_user.panel.input();
        if (!shown.run() || !changesSince(*shown.run(), input).isEmpty())
            return true;
        Analysis fresh;
        fresh.runMap(input);
        const ResultRecords &l = shown.results(), &r = fresh.results();
        return l.count() == r.count() && std::memcmp(l.a(), r.a(), l.count() * sizeof(double)) == 0 &&
               std::memcmp(l.t(), r.t(), l.count() * sizeof(double)) == 0;
    }

private:
    int below(int end) { return static_cast<int>(m_random() % static_cast<quint64>(end)); }
    template <class List>
    typename List::value_type oneOf(const List &list)
    {
        return list.at(below(static_cast<int>(list.size())));
    }

    void click()
    {
        if (auto *const button = qobject_cast<QAbstractButton *>(oneOf(m_controls)))
            button->click();
        else if (below(4) == 0)
            m_user.panel.calcBoth();
    }
    void type()
    {
        static const QStringList texts{"",     "0",   "-1",    "2",     "3",       "8345", "8260",   "1e308", "-1e308",
                                       "nan",  "inf", "8,345", "8345,", "x",       "1e-9", "999999", "51",    "0.5",
                                       "8400", "-50", "100",   "7",     "1000000", "2.5",  "8352",   "-0",    "1..2"};
        auto *const field = qobject_cast<QLineEdit *>(oneOf(m_controls));
        if (!field || field->isReadOnly())
            return;
        const bool isName = field->objectName() == "FileName";
        rowtools::type(field, isName ? m_directory + "/written.dat" : oneOf(texts));
    }
    void drop()
    {
        const QVector<QWidget *> targets{m_user.reference(1 + below(4)), m_user.target(), m_user.row(1 + below(8)),
                                         &m_user.panel};
        rowtools::drop(oneOf(targets), QUrl::fromLocalFile(below(30) == 0 ? m_directory : oneOf(m_files)));
    }
    void useMouse()
    {
        QWidget *const area = oneOf(m_areas);
        const auto place = [this, area] {
            return QPoint(below(qMax(1, area->width())), below(qMax(1, area->height())));
        };
        static const QVector<Qt::KeyboardModifiers> modifiers{Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        const Qt::KeyboardModifiers with = oneOf(modifiers);
        const int kind = below(4);
        if (kind == 0) {
            QTest::mouseDClick(area, Qt::LeftButton, with, place());
        } else if (kind == 1) {
            const QPoint at = place();
            QWheelEvent wheel(at, area->mapToGlobal(at), QPoint(), QPoint(0, below(2) ? 120 : -120), Qt::NoButton, with,
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(area, &wheel);
        } else {
            QTest::mousePress(area, Qt::LeftButton, with, place());
            for (int i = below(4); i > 0; --i) {
                QMouseEvent move(QEvent::MouseMove, place(), Qt::NoButton, Qt::LeftButton, with);
                QApplication::sendEvent(area, &move);
            }
            QTest::mouseRelease(area, Qt::LeftButton, with, place());
        }
        area->repaint();
    }

    std::mt19937_64 m_random;
    QStringList m_files;
    QString m_directory;
    User m_user;
    QVector<QWidget *> m_controls, m_areas;
};

/// Copies of a file that end early, have a line twice, or a few other bytes.
QStringList brokenCopies(const QString &path, std::mt19937_64 *random)
{
    const QByteArray whole = tables::bytesOf(path);
    QByteArray cut = whole.left(static_cast<int>((*random)() % static_cast<quint64>(whole.size())));
    QByteArray other = whole;
    for (int i = 0; i < 20; ++i)
        other[static_cast<int>((*random)() % static_cast<quint64>(other.size()))] = static_cast<char>((*random)());
    QStringList paths;
    for (const QByteArray &bytes : {cut, other, QByteArray()}) {
        paths << path + QStringLiteral(".%1").arg(paths.size());
        if (!tables::writeBytes(paths.last(), bytes))
            qFatal("cannot write %s", qPrintable(paths.last()));
    }
    return paths;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false"));
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
    const bool isReplay = argc > 2 && seconds == 0;
    quint64 seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : std::random_device()();
    SampleFiles sample, larger;
    if (!sample.make() || !larger.make(7, 5))
        return 2;
    std::mt19937_64 random(1);
    QStringList files{sample.target(), larger.map(4), sample.path("missing.txt"), sample.path("job.json")};
    for (int i = 1; i <= 8; ++i)
        files << sample.map(i);
    for (int i = 1; i <= 3; ++i)
        files << sample.reference(i);
    files += brokenCopies(sample.map(2), &random) + brokenCopies(sample.reference(2), &random);
    if (!tables::writeBytes(sample.path("job.json"), User().panel.job().toJson()))
        return 2;
    QTimer rejecter; // of what asks
    QObject::connect(&rejecter, &QTimer::timeout, [] {
        if (QWidget *const modal = QApplication::activeModalWidget())
            modal->close();
        if (QWidget *const popup = QApplication::activePopupWidget())
            popup->close();
    });
    rejecter.start(20);

    QElapsedTimer time;
    time.start();
    int rounds = 0;
    do {
        std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
        std::fflush(stdout);
        RandomUser user(files, sample.dir(), seed++);
        for (int action = 0; action < actionsOfARound; ++action) {
            user.act();
            if (action % 20 == 0 && !user.isTrue()) {
                std::printf("action %d: a result without the mark is not that of what is set\n", action);
                return 1;
            }
        }
        ++rounds;
    } while (!isReplay && time.elapsed() < seconds * 1000LL);
    std::printf("%d rounds of %d actions\n", rounds, actionsOfARound);
    return 0;
}
