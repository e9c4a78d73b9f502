#pragma once

#include <QMenu>

class QActionGroup;

/// The menu of a colour bar: the types of colour scale, each with a small picture, and their inversion.
class ColourBarMenu : public QMenu
{
    Q_OBJECT

public:
    explicit ColourBarMenu(QWidget *parent);

    /// Ticks what the bar shows.
    void setChosen(int type, bool inverted);

signals:
    void typeChosen(int type);
    void invertedChosen(bool inverted);

private:
    QActionGroup *m_types;
    QAction *m_inverted;
};
