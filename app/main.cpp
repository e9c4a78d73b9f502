#include "app/Body.h"
#include "app/StartUp.h"
#include "numeric/TemporaryName.h"

#include <QApplication>
#include <QTranslator>

int main(int argc, char *argv[])
{
    numeric::prepareForSignals();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QTranslator ofQt;
    QTranslator translator;
    if (wantsJapanese(QCoreApplication::arguments())) {
        installJapaneseForQt(&ofQt);
        installJapanese(&translator);
    }
    Body body;
    body.show();
    return QApplication::exec();
}
