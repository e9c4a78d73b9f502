#include "controls/ManualPage.h"

#include <QDir>
#include <QFileInfo>

namespace
{

/// From the folder of the program; %1 is the language. A build has bin/ beside docs/ and lies in build/PRESET.
constexpr const char *places[] = {"../share/doc/flokluk/html/%1/index.html", "../docs/manual/html/%1/index.html",
                                  "../../../docs/manual/%1/index.md"};

} // namespace

QString manual::firstPage(const QString &programDir, const QString &language)
{
    for (const char *const place : places) {
        for (const QString &wanted : {language, QStringLiteral("en")}) {
            const QFileInfo page(QDir(programDir).filePath(QString::fromLatin1(place).arg(wanted)));
            if (page.isFile())
                return page.canonicalFilePath();
        }
    }
    return {};
}
