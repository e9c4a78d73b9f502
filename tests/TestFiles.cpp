#include "numeric/FileIdentity.h"
#include "numeric/FileSet.h"
#include "numeric/OutputFile.h"
#include "tests/SmallDisk.h"
#include "tests/Tables.h"

#include <QCryptographicHash>

#include <csignal>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace numeric;
using namespace tables;

namespace
{

QString entries(const QTemporaryDir &dir)
{
    return QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).join(' ');
}

/// Which signal ended a process of its own that ran `body`; 0: none.
int signalThatEnded(const std::function<void()> &body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) // not the test's own
            std::signal(number, SIG_DFL);
        prepareForSignals();
        body();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

/// Files that are written: whole or not at all, alone or together, and by what they are known.
class TestFiles : public QObject
{
    Q_OBJECT

private slots:
    /// A file appears as a whole or not at all, however late the disk is full, and leaves nothing beside it.
    void outputFileOnAFullDisk()
    {
        forRows<int, int, int, bool>({{"room enough", 100000, 100, 100000, true},
                                      {"no room at all", 100000, 100, 0, false},
                                      {"room for the start", 100000, 100, 100, false},
                                      {"room for half of it", 100000, 100, 50000, false},
                                      {"room for half of the only piece", 100000, 100000, 50000, false},
                                      {"a short file, which is handed on at the end", 200, 100, 100, false},
                                      {"nothing to write", 0, 1, 0, true}},
                                     [](int size, int piece, int room, bool wantedIsWritten) {
                                         const QTemporaryDir dir;
                                         const QString path = dir.filePath("result.dat");
                                         QVERIFY(writeBytes(path, "yesterday's result\n"));
                                         bool isWritten = true;
                                         {
                                             const SmallDisk disk(static_cast<rlim_t>(room));
                                             OutputFile file(path);
                                             QVERIFY(file.open());
                                             for (int i = 0; i < size; i += piece)
                                                 isWritten = file.write(QByteArray(piece, 'x')) && isWritten;
                                             isWritten = file.commit() && isWritten;
                                         }
                                         QCOMPARE(isWritten, wantedIsWritten);
                                         QCOMPARE(bytesOf(path), wantedIsWritten ? QByteArray(size, 'x')
                                                                                 : QByteArray("yesterday's result\n"));
                                         QCOMPARE(entries(dir), QString("result.dat"));
                                     });
    }

    void outputFileElsewhere()
    {
        const QTemporaryDir dir;
        for (const QString &path : {QString(), dir.filePath("missing/result.dat"), dir.path()})
            QVERIFY(!OutputFile(path).open());
        { // not committed: never there
            OutputFile file(dir.filePath("result.dat"));
            QVERIFY(file.open() && file.write("x"));
        }
        QVERIFY(QDir(dir.path()).isEmpty());
    }

    /// What is no file is written directly and stays what it is: a pipe here, as a mistake would replace a device.
    void outputToAPipe()
    {
        const QTemporaryDir dir;
        const QByteArray path = QFile::encodeName(dir.filePath("pipe"));
        QCOMPARE(mkfifo(path, 0600), 0);
        const auto handler = std::signal(SIGPIPE, SIG_IGN);
        for (const int size : {1, 1000, 1000000}) { // only the 1000 are read
            const int reader = ::open(path, O_RDONLY | O_NONBLOCK);
            OutputFile file(dir.filePath("pipe"));
            QVERIFY(file.open());
            if (size != 1000)
                ::close(reader);
            file.write(QByteArray(size, 'x')); // unread, a few bytes fail at the end and many at once
            QCOMPARE(file.commit(), size == 1000);
            if (size == 1000) {
                char got[1000];
                QCOMPARE(::read(reader, got, sizeof got), ssize_t(1000));
                QCOMPARE(QByteArray(got, 1000), QByteArray(1000, 'x'));
                ::close(reader);
            }
            QVERIFY(!QFileInfo(path).isFile());
        }
        std::signal(SIGPIPE, handler);
    }

    /// A signal leaves no temporary file behind; while files take their places it waits.
    void signalsThatEndThePrograms()
    {
        const QTemporaryDir dir;
        const QString old = dir.filePath("a"), temporary = dir.filePath("a.temporary");
        QVERIFY(writeBytes(old, "old"));
        for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
            QCOMPARE(signalThatEnded([&] {
                         const TemporaryName name(temporary);
                         writeBytes(temporary, "x");
                         std::raise(number);
                     }),
                     number);
            QCOMPARE(entries(dir), QString("a"));
        }
        QCOMPARE(signalThatEnded([&] {
                     TemporaryName name(temporary);
                     const HeldSignals held;
                     std::raise(SIGTERM);
                     writeBytes(temporary, "new");
                     ::rename(QFile::encodeName(temporary), QFile::encodeName(old));
                 }),
                 SIGTERM);
        QCOMPARE(bytesOf(old), QByteArray("new"));
    }

    /// None is seen before all of them are, and where one cannot be, none is.
    void filesThatBelongTogether()
    {
        const QTemporaryDir dir;
        const auto add = [&dir](FileSet *set, const QString &name) {
            StagedFile file(dir.filePath(name));
            return file.open() && file.device()->write("new") == 3 && file.commit(set);
        };
        QVERIFY(writeBytes(dir.filePath("a"), "old"));
        FileSet set(true), failing;
        QVERIFY(add(&failing, "a") &&
                add(&failing, QString(255, 'n'))); // too long with the letters of a temporary name
        QVERIFY(!failing.publish());
        QVERIFY(failing.problem().contains("nnn: File name too long"));
        QVERIFY(add(&set, "a") && add(&set, "b"));
        QCOMPARE(bytesOf(dir.filePath("a")), QByteArray("old"));
        QVERIFY(set.publish());
        QCOMPARE(entries(dir), QString("a b"));
        QCOMPARE(bytesOf(dir.filePath("a")), QByteArray("new"));
        QCOMPARE(set.members()[1].sha256, QCryptographicHash::hash("new", QCryptographicHash::Sha256).toHex());
    }

    /// In a folder with the file a, the folder f with a file g, and links to them.
    void spellingsOfOneFile()
    {
        const QTemporaryDir dir;
        const QDir root(dir.path());
        QVERIFY(root.mkpath("f/deep") && writeBytes(root.filePath("a"), "a") && writeBytes(root.filePath("f/g"), "g"));
        QVERIFY(::link(QFile::encodeName(root.filePath("a")), QFile::encodeName(root.filePath("hard"))) == 0);
        QVERIFY(QFile::link("f/deep", root.filePath("deep")) && QFile::link("a", root.filePath("soft")) &&
                QFile::link("deep/../new", root.filePath("dangling")));
        forRows<const char *, const char *, bool>({{"dots", "f/../a", "./a", true},
                                                   {"hard link", "hard", "a", true},
                                                   {"symbolic link", "soft", "hard", true},
                                                   {".. behind a link", "deep/../g", "f/g", true},
                                                   {".. behind a link, not as it is read", "deep/../a", "a", false},
                                                   {"new file behind a link", "deep/../new", "f/new", true},
                                                   {"link to a new file", "dangling", "f/new", true},
                                                   {"folder that is missing yet", "x/../new", "new", true},
                                                   {"new files", "new", "f/new", false}},
                                                  [&](const char *one, const char *other, bool isSame) {
                                                      const QString path = fileIdentity(root.filePath(one));
                                                      QCOMPARE(path == fileIdentity(root.filePath(other)), isSame);
                                                  });
    }
};

QTEST_APPLESS_MAIN(TestFiles)
#include "TestFiles.moc"
