#include "analysis/job/SettingNames.h"

#include "analysis/job/JobReader.h"
#include "analysis/job/JsonScan.h"

#include <QFile>
#include <QMap>
#include <QXmlStreamReader>

#include <cmath>

void initialiseFormResource() // outside of all namespaces, as the macro wants it
{
    Q_INIT_RESOURCE(settings);
}

namespace
{

constexpr int mostHistogramBoxes = 1000000;

/// Names, and whether they are fields.
using Settings = QMap<QString, bool>;

/// Reads the rest of a property: whether it says that its field only shows something.
bool isReadOnly(QXmlStreamReader *xml)
{
    const bool isMeant = xml->attributes().value(QLatin1String("name")) == QLatin1String("readOnly");
    QString value;
    while (!(xml->isEndElement() && xml->name() == QLatin1String("property")) && !xml->atEnd()) {
        xml->readNext();
        value += xml->text();
    }
    return isMeant && value.trimmed() == QLatin1String("true");
}

/// From the form itself: a control that is added to it is a setting at once.
Settings readForm()
{
    initialiseFormResource();
    Settings settings;
    QFile form(QStringLiteral(":/forms/FourPs.ui"));
    if (!form.open(QIODevice::ReadOnly))
        return settings;
    QXmlStreamReader xml(&form);
    QString last; // the widget whose properties are being read
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("property")) {
            if (isReadOnly(&xml))
                settings.remove(last);
        } else if (xml.name() == QLatin1String("widget")) {
            const QString type = xml.attributes().value(QLatin1String("class")).toString();
            last = xml.attributes().value(QLatin1String("name")).toString();
            const bool isField = type == QLatin1String("QLineEdit");
            if (isField || type == QLatin1String("QCheckBox") || type == QLatin1String("QRadioButton"))
                settings.insert(last, isField);
        }
    }
    return settings;
}

const Settings &knownSettings()
{
    static const Settings settings = readForm();
    return settings;
}

/// A histogram of one box has no width, a part of one is cut off, and no more than these are made.
bool isNumberOfBoxes(double boxes)
{
    return boxes >= 2.0 && boxes <= mostHistogramBoxes && boxes == std::floor(boxes);
}

} // namespace

QStringList settingNames()
{
    return knownSettings().keys();
}

QStringList settingMistakes(const QJsonObject &settings)
{
    QStringList found;
    for (const QString &key : settings.keys()) {
        const QString name = keyWithin(QStringLiteral("settings"), key);
        const QJsonValue value = settings.value(key);
        bool isNumber = value.isDouble();
        if (value.isString())
            value.toString().toDouble(&isNumber);
        const auto known = knownSettings().find(key);
        if (known == knownSettings().end())
            found << unknownKey(name, key, settingNames());
        else if (known.value() && !isNumber && value != QJsonValue(QString()))
            found << name + QLatin1String(" must be a number");
        else if ((key == QLatin1String("HgABoxes") || key == QLatin1String("HgTBoxes")) &&
                 !isNumberOfBoxes(value.toVariant().toDouble()))
            found << QStringLiteral("%1 must be a whole number from 2 to %2").arg(name).arg(mostHistogramBoxes);
        else if (!known.value() && !value.isBool())
            found << name + QLatin1String(" must be true or false");
    }
    return found;
}
