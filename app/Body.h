#pragma once

#include "ui_Body.h"

#include <QMainWindow>

#include <memory>

class FourPs;
class ImportDialog;
struct ImportResult;
class PlanPage;

/// The program's window: it holds the one analysis panel.
class Body : public QMainWindow
{
    Q_OBJECT

public:
    explicit Body(QWidget *parent = nullptr);

    ~Body() override;

    FourPs *panel() const { return m_panel; }
    /// The page of the planning; null before it was asked for.
    PlanPage *planPage() const { return m_planPage.get(); }

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

    void showPlanPage();

    Ui_Body ui;
    FourPs *m_panel;
    ImportDialog *m_import = nullptr;     ///< made when first asked for
    std::unique_ptr<PlanPage> m_planPage; ///< a window of its own
};
