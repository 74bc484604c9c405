#pragma once

#include <QByteArrayView>
#include <QVariant>
#include <QVariantList>
#include <optional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace tarn
{

// The error of the connection's last call: a store held by another program is told
// as busy, with what to do about it; anything else in SQLite's words, after what.
[[noreturn]] void throwStoreError(sqlite3* db, const QString& what = {});

// One prepared statement. Parameters are bound by position from 1; a null QVariant
// binds SQL NULL, and a NULL column reads back as a null QVariant.
class Statement
{
public:
    Statement(sqlite3* db, const QString& sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;

    void bind(int index, const QVariant& value);
    void bindAll(const QVariantList& values);
    // For rows written in bulk: the same as bind() without a QVariant in between.
    void bindInt64(int index, qint64 value);
    void bindNull(int index);
    void bindText(int index, const QString& value);
    // Advances to the next row; false when the statement is done.
    bool step();
    // Runs a statement that returns no rows, then resets it for the next use.
    void run(const QVariantList& values = {});
    void reset();
    // Makes the statement ready to run again with the bindings it has, for a caller
    // that binds every parameter anew before each run.
    void rewind();

    int parameterCount() const;
    int columnCount() const;
    QString columnName(int index) const;
    QVariant value(int index) const;
    bool isNull(int index) const;
    qint64 int64(int index) const;
    // The number, or nothing for a missing value, in one look at the column.
    std::optional<qint64> optionalInt64(int index) const;
    QString text(int index) const;
    // The same into a text kept from row to row, so that a walk over many rows reuses its room.
    void readText(int index, QString& into) const;
    // The bytes of a blob, valid until the next step.
    QByteArrayView blob(int index) const;

private:
    [[noreturn]] void fail(const QString& what) const;

    sqlite3* m_db = nullptr;
    sqlite3_stmt* m_stmt = nullptr;
    // The bytes of each text parameter, kept here so that SQLite reads them in place
    // instead of copying every text of a bulk import.
    std::vector<QByteArray> m_texts;
};

} // namespace tarn
