#pragma once

#include <QObject>
#include <QPointer>

class QLineEdit;

/// A marker line on a graph whose position stands in a line edit.
class MarkLine : public QObject
{
    Q_OBJECT

public:
    /// `kindOfLine` 0 is a vertical marker at an x value, any other a horizontal one at a y value. Without a `field`
    /// the marker makes (and owns) one that is never shown.
    explicit MarkLine(int kindOfLine, QLineEdit *field = nullptr, QObject *parent = nullptr);
    ~MarkLine() override;

    /// The number in the line edit, 0 when it holds none; for a relative marker that is its offset.
    double fieldNumber() const;
    /// Shows a number in the line edit, six significant digits, from its first character on.
    void setNumber(double value);
    bool isVertical() const { return kind == 0; }

    int reserved = 0; ///< for the owner's use
    QPointer<QLineEdit> edit;
    int kind;
    bool relative = false; ///< the number is an offset from the marker baseIndex
    int baseIndex = -1;    ///< within the same MarkLines

private:
    bool m_ownsEdit;
};
