#include "analysis/panel/PanelSettings.h"

#include "analysis/job/SettingNames.h"
#include "controls/Field.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>

#include <cmath>

namespace
{

/// Those of the panel itself: the rows have their controls in widgets of their own.
template <class Control>
QList<Control *> ownControls(const QWidget *panel)
{
    QList<Control *> controls;
    for (Control *const control : panel->findChildren<Control *>()) {
        const QWidget *parent = control->parentWidget();
        while (parent != panel && !parent->inherits("AFileSelect") && !parent->inherits("ARefFile") &&
               !parent->inherits("AEPoint") && !parent->inherits("DispMBase"))
            parent = parent->parentWidget();
        if (parent == panel)
            controls.append(control);
    }
    return controls;
}

/// Fields say what they count as: a text that is no number counts as 0. "inf" and "nan" have no other form in JSON.
QJsonValue fieldValue(const QLineEdit *field)
{
    const bool isText = field->text().isEmpty() || !std::isfinite(number(field));
    return isText ? QJsonValue(field->text()) : QJsonValue(number(field));
}

} // namespace

PanelSettings::PanelSettings(const QWidget *panel)
    : m_panel(panel)
{
    for (QLineEdit *const field : ownControls<QLineEdit>(panel)) {
        if (!field->isReadOnly())
            m_controls.insert(field->objectName(), field);
    }
    for (QCheckBox *const box : ownControls<QCheckBox>(panel))
        m_controls.insert(box->objectName(), box);
    for (QRadioButton *const button : ownControls<QRadioButton>(panel))
        m_controls.insert(button->objectName(), button);
}

QStringList PanelSettings::mistakes(const QJsonObject &settings) const
{
    return settingMistakes(settings) + groupMistakes(settings);
}

/// A group of radio buttons has one chosen button, whatever the order of the settings.
QStringList PanelSettings::groupMistakes(const QJsonObject &settings) const
{
    QStringList found;
    for (const QButtonGroup *const group : m_panel->findChildren<QButtonGroup *>()) {
        QStringList names, chosen;
        bool isSwitchedOff = false;
        for (const QAbstractButton *const button : group->buttons()) {
            const QJsonValue value = settings.value(button->objectName());
            names << button->objectName();
            if (value == QJsonValue(true))
                chosen << button->objectName();
            isSwitchedOff = isSwitchedOff || (button->isChecked() && value == QJsonValue(false));
        }
        if (chosen.size() > 1)
            found << QStringLiteral("settings: only one of %1 can be true").arg(chosen.join(QLatin1String(", ")));
        else if (chosen.isEmpty() && isSwitchedOff)
            found << QStringLiteral("settings: one of %1 must be true").arg(names.join(QLatin1String(", ")));
    }
    return found;
}

void PanelSettings::apply(const QJsonObject &settings) const
{
    for (const QString &key : settings.keys()) {
        const QJsonValue value = settings.value(key);
        if (auto *const field = qobject_cast<QLineEdit *>(m_controls.value(key))) {
            field->setText(value.isDouble() ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
                                            : value.toString());
            field->setCursorPosition(0);
        } else if (auto *const box = qobject_cast<QCheckBox *>(m_controls.value(key))) {
            box->setChecked(value.toBool());
        } else if (auto *const button = qobject_cast<QRadioButton *>(m_controls.value(key))) {
            if (value.toBool())
                button->setChecked(true);
        }
    }
}

QJsonObject PanelSettings::present() const
{
    QJsonObject settings;
    for (auto it = m_controls.begin(); it != m_controls.end(); ++it) {
        if (const auto *const field = qobject_cast<QLineEdit *>(it.value()))
            settings.insert(it.key(), fieldValue(field));
        else if (const auto *const box = qobject_cast<QCheckBox *>(it.value()))
            settings.insert(it.key(), box->isChecked());
        else if (qobject_cast<QRadioButton *>(it.value())->isChecked())
            settings.insert(it.key(), true);
    }
    return settings;
}
