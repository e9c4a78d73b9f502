#include "app/Body.h"

#include "analysis/panel/FourPs.h"
#include "controls/ScreenRoom.h"
#include "import/window/ImportDialog.h"
#include "mapdata/AFileSelect.h"
#include "plan/window/PlanPage.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>

Body::Body(QWidget *parent)
    : QMainWindow(parent)
{
    ui.setupUi(this);
    setWindowTitle(QStringLiteral("flokluk")); // a name, the same in every language
    setAcceptDrops(true);
    m_panel = new FourPs;
    ui.bodyLayout->addWidget(m_panel);
    m_panel->importFiles = [this](const QStringList &others, const QStringList &spectra) {
        return offerImport(others, spectra);
    };
    m_panel->planEnergies = [this] {
        showPlanPage();
    };
    resize(size().expandedTo(sizeHint()).boundedTo(screenroom::largestWindow(this)));
}

Body::~Body() = default;

void Body::showPlanPage()
{
    if (!m_planPage) {
        m_planPage.reset(new PlanPage([this] { return m_panel->input(); }, [this] { return m_panel->emptyRows(); }));
        connect(m_planPage.get(), &PlanPage::wanted, m_panel, &FourPs::useEnergies);
        m_planPage->move(pos() + QPoint(30, 30));
    }
    screenroom::keepOnScreen(m_planPage.get());
    m_planPage->show();
    m_planPage->raise();
    m_planPage->activateWindow();
}

void Body::closeEvent(QCloseEvent *event)
{
    QMainWindow::closeEvent(event);
    if (event->isAccepted())
        QApplication::quit();
}

void Body::dragEnterEvent(QDragEnterEvent *event)
{
    if (!AFileSelect::droppedPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void Body::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    m_panel->receiveDroppedFiles(AFileSelect::droppedPaths(*event->mimeData()));
}

ImportDialog *Body::importDialog()
{
    if (m_import == nullptr) {
        m_import = new ImportDialog(this);
        connect(m_import, &ImportDialog::imported, this, &Body::openImported);
    }
    return m_import;
}

/// Those of the panel.
void Body::proposeReferences()
{
    QStringList references, valences;
    for (const Job::Reference &reference : m_panel->job().references) {
        if (reference.use && !reference.file.isEmpty()) {
            references << reference.file;
            valences << QString::number(reference.valence);
        }
    }
    importDialog()->setReferences(references, valences.join(QLatin1Char(',')));
}

bool Body::offerImport(const QStringList &others, const QStringList &spectra)
{
    const ImportableFiles files = importableOf(others);
    if (!others.isEmpty() && files.images.isEmpty() && files.spectra.isEmpty())
        return false;
    ImportDialog *const dialog = importDialog();
    if (dialog->isVisible())
        return true;
    if (!dialog->hasReferences())
        proposeReferences();
    dialog->setDirectory(m_panel->directory());
    if (!others.isEmpty())
        dialog->setInputs(files.images, files.spectra + spectra);
    dialog->open();
    return true;
}

/// Images come with a job for all of it; spectra alone take empty places beside what is there.
void Body::openImported(const ImportResult &result)
{
    const QDir folder(result.directory);
    if (result.energies > 0) {
        m_panel->loadConditions(result.job);
    } else {
        QStringList spectra;
        for (const QString &file : result.files) {
            if (!file.endsWith(QLatin1String(".json")))
                spectra << folder.filePath(file);
        }
        m_panel->receiveDroppedFiles(spectra);
    }
    for (const QString &warning : result.warnings)
        m_panel->message(warning);
}
