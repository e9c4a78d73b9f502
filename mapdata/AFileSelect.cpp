#include "mapdata/AFileSelect.h"

#include "controls/CompactControls.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

AFileSelect::AFileSelect(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    compact::fitButton(ui.SelectB);
    compact::fitButton(ui.ClearB);
    ui.FileName->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    compact::fitField(ui.dE, QStringLiteral("-00.00"), QStringLiteral("-000.000"));
    setMode(Read);

    connect(ui.SelectB, &QPushButton::clicked, this, [this] { dialog()->show(); });
    connect(ui.ClearB, &QPushButton::clicked, this, &AFileSelect::clearFileName);
    connect(ui.dE, &QLineEdit::editingFinished, this, &AFileSelect::newDE);
}

QFileDialog *AFileSelect::dialog()
{
    if (m_dialog)
        return m_dialog;
    m_dialog = new QFileDialog(this);
    m_dialog->setNameFilters({tr("All (* *.*)"), tr("Data Files (*.dat)")});
    m_dialog->setDefaultSuffix(m_suffix);
    if (!m_dir.isEmpty())
        m_dialog->setDirectory(m_dir);
    updateDialogMode();
    connect(m_dialog, &QFileDialog::filesSelected, this, &AFileSelect::newFiles);
    connect(m_dialog, &QFileDialog::fileSelected, this, &AFileSelect::receiveDialogFile);
    return m_dialog;
}

void AFileSelect::setMode(int mode)
{
    if (mode != Read && mode != Write)
        return;
    m_mode = mode;
    const bool isRead = mode == Read;
    ui.FileName->setReadOnly(isRead);
    ui.FileName->setStyleSheet(isRead ? QStringLiteral("background-color: rgb(255, 255, 220);")
                                      : QStringLiteral("background-color: rgb(255, 255, 255);"));
    updateDialogMode();
}

void AFileSelect::setMultiple(bool multiple)
{
    m_multiple = multiple;
    updateDialogMode();
}

void AFileSelect::updateDialogMode()
{
    if (!m_dialog)
        return;
    if (m_mode == Write) {
        m_dialog->setWindowTitle(tr("Name a file to write"));
        m_dialog->setAcceptMode(QFileDialog::AcceptSave);
        m_dialog->setFileMode(QFileDialog::AnyFile);
        return;
    }
    m_dialog->setWindowTitle(m_multiple ? tr("Choose files") : tr("Choose a file"));
    m_dialog->setAcceptMode(QFileDialog::AcceptOpen);
    m_dialog->setFileMode(m_multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
}

void AFileSelect::setDefaultSuffix(const QString &suffix)
{
    m_suffix = suffix;
    if (m_dialog)
        m_dialog->setDefaultSuffix(suffix); // the dialog asks before it takes an existing file of the complete name
}

QString AFileSelect::fileText() const
{
    return ui.FileName->text();
}

void AFileSelect::setFileText(const QString &text)
{
    ui.FileName->setText(text);
    ui.FileName->setToolTip(text); // the whole of a path that the field cuts
}

QString AFileSelect::dEText() const
{
    return ui.dE->text();
}

void AFileSelect::setDEText(const QString &text)
{
    ui.dE->setText(text);
}

void AFileSelect::setExInfo(const QString &text, bool isWarning)
{
    QPalette colours = palette();
    if (isWarning)
        colours.setColor(QPalette::WindowText, QColor(190, 50, 0));
    ui.ExInfo->setPalette(colours);
    ui.ExInfo->setText(text);
    ui.ExInfo->setToolTip(text); // the whole of a text that the label cuts
}

QString AFileSelect::exInfo() const
{
    return ui.ExInfo->text();
}

void AFileSelect::setSingleLine()
{
    ui.FileLabel->hide();
    ui.gridLayout->addWidget(ui.ExInfo, 0, 5);
    ui.ExInfo->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("2048 x 2048")));
    ui.gridLayout->setColumnStretch(1, 3);
    ui.gridLayout->setColumnStretch(5, 2);
}

void AFileSelect::newFiles(const QStringList &paths)
{
    QString names;
    for (const QString &path : paths) {
        names += QFileInfo(path).fileName() + QLatin1Char(' ');
        rememberDirOf(path);
    }
    setFileText(names);
    emit newDir(m_dir);
    emit newFilePaths(paths);
    emit selectedFile();
}

void AFileSelect::clearFileName()
{
    m_fileName.clear();
    setFileText(QString());
    setExInfo(QString());
    emit newFilePath(QString());
    emit selectedFile();
}

void AFileSelect::selectingFile(const QString &path)
{
    const QFileInfo info(path);
    if (info.isFile() && info.isReadable())
        newFile(path);
}

void AFileSelect::newFile(const QString &path)
{
    QString complete = path;
    if (m_mode == Write && !m_suffix.isEmpty() && QFileInfo(path).suffix() != m_suffix)
        complete += QLatin1Char('.') + m_suffix;
    setFileText(complete);
    rememberDirOf(complete);
    m_fileName = QFileInfo(complete).fileName();
    emit newDir(m_dir);
    emit newFilePath(complete);
    emit selectedFile();
}

void AFileSelect::setDir(const QString &dir)
{
    if (dir == m_dir)
        return;
    m_dir = dir;
    if (m_dialog)
        m_dialog->setDirectory(dir);
}

void AFileSelect::showDE(bool f)
{
    ui.dEBase->setVisible(f);
}

/// A file chosen in the dialog, which also reports it as a list of one to newFiles().
void AFileSelect::receiveDialogFile(const QString &path)
{
    if (m_mode == Write)
        newFile(path);
    else if (!m_multiple)
        selectingFile(path);
}

/// The file need not exist; a directory that does not exist changes nothing.
void AFileSelect::rememberDirOf(const QString &path)
{
    const QString dir = QFileInfo(path).absoluteDir().canonicalPath();
    if (!dir.isEmpty())
        setDir(dir);
}

QString AFileSelect::droppedPath(const QMimeData &data)
{
    const QList<QUrl> urls = data.urls();
    if (urls.isEmpty() || !urls.first().isLocalFile())
        return QString();
    const QString path = urls.first().toLocalFile();
    return QFileInfo::exists(path) ? path : path.simplified(); // some programs add white space around a path
}

void AFileSelect::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedPath(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void AFileSelect::dropEvent(QDropEvent *event)
{
    const QString path = droppedPath(*event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    newFile(path);
}
