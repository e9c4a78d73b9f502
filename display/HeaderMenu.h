#pragma once

#include "display/DisplayPicture.h"

#include <QObject>

#include <functional>

class QAction;
class QMenu;
class QWidget;

/// The context menu on the header row of a display: its picture to the clipboard or into a file, and its values as
/// text. Displays add actions of their own to `menu`.
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

    QMenu *const menu; ///< goes with the header

    /// Asks for the name of a picture file, with a proposal; an empty answer is a change of mind.
    std::function<QString(const QString &proposal)> askFileName;
    /// Tells the user one sentence about a failure.
    std::function<void(const QString &text)> showFailure;

private:
    void copyPicture();
    void savePicture();
    void copyValues();
    double pictureScale() const;
    QString askWithDialog(const QString &proposal);

    QWidget *m_header;
    std::function<DisplayPicture()> m_picture;
    std::function<QString()> m_values;
    QAction *m_valuesAction;
};
