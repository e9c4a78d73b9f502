#include "import/window/ImportRunner.h"

#include "import/Import.h"
#include "import/ImportText.h"

#include <new>

ImportRunner::~ImportRunner()
{
    stop();
}

void ImportRunner::start(const ImportOptions &options)
{
    m_isStopped = false;
    m_thread = std::make_unique<numeric::HelperThreads>(1);
    connect(this, &ImportRunner::ending, this, &ImportRunner::end,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
    if (!m_thread->start([this, options] { run(options); }))
        run(options);
}

void ImportRunner::run(const ImportOptions &options)
{
    int last = -1;
    QString lastWhat;
    const auto progress = [&](const QString &what, double done) {
        const int thousandth = static_cast<int>(done * 1000.0);
        if (thousandth != last || what != lastWhat)
            emit progressed(what, done);
        last = thousandth;
        lastWhat = what;
        return !m_isStopped;
    };
    try {
        m_result = importData(options, progress);
    } catch (const std::bad_alloc &) {
        m_result = ImportResult();
        m_result.outcome = ImportResult::Outcome::BadInput;
        m_result.error = ImportText::tr("there is not enough memory");
    }
    emit ending(QPrivateSignal());
}

void ImportRunner::end()
{
    m_thread.reset(); // waits for its last instructions
    emit finished();
}
