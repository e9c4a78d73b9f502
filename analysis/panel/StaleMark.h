#pragma once

#include <QString>
#include <QStringList>

class QAbstractButton;

/// The mark on a button that what it calculated does not belong any more to what is set; the button's tool tip says
/// what has changed.
class StaleMark
{
public:
    explicit StaleMark(QAbstractButton *button);

    /// Shows what has changed; without changes the mark goes.
    void show(const QStringList &changes);

private:
    QAbstractButton *m_button;
    QString m_toolTip; ///< of the button without the mark
    QStringList m_changes;
};
