#pragma once

#include <QValidator>

class QLineEdit;

/// Lets a field take numbers as people type them: full-width characters become plain at once, a decimal comma when the
/// field is left, before anybody else hears of it (make it before any other connection of the field). What is no number
/// then stays and gets a red frame.
class NumberTyping : public QValidator
{
    Q_OBJECT

public:
    /// Owned by the field.
    explicit NumberTyping(QLineEdit *field);

    /// Accepts every text.
    State validate(QString &input, int &position) const override;

private:
    void rewrite();
    void check(bool isFinished);

    QLineEdit *m_field;
};
