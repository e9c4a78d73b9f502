#pragma once

#include "import/ImportFields.h"
#include "import/window/ImportRunner.h"

#include "ui_ImportDialog.h"

#include <QDialog>
#include <QTimer>

#include <functional>

/// Asks what to import and where to, shows what is inside of the files, and imports while the window stays alive. It
/// keeps what was typed for the next time.
class ImportDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ImportDialog(QWidget *parent = nullptr);

    /// Names these files in the place of those before, and proposes a folder beside them.
    void setInputs(const QStringList &images, const QStringList &spectra);
    /// Reference spectra, in the place of those before, with their valences ("2,3").
    void setReferences(const QStringList &paths, const QString &valences);
    bool hasReferences() const;
    /// Where file dialogs open.
    void setDirectory(const QString &directory) { m_directory = directory; }

    /// Ask for files and for a folder, and whether files in a folder may be replaced. An empty answer is a change of
    /// mind.
    std::function<QStringList(const QString &title, bool areSeveral)> askFiles;
    std::function<QString(const QString &title)> askFolder;
    std::function<bool(const QString &folder)> mayReplace;

signals:
    /// All files are in their places.
    void imported(const ImportResult &result);

public slots:
    /// Stops an import that is running; else closes the window.
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    /// Spectra that are dropped on the references become such, all else is imported.
    void dropEvent(QDropEvent *event) override;

private:
    void setUpDialogs();
    void connectButtons();
    ImportFields fields() const;
    void addFiles(QPlainTextEdit *list, const QStringList &paths);
    void chooseInto(QLineEdit *field, const QString &title);
    void showIncident();
    void showInside();
    void start();
    void end();
    void setRunning(bool isRunning);

    Ui_ImportDialog ui;
    QString m_directory;
    QString m_proposed; ///< the folder that was proposed last
    QTimer m_typing;    ///< until the typing pauses
    ImportRunner m_runner;
};
