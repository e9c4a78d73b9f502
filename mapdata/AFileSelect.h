#pragma once

#include "ui_AFileSelect.h"

#include <QFileDialog>
#include <QFrame>
#include <QString>
#include <QStringList>

#include <functional>

class QMimeData;

/// The control through which the user names a file: shows the name, opens a file dialog, takes a dropped file and
/// announces every choice. Reads existing files (mode Read) or names a file to write (mode Write).
class AFileSelect : public QFrame
{
    Q_OBJECT

public:
    enum Mode { Read = 0, Write = 1 };

    explicit AFileSelect(QWidget *parent = nullptr);

    /// Read or Write; any other number changes nothing.
    void setMode(int mode);
    int mode() const { return m_mode; }
    /// Whether several files can be chosen at once for reading. Off at first.
    void setMultiple(bool multiple);
    /// The suffix (no dot) that names of files to write get when theirs differs; empty for none. At first "dat".
    void setDefaultSuffix(const QString &suffix);

    /// Acts as if the user had chosen the file: shows its name, which gets the default suffix in write mode, and
    /// announces it. A row that loads what is chosen loads it.
    void choose(const QString &path);
    /// The same for a choice of the user's own, in the dialog or by a drop: isChosenByHand() holds while it is
    /// announced.
    void chooseByHand(const QString &path);
    bool isChosenByHand() const { return m_isChosenByHand; }
    /// Asks whether the existing file `path` may be replaced. Set by whoever wants no message box.
    using Question = std::function<bool(const QString &path)>;
    void setOverwriteQuestion(const Question &question) { m_mayReplace = question; }

    /// The text of the file name field: the path of a single file, in write mode as the user left it.
    QString fileText() const;
    /// Shows a path without choosing it; nothing is announced.
    void setFileText(const QString &text);
    QLineEdit *pathEdit() const { return ui.FileName; }
    /// The last component of the path chosen last; empty after clearing.
    QString fileName() const { return m_fileName; }
    /// The directory used last.
    QString dir() const { return m_dir; }

    /// The energy shift as typed, eV.
    QString dEText() const;
    void setDEText(const QString &text);

    /// Information about the file; as a warning in a colour that warns.
    void setExInfo(const QString &text, bool isWarning = false);
    QString exInfo() const;
    /// Titles above the fields, for the first row of a list; the columns are as wide without them. On at first.
    void showTitles(bool areShown);
    /// The line of the information keeps its place while there is none.
    void keepInfoLine();
    /// No titles, and the information behind the buttons, always. At first it stands below them while there is some.
    void setSingleLine();

    /// The title of the dialog, which says what is chosen. At first it says that a file is.
    void setDialogTitle(const QString &title);
    /// The dialog behind the "Sel." button. In write mode it asks before it takes an existing file: the one that will
    /// be written, suffix included. Refused, it stays open. Made when first asked for: making one takes milliseconds,
    /// and closing one writes to the user's settings.
    QFileDialog *dialog();

    /// The paths of the dropped URLs, percent signs decoded; without those that are no local files.
    static QStringList droppedPaths(const QMimeData &data);
    /// That of the first URL; empty when it is no local file.
    static QString droppedPath(const QMimeData &data);
    /// The path of a drop of one thing that is no folder; empty for any other drop. A row takes no more than this for
    /// its selector and leaves the rest to what it stands in.
    static QString droppedFile(const QMimeData &data);

signals:
    void newDir(const QString &dir);
    void newFilePath(const QString &path);
    void newFilePaths(const QStringList &paths);
    void selectedFile();
    void newDE();

public slots:
    void newFiles(const QStringList &paths);
    void clearFileName();
    void selectingFile(const QString &path);
    /// What choose() does; hidden in rows that load what is chosen.
    void newFile(const QString &path);
    /// The directory in which the dialog opens next; nothing is announced.
    void setDir(const QString &dir);
    void showDE(bool f);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QString withSuffix(const QString &path) const;
    bool mayWrite(const QString &path) const;
    void receiveDialogFile(const QString &path);
    void updateDialogMode();
    void rememberDirOf(const QString &path);

    Ui_AFileSelect ui;
    int m_mode = Read;
    bool m_multiple = false;
    bool m_keepsInfo = false;
    bool m_isChosenByHand = false;
    QString m_dialogTitle;
    QString m_dir;
    QString m_fileName;
    QString m_suffix = QStringLiteral("dat");
    QFileDialog *m_dialog = nullptr;
    Question m_mayReplace;
};
