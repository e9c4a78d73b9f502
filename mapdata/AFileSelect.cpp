#include "mapdata/AFileSelect.h"

#include "controls/CompactControls.h"
#include "controls/NumberTyping.h"

#include <QColor>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QFont>
#include <QLineEdit>
#include <QList>
#include <QMessageBox>
#include <QMimeData>
#include <QPalette>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QUrl>

#include <utility>

namespace
{

/// A file dialog that closes only when the file to write is accepted by a check. The check is given the path as the
/// dialog has it, and takes the place of the dialog's own question, which would name a file without the suffix.
class CheckedFileDialog : public QFileDialog
{
public:
    using Check = std::function<bool(const QString &path)>;

    CheckedFileDialog(QWidget *parent, Check check)
        : QFileDialog(parent)
        , m_check(std::move(check))
    {
        setOption(DontConfirmOverwrite);
    }

protected:
    void accept() override
    {
        const QStringList paths = selectedFiles();
        const bool isFileToWrite = acceptMode() == AcceptSave && paths.size() == 1 && !QFileInfo(paths.first()).isDir();
        if (!isFileToWrite || m_check(paths.first()))
            QFileDialog::accept();
    }

private:
    Check m_check;
};

/// Empty when it is no local file.
QString localPath(const QUrl &url)
{
    const QString path = url.toLocalFile();
    return QFileInfo::exists(path) ? path : path.simplified(); // some programs add white space around a path
}

} // namespace

AFileSelect::AFileSelect(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    new NumberTyping(ui.dE);
    compact::fitButton(ui.SelectB);
    compact::fitButton(ui.ClearB);
    ui.FileName->setMinimumWidth(fontMetrics().averageCharWidth() * 14);
    compact::fitColumn(ui.dE, ui.dELabel, QStringLiteral("-00.00"));
    QFont small = font();
    small.setPointSizeF(qMax(8.0, 0.9 * small.pointSizeF()));
    ui.ExInfo->setFont(small);
    ui.ExInfo->hide();
    setMode(Read);
    m_mayReplace = [this](const QString &path) {
        const QString question = tr("%1 exists already.\nDo you want to replace it?").arg(QFileInfo(path).fileName());
        return QMessageBox::warning(m_dialog, tr("Name a file to write"), question, QMessageBox::Yes | QMessageBox::No,
                                    QMessageBox::No) == QMessageBox::Yes;
    };

    connect(ui.SelectB, &QPushButton::clicked, this, [this] { dialog()->show(); });
    connect(ui.ClearB, &QPushButton::clicked, this, &AFileSelect::clearFileName);
    connect(ui.dE, &QLineEdit::editingFinished, this, &AFileSelect::newDE);
}

QFileDialog *AFileSelect::dialog()
{
    if (m_dialog)
        return m_dialog;
    m_dialog = new CheckedFileDialog(this, [this](const QString &path) { return mayWrite(path); });
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setNameFilters({tr("All (* *.*)"), tr("Data Files (*.dat)")});
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
    ui.FileName->setFocusPolicy(isRead ? Qt::ClickFocus : Qt::StrongFocus);
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
    m_dialog->setDefaultSuffix(m_mode == Write ? m_suffix : QString()); // a name to read is taken as it is typed
    if (m_mode == Write) {
        m_dialog->setWindowTitle(m_dialogTitle.isEmpty() ? tr("Name a file to write") : m_dialogTitle);
        m_dialog->setAcceptMode(QFileDialog::AcceptSave);
        m_dialog->setFileMode(QFileDialog::AnyFile);
        return;
    }
    const QString kind = m_multiple ? tr("Choose files") : tr("Choose a file");
    m_dialog->setWindowTitle(m_dialogTitle.isEmpty() ? kind : m_dialogTitle);
    m_dialog->setAcceptMode(QFileDialog::AcceptOpen);
    m_dialog->setFileMode(m_multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
}

void AFileSelect::setDialogTitle(const QString &title)
{
    m_dialogTitle = title;
    updateDialogMode();
}

void AFileSelect::setDefaultSuffix(const QString &suffix)
{
    m_suffix = suffix;
    updateDialogMode();
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
    ui.ExInfo->setVisible(m_keepsInfo || !text.isEmpty());
    ui.ExInfo->setToolTip(text); // the whole of a text that the label cuts
}

QString AFileSelect::exInfo() const
{
    return ui.ExInfo->text();
}

void AFileSelect::showTitles(bool areShown)
{
    ui.FileLabel->setVisible(areShown);
    ui.dELabel->setVisible(areShown);
}

void AFileSelect::keepInfoLine()
{
    m_keepsInfo = true;
    ui.ExInfo->setMinimumHeight(ui.ExInfo->fontMetrics().height());
    ui.ExInfo->show();
}

void AFileSelect::setSingleLine()
{
    showTitles(false);
    keepInfoLine();
    ui.gridLayout->addWidget(ui.ExInfo, 1, 4);
    ui.ExInfo->setMinimumWidth(ui.ExInfo->fontMetrics().horizontalAdvance(QStringLiteral("2048 x 2048")));
    ui.gridLayout->setColumnStretch(0, 3);
    ui.gridLayout->setColumnStretch(4, 2);
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
        choose(path);
}

void AFileSelect::newFile(const QString &path)
{
    choose(path);
}

/// The path under which a file is read or, in write mode, written.
QString AFileSelect::withSuffix(const QString &path) const
{
    const bool isComplete = m_mode != Write || m_suffix.isEmpty() || QFileInfo(path).suffix() == m_suffix;
    return isComplete ? path : path + QLatin1Char('.') + m_suffix;
}

/// Whether the user lets the file that follows from a chosen path be written.
bool AFileSelect::mayWrite(const QString &path) const
{
    const QString complete = withSuffix(path);
    return !QFileInfo::exists(complete) || m_mayReplace(complete);
}

void AFileSelect::choose(const QString &path)
{
    const QString complete = withSuffix(path);
    setFileText(complete);
    rememberDirOf(complete);
    m_fileName = QFileInfo(complete).fileName();
    emit newDir(m_dir);
    emit newFilePath(complete);
    emit selectedFile();
}

void AFileSelect::chooseByHand(const QString &path)
{
    const QScopedValueRollback<bool> byHand(m_isChosenByHand, true);
    choose(path);
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
    const QScopedValueRollback<bool> byHand(m_isChosenByHand, true);
    if (m_mode == Write)
        choose(path);
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

QStringList AFileSelect::droppedPaths(const QMimeData &data)
{
    QStringList paths;
    for (const QUrl &url : data.urls())
        paths << localPath(url);
    paths.removeAll(QString());
    return paths;
}

QString AFileSelect::droppedPath(const QMimeData &data)
{
    return localPath(data.urls().value(0));
}

QString AFileSelect::droppedFile(const QMimeData &data)
{
    const QString path = droppedPath(data);
    return data.urls().size() == 1 && !QFileInfo(path).isDir() ? path : QString();
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
    chooseByHand(path);
}
