#pragma once

#include "display/DisplayPicture.h"

#include <QObject>

#include <functional>

class QAction;
class QMenu;
class QWidget;

/// The menu of a display, by a button at the end of its header row and by a right click on the row: its picture to the
/// clipboard or into a file, its values as text, and what the mouse does. Others add actions of their own with add().
class HeaderMenu : public QObject
{
    Q_OBJECT

public:
    /// `picture` gives the display's picture at the moment of use.
    HeaderMenu(QWidget *header, std::function<DisplayPicture()> picture, QObject *parent);

    /// What "Copy picture" and "Save picture..." show.
    DisplayPicture picture() const { return m_picture(); }

    /// Who gives the plotted values as tab-separated text; an empty function switches "Copy values" off.
    void setValues(std::function<QString()> values);
    /// Takes "Copy values" out of the menu, for displays that have other means.
    void hideValues();

    /// One more action, before "How to...".
    QAction *add(const QString &text);

    /// Where the dialogs of all displays open next.
    static void setDirectory(const QString &directory);

    QMenu *const menu; ///< goes with the header

    /// What a picture file is named, without suffix; an empty function or answer: after the title.
    std::function<QString()> proposedName;

    /// Asks for the name of a picture file, with a proposal; an empty answer is a change of mind.
    std::function<QString(const QString &proposal)> askFileName;
    /// Tells the user one sentence about a failure.
    std::function<void(const QString &text)> showFailure;

signals:
    /// The values are on the clipboard.
    void copiedValues();

private:
    void addButton();
    void showHowTo();
    void copyPicture();
    void savePicture();
    void copyValues();
    QString askWithDialog(const QString &proposal);

    QWidget *m_header;
    std::function<DisplayPicture()> m_picture;
    std::function<QString()> m_values;
    QAction *m_valuesAction;
    QAction *m_howToAction;
};
