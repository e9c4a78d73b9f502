#pragma once

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

class QWidget;

/// The settings of the panel, by the object names of its controls: a number for a field, true or false for a check box
/// or a radio button. Fields that only show something and the controls of the reference and energy rows do not belong
/// to them.
class PanelSettings
{
public:
    explicit PanelSettings(const QWidget *panel);

    QStringList names() const { return m_controls.keys(); }

    /// One sentence per mistake: a name that does not exist, a value of the wrong type, choices that contradict each
    /// other. A field takes a number, as text too, or an empty text.
    QStringList mistakes(const QJsonObject &settings) const;

    /// Sets what mistakes() finds nothing wrong with; the order in the object does not matter. Fields announce nothing.
    void apply(const QJsonObject &settings) const;

    /// The present state: every field, every check box, and the chosen one of each group of radio buttons.
    QJsonObject present() const;

private:
    QStringList groupMistakes(const QJsonObject &settings) const;

    const QWidget *m_panel;
    QMap<QString, QWidget *> m_controls;
};
