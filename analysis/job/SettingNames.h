#pragma once

#include <QJsonObject>
#include <QStringList>

/// The settings that a job may have: the fields that can be typed into, the check boxes and the radio buttons of the
/// panel's form, by their object names, sorted.
QStringList settingNames();

/// One sentence per name that is no setting and per value of the wrong type. A field takes a number, as text too, or an
/// empty text; all else true or false.
QStringList settingMistakes(const QJsonObject &settings);
