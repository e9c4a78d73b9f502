#include "display/HeaderMenu.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QMenu>
#include <QMessageBox>
#include <QToolButton>

#include <utility>

namespace
{

/// Where the next dialog opens, whichever display asks: where the last picture went, unless set since.
QString &pictureDirectory()
{
    static QString directory;
    return directory;
}

/// A title as a file name: what some file system does not like becomes "_".
QString asFileName(QString title)
{
    for (QChar &c : title) {
        if (!c.isLetterOrNumber() && c != QLatin1Char('-') && c != QLatin1Char('.'))
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
    m_howToAction = menu->addAction(tr("How to..."));
    connect(m_howToAction, &QAction::triggered, this, &HeaderMenu::showHowTo);
    addButton();

    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &position) { menu->popup(m_header->mapToGlobal(position)); });
}

void HeaderMenu::setDirectory(const QString &directory)
{
    pictureDirectory() = directory;
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

QAction *HeaderMenu::add(const QString &text)
{
    auto *const action = new QAction(text, menu);
    menu->insertAction(m_howToAction, action);
    return action;
}

void HeaderMenu::addButton()
{
    auto *const row = qobject_cast<QGridLayout *>(m_header->layout());
    if (!row)
        return;
    auto *const button = new QToolButton(m_header);
    button->setObjectName(QStringLiteral("HeaderMenuB"));
    button->setText(QString(QChar(0x2261))); // three bars
    button->setToolTip(tr("Picture, values, and what the mouse does"));
    button->setAutoRaise(true);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
    button->setMenu(menu);
    row->addWidget(button, 0, row->columnCount());
}

void HeaderMenu::showHowTo()
{
    const std::pair<QString, QString> gestures[] = {
        {tr("Wheel"), tr("zooms about the mouse")},
        {tr("Wheel over an axis"), tr("zooms along that axis")},
        {tr("Shift and drag"), tr("moves the picture")},
        {tr("Double click"), tr("shows everything again; in a result map in the quantity's own colours")},
        {tr("Shift and double click"), tr("result map: colours from the smallest to the largest value shown")},
        {tr("Control and double click"), tr("result map: colours from the 2nd to the 98th percentile of them")},
        {tr("Control and drag"), tr("result map: a region; its mean spectrum and fit are shown")},
        {tr("Drag an end of the colour bar"), tr("stretches the colours; a double click on the bar undoes it")},
        {tr("Right click on the colour bar"), tr("other colours, limits by percentile")},
        {tr("Drag a marker"), tr("moves the edge, a range or an energy without a map; a click moves nothing")},
        {tr("Click in \"Muts\""), tr("writes the values of all spectra there into the message area")},
    };
    QString rows;
    for (const auto &[gesture, effect] : gestures)
        rows += QStringLiteral("<tr><td><b>%1</b>&nbsp;&nbsp;</td><td>%2</td></tr>")
                    .arg(gesture.toHtmlEscaped(), effect.toHtmlEscaped());
    auto *const box = new QMessageBox(QMessageBox::NoIcon, tr("How to"), QStringLiteral("<table>%1</table>").arg(rows),
                                      QMessageBox::Close, m_header->window());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setModal(false); // to be read while trying
    box->show();
}

void HeaderMenu::copyPicture()
{
    const DisplayPicture picture = m_picture();
    QApplication::clipboard()->setImage(picture.toImage(picture.printScale()));
}

void HeaderMenu::savePicture()
{
    const DisplayPicture picture = m_picture();
    const QString name = proposedName ? proposedName() : QString();
    const QString path = askFileName(asFileName(name.isEmpty() ? picture.title : name) + QStringLiteral(".png"));
    if (path.isEmpty())
        return;
    const QString failure = picture.save(path, picture.printScale());
    if (!failure.isEmpty())
        showFailure(tr("The picture could not be saved as %1: %2").arg(QDir::toNativeSeparators(path), failure));
}

void HeaderMenu::copyValues()
{
    if (!m_values)
        return;
    QApplication::clipboard()->setText(m_values());
    emit copiedValues();
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
