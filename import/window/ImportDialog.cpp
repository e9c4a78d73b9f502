#include "import/window/ImportDialog.h"

#include "controls/ScreenRoom.h"
#include "controls/WaitCursor.h"
#include "import/StackFiles.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QMessageBox>
#include <QMimeData>

namespace
{

constexpr int mostListed = 8;    ///< files whose contents are shown
constexpr int whileTyping = 300; ///< ms after which what was typed is looked at

QStringList linesOf(const QPlainTextEdit *list)
{
    QStringList lines;
    for (const QString &line : list->toPlainText().split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty())
            lines << line.trimmed();
    }
    return lines;
}

QStringList localFiles(const QMimeData &data)
{
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

QStringList insideOf(const QString &path)
{
    QStringList lines;
    QString error;
    if (!QFileInfo(path).isDir() && !listInput(path, &lines, &error))
        lines = QStringList(error);
    return lines;
}

} // namespace

ImportDialog::ImportDialog(QWidget *parent)
    : QDialog(parent)
{
    ui.setupUi(this);
    setWindowModality(Qt::WindowModal);
    setAcceptDrops(true);
    for (QPlainTextEdit *const list : {ui.Inputs, ui.References}) {
        list->setAcceptDrops(false); // else they take an address for text
        connect(list, &QPlainTextEdit::textChanged, &m_typing, QOverload<>::of(&QTimer::start));
    }
    for (QLineEdit *const field : findChildren<QLineEdit *>())
        field->setAcceptDrops(false);
    ui.Inside->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // columns
    m_typing.setSingleShot(true);
    m_typing.setInterval(whileTyping);
    connect(&m_typing, &QTimer::timeout, this, &ImportDialog::showInside);
    setUpDialogs();
    connectButtons();
    showIncident();
    setRunning(false);
    resize(sizeHint().boundedTo(screenroom::largestWindow(this)));
}

void ImportDialog::setUpDialogs()
{
    askFiles = [this](const QString &title, bool areSeveral) {
        const QString all = tr("All (* *.*)");
        if (areSeveral)
            return QFileDialog::getOpenFileNames(this, title, m_directory, all);
        const QString one = QFileDialog::getOpenFileName(this, title, m_directory, all);
        return one.isEmpty() ? QStringList() : QStringList(one);
    };
    askFolder = [this](const QString &title) {
        return QFileDialog::getExistingDirectory(this, title, m_directory);
    };
    mayReplace = [this](const QString &folder) {
        const QString question = tr("%1 holds an import already. Replace it?").arg(QDir::toNativeSeparators(folder));
        return QMessageBox::question(this, windowTitle(), question) == QMessageBox::Yes;
    };
}

void ImportDialog::connectButtons()
{
    connect(ui.InputsAdd, &QPushButton::clicked, this,
            [this] { addFiles(ui.Inputs, askFiles(tr("Import: choose images or spectra"), true)); });
    connect(ui.ReferencesAdd, &QPushButton::clicked, this,
            [this] { addFiles(ui.References, askFiles(tr("Import: choose reference spectra"), true)); });
    connect(ui.InputsClear, &QPushButton::clicked, ui.Inputs, &QPlainTextEdit::clear);
    connect(ui.ReferencesClear, &QPushButton::clicked, ui.References, &QPlainTextEdit::clear);
    connect(ui.EnergiesSel, &QPushButton::clicked, this,
            [this] { chooseInto(ui.Energies, tr("Import: choose a file with the energies")); });
    connect(ui.IncidentSel, &QPushButton::clicked, this,
            [this] { chooseInto(ui.Incident, tr("Import: choose the file with I0")); });
    connect(ui.DarkSel, &QPushButton::clicked, this,
            [this] { chooseInto(ui.Dark, tr("Import: choose images without beam")); });
    connect(ui.FolderSel, &QPushButton::clicked, this, [this] {
        const QString folder = askFolder(tr("Import: choose a folder for what is written"));
        if (!folder.isEmpty())
            ui.Folder->setText(folder);
    });
    connect(ui.IncidentKind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ImportDialog::showIncident);
    connect(ui.ImportB, &QPushButton::clicked, this, &ImportDialog::start);
    connect(ui.CancelB, &QPushButton::clicked, this, &ImportDialog::reject);
    connect(&m_runner, &ImportRunner::finished, this, &ImportDialog::end);
    connect(&m_runner, &ImportRunner::progressed, this, [this](const QString &what, double done) {
        ui.Message->setText(what);
        ui.Progress->setValue(qRound(done * ui.Progress->maximum()));
    });
}

void ImportDialog::setInputs(const QStringList &images, const QStringList &spectra)
{
    ui.Inputs->setPlainText((images + (images.isEmpty() ? spectra : QStringList())).join(QLatin1Char('\n')));
    if (!images.isEmpty() && !spectra.isEmpty())
        setReferences(spectra, QString());
}

void ImportDialog::setReferences(const QStringList &paths, const QString &valences)
{
    ui.References->setPlainText(paths.join(QLatin1Char('\n')));
    ui.Valences->setText(valences);
}

bool ImportDialog::hasReferences() const
{
    return !linesOf(ui.References).isEmpty();
}

void ImportDialog::addFiles(QPlainTextEdit *list, const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    m_directory = QFileInfo(paths.first()).path();
    list->setPlainText((linesOf(list) + paths).join(QLatin1Char('\n')));
}

void ImportDialog::chooseInto(QLineEdit *field, const QString &title)
{
    const QString path = askFiles(title, false).value(0);
    if (!path.isEmpty())
        field->setText(path);
}

/// What kind of text says where I0 comes from.
void ImportDialog::showIncident()
{
    const auto kind = static_cast<ImportFields::Incident>(ui.IncidentKind->currentIndex());
    const bool isFile = kind == ImportFields::Incident::Flat || kind == ImportFields::Incident::Values;
    ui.Incident->setEnabled(kind != ImportFields::Incident::AsInFiles);
    ui.IncidentSel->setEnabled(isFile);
    QString form;
    if (kind == ImportFields::Incident::Region)
        form = QStringLiteral("x0,y0,x1,y1");
    else if (isFile)
        form = kind == ImportFields::Incident::Flat ? tr("FILE or FILE::PATH") : tr("FILE or ::PATH");
    ui.Incident->setPlaceholderText(form);
}

/// The contents of the first files, and a folder for what comes of them, unless the user has named one.
void ImportDialog::showInside()
{
    const WaitCursor wait;
    const QStringList files = linesOf(ui.Inputs) + linesOf(ui.References);
    QStringList lines;
    for (const QString &file : files.mid(0, mostListed)) {
        lines << QFileInfo(file).fileName();
        const QString path = file.section(QStringLiteral("::"), 0, 0);
        for (const QString &line : insideOf(path))
            lines << QStringLiteral("  ") + line;
    }
    if (files.size() > mostListed)
        lines << tr("and %1 more files").arg(files.size() - mostListed);
    ui.Inside->setPlainText(lines.join(QLatin1Char('\n')));
    const QString proposed = proposedFolder(linesOf(ui.Inputs));
    if (ui.Folder->text() == m_proposed)
        ui.Folder->setText(proposed);
    m_proposed = proposed;
}

ImportFields ImportDialog::fields() const
{
    ImportFields fields;
    fields.inputs = linesOf(ui.Inputs);
    fields.references = linesOf(ui.References);
    fields.valences = ui.Valences->text().trimmed();
    fields.directory = ui.Folder->text().trimmed();
    fields.energies = ui.Energies->text().trimmed();
    fields.data = ui.Data->text().trimmed();
    fields.incident = static_cast<ImportFields::Incident>(ui.IncidentKind->currentIndex());
    fields.incidentText = ui.Incident->text().trimmed();
    fields.dark = ui.Dark->text().trimmed();
    fields.signal = static_cast<ImportOptions::Signal>(ui.Signal->currentIndex());
    fields.pick = ui.Pick->text().trimmed();
    fields.bin = ui.Bin->value();
    fields.crop = ui.Crop->text().trimmed();
    fields.align = ui.Align->isChecked();
    return fields;
}

void ImportDialog::start()
{
    if (m_typing.isActive()) { // a folder may have to be proposed
        m_typing.stop();
        showInside();
    }
    ImportOptions options;
    const QString mistake = optionsFromFields(fields(), &options);
    ui.Message->setText(mistake);
    const QDir folder(options.directory);
    if (!mistake.isEmpty() || m_runner.isRunning())
        return;
    if (folder.exists(QStringLiteral("job.json")) && !mayReplace(options.directory))
        return;
    setRunning(true);
    m_runner.start(options);
}

void ImportDialog::end()
{
    setRunning(false);
    const ImportResult &result = m_runner.result();
    if (result.outcome != ImportResult::Outcome::Done) {
        ui.Message->setText(result.error);
        return;
    }
    ui.Message->clear();
    accept();
    emit imported(result);
}

void ImportDialog::setRunning(bool isRunning)
{
    ui.Fields->setEnabled(!isRunning);
    ui.ImportB->setEnabled(!isRunning);
    ui.CancelB->setText(isRunning ? tr("Stop") : tr("Close"));
    ui.Progress->setValue(0);
}

void ImportDialog::reject()
{
    if (m_runner.isRunning())
        m_runner.stop();
    else
        QDialog::reject();
}

void ImportDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (!m_runner.isRunning() && !localFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ImportDialog::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    const bool areReferences = ui.References->rect().contains(ui.References->mapFrom(this, event->pos()));
    addFiles(areReferences ? ui.References : ui.Inputs, localFiles(*event->mimeData()));
}
