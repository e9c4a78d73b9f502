#include "analysis/panel/FourPs.h"
#include "app/StartUp.h"

#include <QtTest>

namespace
{

struct Entry {
    QString source, translation;
    bool isUnfinished = false;
};

QVector<Entry> entriesOf(const QString &path)
{
    QVector<Entry> entries;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return entries;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source"))
            entries.append({xml.readElementText(), QString(), false});
        if (xml.name() == QLatin1String("translation")) {
            entries.last().isUnfinished = xml.attributes().hasAttribute(QStringLiteral("type"));
            entries.last().translation = xml.readElementText();
        }
    }
    return entries;
}

QStringList placeholdersOf(const QString &text)
{
    QStringList found;
    auto matches = QRegularExpression(QStringLiteral("%[0-9]")).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured();
    found.sort();
    return found;
}

} // namespace

/// The Japanese catalogue against the texts of the sources.
class TestTranslation : public QObject
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated()
    {
        const QVector<Entry> entries = entriesOf(CATALOGUE);
        QVERIFY(entries.size() > 200);
        for (const Entry &entry : entries) {
            QVERIFY2(!entry.isUnfinished && !entry.translation.isEmpty(), qPrintable(entry.source));
            QVERIFY2(placeholdersOf(entry.source) == placeholdersOf(entry.translation), qPrintable(entry.source));
            QVERIFY2(entry.source.startsWith(' ') == entry.translation.startsWith(' '), qPrintable(entry.source));
        }
    }

    void noTextIsMissing()
    {
        const QString lupdate = QStringLiteral(LUPDATE);
        if (!QFileInfo::exists(lupdate))
            QSKIP("lupdate is not installed");
        QTemporaryDir dir;
        const QString copy = dir.filePath("copy.ts");
        QVERIFY(QFile::copy(CATALOGUE, copy));
        QProcess process;
        process.setWorkingDirectory(QFileInfo(CATALOGUE).path());
        process.start(lupdate, QString(TRANSLATED).split(' ') +
                                   QStringList{"-ts", copy, "-locations", "none", "-no-obsolete", "-silent"});
        QVERIFY(process.waitForFinished(60000));
        for (const Entry &entry : entriesOf(copy))
            QVERIFY2(!entry.isUnfinished, qPrintable(entry.source));
    }

    void panelIsJapanese()
    {
        QTranslator translator;
        installJapanese(&translator);
        FourPs panel;
        QCOMPARE(panel.findChild<QPushButton *>("CalcMapB")->text(), QString::fromUtf8("\xE8\xA8\x88\xE7\xAE\x97"));
        panel.calcMap(); // no V point yet
        const QString messages = panel.findChild<QTextEdit *>("Messages")->toPlainText();
        QVERIFY(messages.startsWith(QString::fromUtf8("V \xE7\x82\xB9")));
    }
};

QTEST_MAIN(TestTranslation)
#include "TestTranslation.moc"
