#pragma once

#include <QStringList>

class QTranslator;

/// Whether the interface is Japanese: it is unless "-e" is the last of the switches "-j" and "-e" among the arguments
/// (the program's name first). Anything else is ignored.
bool wantsJapanese(const QStringList &arguments);

/// Loads the Japanese catalogue that the program carries and installs it. Without it the interface stays English.
void installJapanese(QTranslator *translator);

/// The same for Qt's own texts (dialogs, context menus), where the Qt installation has its Japanese catalogue.
void installJapaneseForQt(QTranslator *translator);
