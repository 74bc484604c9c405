#pragma once

#include "Statement.h"

#include <QString>
#include <chrono>

struct sqlite3;

namespace tarn
{

// An open SQLite database file. Opening never creates a file by accident: an
// existing store is opened read-write (or read-only, on request), and a new one is made
// only on request.
class Database
{
public:
    enum class Open { Existing, CreateNew, ReadOnly };
    // How long a statement waits for another program (the workbench, a build script)
    // to finish its write before it gives up with the store busy.
    static constexpr std::chrono::milliseconds DefaultBusyWait{5000};

    Database(const QString& path, Open how, std::chrono::milliseconds busyWait = DefaultBusyWait);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const QString& path() const { return m_path; }
    Statement prepare(const QString& sql);
    // Runs one or more statements that return no rows.
    void exec(const QString& sql);
    qint64 lastInsertRowId() const;
    // Rows the last insert, update or delete touched.
    int changes() const;
    // True when the file could only be opened for reading (its permissions, a read-only disk).
    bool isReadOnly() const;
    // SQLite's online backup: the whole database, as one consistent state, copied into
    // the other while both stay open. Throws StoreError naming the file that failed.
    void copyInto(Database& target);
    // The first column of the first row, or a null QVariant when there is no row.
    QVariant scalar(const QString& sql, const QVariantList& params = {});

private:
    sqlite3* m_db = nullptr;
    QString m_path;
};

// Commits on commit(); rolls back if left before that, so a failed step leaves the
// store as it was.
class Transaction
{
public:
    // Immediate takes the write lock at once; Exclusive also keeps readers out, so that
    // its commit can never wait on them.
    enum class Lock { Deferred, Immediate, Exclusive };
    explicit Transaction(Database& db, Lock lock = Lock::Immediate);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();

private:
    Database& m_db;
    bool m_open = true;
};

} // namespace tarn
