#pragma once

#include "ui_Body.h"

#include <QMainWindow>

class FourPs;
class ImportDialog;
struct ImportResult;

/// The program's window: it holds the one analysis panel.
class Body : public QMainWindow
{
    Q_OBJECT

public:
    explicit Body(QWidget *parent = nullptr);

    FourPs *panel() const { return m_panel; }

protected:
    /// Closing the window ends the program, whatever other windows are open.
    void closeEvent(QCloseEvent *event) override;
    /// What is dropped beside the panel is for it as well.
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /// Opens the window of the import; false for files of which none can be imported.
    bool offerImport(const QStringList &others, const QStringList &spectra);
    ImportDialog *importDialog();
    void proposeReferences();
    void openImported(const ImportResult &result);

    Ui_Body ui;
    FourPs *m_panel;
    ImportDialog *m_import = nullptr; ///< made when first asked for
};
