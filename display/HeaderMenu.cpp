#include "display/HeaderMenu.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>

#include <algorithm>
#include <utility>

namespace
{

/// Where the last picture went: the next dialog opens there, whichever display asks.
QString &pictureDirectory()
{
    static QString directory;
    return directory;
}

/// A title as a file name: what some file system does not like becomes "_".
QString asFileName(QString title)
{
    for (QChar &c : title) {
        if (!c.isLetterOrNumber() && c != QLatin1Char('-'))
            c = QLatin1Char('_');
    }
    return title.isEmpty() ? QStringLiteral("picture") : title;
}

} // namespace

HeaderMenu::HeaderMenu(QWidget *header, std::function<DisplayPicture()> picture, QObject *parent)
    : QObject(parent)
    , menu(new QMenu(header))
    , m_header(header)
    , m_picture(std::move(picture))
{
    askFileName = [this](const QString &proposal) {
        return askWithDialog(proposal);
    };
    showFailure = [this](const QString &text) {
        QMessageBox::warning(m_header, tr("Save picture"), text);
    };

    connect(menu->addAction(tr("Copy picture")), &QAction::triggered, this, &HeaderMenu::copyPicture);
    connect(menu->addAction(tr("Save picture...")), &QAction::triggered, this, &HeaderMenu::savePicture);
    m_valuesAction = menu->addAction(tr("Copy values"));
    connect(m_valuesAction, &QAction::triggered, this, &HeaderMenu::copyValues);
    m_valuesAction->setEnabled(false);

    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &position) { menu->popup(m_header->mapToGlobal(position)); });
}

void HeaderMenu::setValues(std::function<QString()> values)
{
    m_values = std::move(values);
    m_valuesAction->setEnabled(static_cast<bool>(m_values));
}

void HeaderMenu::hideValues()
{
    m_valuesAction->setVisible(false);
}

double HeaderMenu::pictureScale() const
{
    return std::max(2.0, m_header->devicePixelRatioF());
}

void HeaderMenu::copyPicture()
{
    QApplication::clipboard()->setImage(m_picture().toImage(pictureScale()));
}

void HeaderMenu::savePicture()
{
    const DisplayPicture picture = m_picture();
    const QString path = askFileName(asFileName(picture.title) + QStringLiteral(".png"));
    if (path.isEmpty())
        return;
    const QString failure = picture.save(path, pictureScale());
    if (!failure.isEmpty())
        showFailure(tr("The picture could not be saved as %1: %2").arg(QDir::toNativeSeparators(path), failure));
}

void HeaderMenu::copyValues()
{
    if (m_values)
        QApplication::clipboard()->setText(m_values());
}

QString HeaderMenu::askWithDialog(const QString &proposal)
{
    const QString png = tr("PNG picture (*.png)");
    const QString pdf = tr("PDF, vectors (*.pdf)");
    QFileDialog dialog(m_header, tr("Save picture"), pictureDirectory());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({png, pdf});
    dialog.setDefaultSuffix(QStringLiteral("png"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog, pdf](const QString &filter) {
        dialog.setDefaultSuffix(filter == pdf ? QStringLiteral("pdf") : QStringLiteral("png"));
    });
    dialog.selectFile(proposal);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    pictureDirectory() = dialog.directory().absolutePath();
    return dialog.selectedFiles().first();
}
