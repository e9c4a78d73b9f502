#pragma once

#include <QString>
#include <QWidget>

#include <array>

/// A red frame upon a control, whose tool tip begins with the reason.
class FieldMark : public QWidget
{
    Q_OBJECT

public:
    /// Who has a reason: what stands in the field, or what the analysis finds there.
    enum class Why { Text, Finding };

    /// Marks a control; an empty reason takes this mark away.
    static void set(QWidget *control, Why why, const QString &reason);
    /// All reasons for which a control is marked, one a line; empty without a mark.
    static QString reasons(const QWidget *control);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    explicit FieldMark(QWidget *control);
    static FieldMark *of(const QWidget *control);
    QString text() const;

    std::array<QString, 2> m_reasons; ///< by Why
};
