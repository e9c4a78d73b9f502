#include "app/StartUp.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

bool wantsJapanese(const QStringList &arguments)
{
    bool japanese = true;
    for (const QString &argument : arguments.mid(1)) {
        if (argument == QLatin1String("-j"))
            japanese = true;
        else if (argument == QLatin1String("-e"))
            japanese = false;
    }
    return japanese;
}

void installJapanese(QTranslator *translator)
{
    // A null suffix, not an empty one: only then does Qt add ".qm".
    (void)translator->load(QStringLiteral(":zelt_ja_JP"), QCoreApplication::applicationDirPath(), QString(), QString());
    QCoreApplication::installTranslator(translator);
}

void installJapaneseForQt(QTranslator *translator)
{
    if (translator->load(QStringLiteral("qtbase_ja"), QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}
