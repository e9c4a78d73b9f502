#pragma once

#include "tests/Tables.h"

#include <QApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <QtTest>

/// What the tests of the rows share: files to choose, and a user's hands.
namespace rowtools
{

inline bool write(const QString &path, const QByteArray &bytes)
{
    return tables::writeBytes(path, bytes);
}

/// Drags URLs over a widget and drops them there; whether they were taken.
inline bool drop(QWidget *onto, const QList<QUrl> &urls)
{
    QMimeData data;
    data.setUrls(urls);
    const QPoint middle = onto->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(onto, &enter);
    QDropEvent event(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(onto, &event);
    return enter.isAccepted() && event.isAccepted();
}

inline bool drop(QWidget *onto, const QUrl &url)
{
    return drop(onto, QList<QUrl>{url});
}

inline QLineEdit *field(QWidget *row, const char *name)
{
    return row->findChild<QLineEdit *>(name);
}

inline void type(QLineEdit *into, const QString &text)
{
    into->selectAll();
    if (text.isEmpty())
        QTest::keyClick(into, Qt::Key_Delete);
    QInputMethodEvent typed; // which knows more than the keys of a keyboard
    typed.setCommitString(text);
    QApplication::sendEvent(into, &typed);
    QTest::keyClick(into, Qt::Key_Return);
}

} // namespace rowtools
