#pragma once

#include <QFont>
#include <QLineEdit>
#include <QSize>
#include <QString>

/// A field whose text may need more room than the field has. Its text stays whole, for copying and for who reads it;
/// only what is painted is fitted, and only while the field has no keyboard focus. The tool tip then begins with the
/// whole text.
class FittedField : public QLineEdit
{
    Q_OBJECT

public:
    explicit FittedField(QWidget *parent = nullptr);

    /// As narrow as it may be: the owner sets a least width, the layout gives what is free.
    QSize sizeHint() const override;

    /// What is painted for a text that is too long, and in which font.
    struct Fit {
        QString text;
        QFont font;
    };
    /// As painted in the present width without the focus.
    Fit shown() const;

protected:
    /// Fits `text`, which is wider than `width` pixels in the field's own font.
    virtual Fit fitted(const QString &text, int width) const = 0;

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QRect textRect() const;
};
