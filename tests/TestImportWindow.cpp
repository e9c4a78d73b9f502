// The window of the import: what its fields say becomes what is imported, and what is imported stands in the panel.

#include "ImportTools.h"
#include "RowTools.h"
#include "analysis/panel/FourPs.h"
#include "app/Body.h"
#include "import/window/ImportDialog.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

using namespace importtools;
using namespace tables;

namespace
{

const char *const xdiText = "# XDI/1.0\n# Column.1: energy eV\n# Column.2: mutrans\n#---\n7000 0.5\n7001 0.75\n";

/// A user at the window, who types lines of files and knows the controls by name.
struct Window {
    explicit Window(ImportDialog *shown)
        : dialog(shown)
    {
    }
    template <class Control>
    Control *find(const char *name)
    {
        return dialog->findChild<Control *>(name);
    }
    QString message() { return find<QLabel>("Message")->text(); }
    void type(const char *name, const QString &text)
    {
        if (auto *const list = find<QPlainTextEdit>(name)) {
            list->selectAll();
            QTest::keyClicks(list, text);
        } else {
            rowtools::type(find<QLineEdit>(name), text);
        }
    }
    void click(const char *name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    ImportDialog *dialog;
};

} // namespace

class TestImportWindow : public QObject
{
    Q_OBJECT

private slots:

    /// What is wrong is one sentence in the window, and nothing is written.
    void mistakes()
    {
        struct Case {
            const char *name, *inputs, *field, *text;
            int incident; ///< its choice
            const char *said;
        };
        forEach<Case>({{"nothing", "", "Crop", "", 0, "Choose images"},
                       {"no folder", "a.hdr", "Folder", " ", 0, "Choose a folder"},
                       {"valences", "a.hdr", "Valences", "2;3", 0, "Valences are numbers"},
                       {"no region", "a.hdr", "Incident", "", 2, "A region is"},
                       {"no flat", "a.hdr", "Incident", "", 1, "Choose the file that I0"},
                       {"region", "a.hdr", "Incident", "3,3,1,1", 2, "A region is"},
                       {"crop", "a.hdr", "Crop", "1,2,3", 0, "A region is"},
                       {"no such energies", "a.hdr", "Pick", "9,1", 0, "there is no image near 9 eV"},
                       {"one energy", "a.hdr", "Pick", "1", 0, "2 to 8 energies"},
                       {"no such file", "b.hdr", "Crop", "", 0, "there is no such file"},
                       {"no such dataset", "a.hdr", "Energies", "e.txt", 0, "there is no such file"}},
                      [](const Case &c) {
                          const ImportFolder folder;
                          QVERIFY(writeXim(folder));
                          ImportDialog dialog;
                          Window user(&dialog);
                          dialog.show();
                          user.type("Inputs", *c.inputs ? folder.path(c.inputs) : QString());
                          user.type("Folder", folder.path("out"));
                          user.find<QComboBox>("IncidentKind")->setCurrentIndex(c.incident);
                          user.type(c.field, c.text);
                          user.click("ImportB");
                          QTRY_VERIFY(user.find<QPushButton>("ImportB")->isEnabled());
                          QVERIFY2(user.message().contains(c.said), qPrintable(user.message()));
                          QVERIFY(dialog.isVisible());
                          QCOMPARE(folder.written(), QStringList("none"));
                      });
    }

    /// From the button to the maps in the panel; a second import into the same folder asks first.
    void imagesBecomeAJob()
    {
        const ImportFolder folder;
        QVERIFY(writeXim(folder) && folder.write("r.xdi", xdiText));
        Body body;
        body.show();
        QTest::mouseClick(body.findChild<QPushButton *>("ImportFiles"), Qt::LeftButton);
        Window user(body.findChild<ImportDialog *>());
        QVERIFY(user.dialog && user.dialog->isVisible());
        QVERIFY(QRect(0, 0, 1366, 728).contains(QRect(QPoint(), user.dialog->minimumSizeHint())));
        user.type("Inputs", folder.path("a.hdr"));
        QTRY_VERIFY(user.find<QPlainTextEdit>("Inside")->toPlainText().contains("a.hdr\n"));
        QCOMPARE(user.find<QLineEdit>("Folder")->text(), folder.path("a_import"));
        user.type("Folder", folder.path("out"));
        user.type("References", folder.path("r.xdi"));
        user.type("Valences", "2.5");
        user.type("Pick", "700,703");
        user.click("ImportB");
        QTRY_VERIFY(!user.dialog->isVisible());
        const AnalysisInput input = body.panel()->input();
        QCOMPARE(input.references[0].valence, 2.5);
        QCOMPARE(input.points[1].energy, 703.0);
        QVERIFY(body.panel()->messages().contains("The conditions of job.json are loaded."));
        QVERIFY(body.panel()->messages().contains("r.dat was not measured over all energies"));

        int asked = 0;
        user.dialog->mayReplace = [&asked](const QString &) {
            ++asked;
            return false;
        };
        user.dialog->open();
        user.click("ImportB");
        QVERIFY(asked == 1 && user.dialog->isVisible());
    }

    /// A stack of many energies is stopped on the way, and the window stays for another try.
    void stopping()
    {
        const ImportFolder folder;
        QByteArray energies = "500";
        for (int e = 0; e < 500; ++e) {
            energies += ", " + QByteArray::number(699.5 + 0.008 * e);
            QVERIFY(folder.write(QString("a_a%1.xim").arg(e, 3, 10, QChar('0')), ximImage(e)));
        }
        QVERIFY(writeXim(folder, energies));
        ImportDialog dialog;
        int imported = 0;
        connect(&dialog, &ImportDialog::imported, this, [&imported] { ++imported; });
        Window user(&dialog);
        dialog.show();
        user.type("Inputs", folder.path("a.hdr"));
        user.type("Folder", folder.path("out"));
        user.click("ImportB");
        user.click("CancelB");
        QTRY_COMPARE(user.message(), QString("the import was stopped"));
        QVERIFY(dialog.isVisible() && user.find<QPushButton>("ImportB")->isEnabled());
        QCOMPARE(imported, 0);
        QCOMPARE(folder.written(), QStringList("none"));
        user.click("CancelB");
        QVERIFY(!dialog.isVisible());
    }

    /// Files of others open the window; the program's own do not, nor what nobody can read. A spectrum alone takes a
    /// place in the panel and leaves the rest.
    void drops()
    {
        const ImportFolder folder;
        QVERIFY(writeXim(folder) && folder.write("r.xdi", xdiText) && folder.write("notes.txt", "1 2\n3 4\n"));
        Body body;
        body.show();
        QVERIFY(rowtools::drop(&body, QUrl::fromLocalFile(folder.path("notes.txt"))));
        QVERIFY(body.panel()->messages().startsWith("notes.txt is neither"));
        QVERIFY(!body.findChild<ImportDialog *>());
        rowtools::drop(&body, {QUrl::fromLocalFile(folder.path("r.xdi")), QUrl::fromLocalFile(folder.path("a.hdr"))});
        Window user(body.findChild<ImportDialog *>());
        QVERIFY(user.dialog && user.dialog->isVisible());
        QCOMPARE(user.find<QPlainTextEdit>("Inputs")->toPlainText(), folder.path("a.hdr"));
        QCOMPARE(user.find<QPlainTextEdit>("References")->toPlainText(), folder.path("r.xdi"));
        user.click("ReferencesClear");
        user.click("CancelB");

        rowtools::drop(&body, QUrl::fromLocalFile(folder.path("r.xdi")));
        QCOMPARE(user.find<QPlainTextEdit>("Inputs")->toPlainText(), folder.path("r.xdi"));
        user.click("ImportB");
        QTRY_VERIFY(!user.dialog->isVisible());
        QCOMPARE(QFileInfo(body.findChildren<AXafsFileSelect *>().first()->fileText()).fileName(), QString("r.dat"));
        QVERIFY(!body.panel()->messages().contains("The conditions"));
    }
};

QTEST_MAIN(TestImportWindow)
#include "TestImportWindow.moc"
