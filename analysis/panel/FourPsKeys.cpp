// What keys do, the manual among it, and where the keyboard goes by itself.

#include "analysis/panel/FourPs.h"
#include "controls/ManualPage.h"

#include <QApplication>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QShortcut>
#include <QUrl>

#include <utility>

void FourPs::connectKeys()
{
    const std::pair<QPushButton *, const char *> keys[] = {
        {ui.CalcMapB, "Ctrl+Return"}, {ui.CalcMapB, "Ctrl+Enter"}, {ui.WriteB, "Ctrl+S"}, {ui.ManualB, "F1"}};
    openPage = [](const QString &page) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(page));
    };
    for (const auto &[button, key] : keys) {
        auto *const shortcut = new QShortcut(QKeySequence(QLatin1String(key)), this);
        connect(shortcut, &QShortcut::activated, this, [this, b = button] { press(b); });
    }
}

/// The field that is being edited is done first, as a click on the button would have it.
void FourPs::press(QPushButton *button)
{
    if (QWidget *const field = QApplication::focusWidget()) {
        field->clearFocus();
        field->setFocus();
    }
    button->click();
}

void FourPs::keyPressEvent(QKeyEvent *event)
{
    auto *const button = qobject_cast<QPushButton *>(QApplication::focusWidget());
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && button && isAncestorOf(button))
        button->click();
    else
        QFrame::keyPressEvent(event);
}

void FourPs::openManual()
{
    //: the folder of the manual in this language
    const QString page = manual::firstPage(QCoreApplication::applicationDirPath(), tr("en"));
    if (page.isEmpty())
        message(tr("The manual is not installed."));
    else if (!openPage(page))
        message(tr("There is no program that opens %1.").arg(page));
}

void FourPs::askForValence(int i)
{
    QLineEdit *const field = m_inputs.references()[i]->valenceEdit();
    field->window()->activateWindow(); // a drop leaves the keyboard to the window that it came from
    field->setFocus();
    field->selectAll();
}

/// Return in a valence goes on to the next one that is missing.
void FourPs::askForNextValence(int i)
{
    for (int next = i + 1; next < m_inputs.references().size(); ++next) {
        const ARefFile *const reference = m_inputs.references()[next];
        if (reference->isUsed() && reference->selector()->valid() && reference->valenceText().isEmpty()) {
            askForValence(next);
            return;
        }
    }
}
