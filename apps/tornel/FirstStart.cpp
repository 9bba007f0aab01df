#include "FirstStart.h"

#include "SampleContent.h"

#include <QDir>
#include <QFile>
#include <QLockFile>

#include <array>
#include <chrono>

using namespace Qt::StringLiterals;
using oVELDRA::Database;
using oVELDRA::RuntimeError;

namespace tornel {

namespace {

/// How often the report is asked: often enough for a bar that moves, seldom enough to cost nothing.
constexpr qsizetype rowsPerReport = 250;

constexpr int storeError = -2147467259;

/// Thrown through the load when the report says to stop.
struct Stopped
{};

/// The file that a database is built in. What is left of it when this goes out of scope is removed.
class PartFile
{
public:
    explicit PartFile(QString target) : m_target(std::move(target)), m_part(m_target + u".parte"_s) { clear(); }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    ~PartFile() { clear(); }

    [[nodiscard]] const QString& path() const { return m_part; }

    /// Gives it its place. The database must be closed.
    void complete()
    {
        // Rows that are still in the log would stay behind under the old name.
        if (QFile::exists(m_part + u"-wal"_s)) {
            throw RuntimeError(storeError, u"La base de datos %1 no se cerró por completo."_s.arg(m_part));
        }
        removeLogs(m_target); // of a database that was deleted by hand: it would be taken for this one's
        if (!QFile::rename(m_part, m_target)) {
            throw RuntimeError(storeError, u"No se puede escribir %1."_s.arg(m_target));
        }
    }

private:
    static constexpr std::array<QStringView, 3> logEnds{u"-wal", u"-shm", u"-journal"};

    static void removeLogs(const QString& database)
    {
        for (const QStringView end : logEnds) {
            QFile::remove(database + end);
        }
    }

    void clear() const
    {
        QFile::remove(m_part);
        removeLogs(m_part);
    }

    QString m_target;
    QString m_part;
};

void build(const SampleContent& content, Database database, const QString& target, const RowCounter& counter)
{
    PartFile part(target);
    {
        const auto connection = oVELDRA::createStore(u"sqlite:"_s + part.path(), database);
        const auto burst = connection->beginBurst();
        content.write(database, *connection, counter);
        burst->commit();
    }
    part.complete();
}

} // namespace

FirstStart::FirstStart(const DataFolder& folder) : m_folder(folder) {}

std::vector<Database> FirstStart::missing() const
{
    std::vector<Database> list;
    for (const Database database : {Database::Nomenclature, Database::Host, Database::Inputs}) {
        if (!QFile::exists(m_folder.file(database))) {
            list.push_back(database);
        }
    }
    return list;
}

bool FirstStart::needed() const
{
    return !missing().empty();
}

bool FirstStart::run(const Report& report)
{
    if (!QDir().mkpath(m_folder.path())) {
        throw RuntimeError(storeError, u"No se puede crear la carpeta %1."_s.arg(m_folder.path()));
    }
    QLockFile lock(QDir(m_folder.path()).filePath(u"primer-inicio.lock"_s));
    if (!lock.tryLock(std::chrono::milliseconds(std::chrono::minutes(1)))) {
        throw RuntimeError(storeError,
                           u"Otro programa está preparando las bases de datos de %1."_s.arg(m_folder.path()));
    }
    const std::vector<Database> databases = missing();
    const SampleContent content(tariff::Tariff::builtIn());
    qsizetype total = 0;
    for (const Database database : databases) {
        total += content.rowCount(database);
    }
    qsizetype done = 0;
    const RowCounter counter = [&] {
        ++done;
        if ((done % rowsPerReport == 0 || done == total) && !report(done, total)) {
            throw Stopped();
        }
    };
    try {
        for (const Database database : databases) {
            build(content, database, m_folder.file(database), counter);
        }
    } catch (const Stopped&) {
        return false;
    }
    return true;
}

} // namespace tornel
