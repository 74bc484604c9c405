#include "Database.h"

#include "PackedNumbers.h"
#include "StoreError.h"

#include <QDir>
#include <algorithm>
#include <limits>
#include <sqlite3.h>

namespace tarn
{

Database::Database(const QString& path, Open how, std::chrono::milliseconds busyWait) : m_path(path)
{
    // SQLite's count of the memory it uses costs a lock on every allocation, and nothing
    // here reads it. It can only be turned off before the library starts.
    static const bool noMemoryCount = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0) == SQLITE_OK;
    Q_UNUSED(noMemoryCount);
    // Each connection is used from one thread only, so SQLite's own mutexes are not needed.
    const int access = how == Open::ReadOnly    ? SQLITE_OPEN_READONLY
                       : how == Open::CreateNew ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE
                                                : SQLITE_OPEN_READWRITE;
    const int flags = access | SQLITE_OPEN_NOMUTEX;
    const QByteArray native = QDir::toNativeSeparators(path).toUtf8();
    if (sqlite3_open_v2(native.constData(), &m_db, flags, nullptr) != SQLITE_OK) {
        const QString why = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QStringLiteral("out of memory");
        sqlite3_close(m_db);
        m_db = nullptr;
        throw StoreError(QStringLiteral("Cannot open %1: %2").arg(QDir::toNativeSeparators(path), why));
    }
    sqlite3_busy_timeout(m_db, int(std::min<qint64>(busyWait.count(), std::numeric_limits<int>::max())));
    sqlite3_extended_result_codes(m_db, 1);
    addNumberPacking(m_db);
    // Freed space is left as it was. The stores hold mod definitions, nothing to hide, and
    // the system's library may be built to zero every freed page, which doubled a delete's
    // writes.
    exec(QStringLiteral("PRAGMA secure_delete = OFF"));
}

Database::~Database()
{
    sqlite3_close_v2(m_db);
}

Statement Database::prepare(const QString& sql)
{
    return {m_db, sql};
}

void Database::exec(const QString& sql)
{
    if (sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throwStoreError(m_db);
}

qint64 Database::lastInsertRowId() const
{
    return sqlite3_last_insert_rowid(m_db);
}

QVariant Database::scalar(const QString& sql, const QVariantList& params)
{
    Statement statement = prepare(sql);
    statement.bindAll(params);
    return statement.step() ? statement.value(0) : QVariant();
}

int Database::changes() const
{
    return sqlite3_changes(m_db);
}

bool Database::isReadOnly() const
{
    return sqlite3_db_readonly(m_db, "main") == 1;
}

void Database::copyInto(Database& target)
{
    sqlite3_backup* backup = sqlite3_backup_init(target.m_db, "main", m_db, "main");
    if (!backup)
        throwStoreError(target.m_db);
    sqlite3_backup_step(backup, -1);
    if (sqlite3_backup_finish(backup) != SQLITE_OK)
        throwStoreError(target.m_db);
}

Transaction::Transaction(Database& db, Lock lock) : m_db(db)
{
    switch (lock) {
    case Lock::Deferred:
        m_db.exec(QStringLiteral("BEGIN"));
        break;
    case Lock::Immediate:
        m_db.exec(QStringLiteral("BEGIN IMMEDIATE"));
        break;
    case Lock::Exclusive:
        m_db.exec(QStringLiteral("BEGIN EXCLUSIVE"));
        break;
    }
}

Transaction::~Transaction()
{
    if (m_open) {
        try {
            m_db.exec(QStringLiteral("ROLLBACK"));
        } catch (const StoreError&) {
            // SQLite has already rolled back when the failure was fatal to the transaction.
        }
    }
}

void Transaction::commit()
{
    m_db.exec(QStringLiteral("COMMIT"));
    m_open = false;
}

} // namespace tarn
