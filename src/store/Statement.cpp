#include "Statement.h"

#include "StoreError.h"

#include <QDir>
#include <algorithm>
#include <memory>
#include <sqlite3.h>

namespace tarn
{

Statement::Statement(sqlite3* db, const QString& sql) : m_db(db)
{
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(m_db, utf8.constData(), int(utf8.size()), &m_stmt, nullptr) != SQLITE_OK)
        fail({}); // the statement itself means nothing to an author
}

Statement::~Statement()
{
    sqlite3_finalize(m_stmt);
}

Statement::Statement(Statement&& other) noexcept
    : m_db(other.m_db), m_stmt(other.m_stmt), m_texts(std::move(other.m_texts))
{
    other.m_stmt = nullptr;
}

Statement& Statement::operator=(Statement&& other) noexcept
{
    if (this != &other) {
        sqlite3_finalize(m_stmt);
        m_db = other.m_db;
        m_stmt = other.m_stmt;
        m_texts = std::move(other.m_texts);
        other.m_stmt = nullptr;
    }
    return *this;
}

void Statement::bind(int index, const QVariant& value)
{
    int rc = SQLITE_OK;
    if (value.isNull()) {
        rc = sqlite3_bind_null(m_stmt, index);
    } else {
        switch (value.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Short:
        case QMetaType::LongLong:
            rc = sqlite3_bind_int64(m_stmt, index, value.toLongLong());
            break;
        case QMetaType::Double:
            rc = sqlite3_bind_double(m_stmt, index, value.toDouble());
            break;
        default: {
            const QByteArray utf8 = value.toString().toUtf8();
            rc = sqlite3_bind_text(m_stmt, index, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
        }
        }
    }
    if (rc != SQLITE_OK)
        fail(QStringLiteral("Cannot bind parameter %1").arg(index));
}

void Statement::bindNull(int index)
{
    if (sqlite3_bind_null(m_stmt, index) != SQLITE_OK)
        fail(QStringLiteral("Cannot bind parameter %1").arg(index));
}

void Statement::bindInt64(int index, qint64 value)
{
    if (sqlite3_bind_int64(m_stmt, index, value) != SQLITE_OK)
        fail(QStringLiteral("Cannot bind parameter %1").arg(index));
}

void Statement::bindText(int index, const QString& value)
{
    if (m_texts.size() < std::size_t(index))
        m_texts.resize(std::size_t(index));
    QByteArray& held = m_texts[std::size_t(index) - 1]; // bound in place: it stays until bound again
    if (std::all_of(value.cbegin(), value.cend(), [](QChar c) { return c.unicode() < 0x80; })) {
        held.resize(value.size()); // plain ASCII, the usual text, in the room the last value left
        std::transform(value.cbegin(), value.cend(), held.begin(), [](QChar c) { return char(c.unicode()); });
    } else {
        held = value.toUtf8();
    }
    if (sqlite3_bind_text(m_stmt, index, held.constData(), int(held.size()), SQLITE_STATIC) != SQLITE_OK)
        fail(QStringLiteral("Cannot bind parameter %1").arg(index));
}

void Statement::bindAll(const QVariantList& values)
{
    for (int i = 0; i < values.size(); ++i)
        bind(i + 1, values[i]);
}

bool Statement::step()
{
    const int rc = sqlite3_step(m_stmt);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    // The statement is reset once the error has been read, so that it can run again.
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> resetAfter(m_stmt, sqlite3_reset);
    throwStoreError(m_db);
}

void Statement::run(const QVariantList& values)
{
    reset();
    bindAll(values);
    while (step()) {
    }
    reset();
}

void Statement::reset()
{
    rewind();
    sqlite3_clear_bindings(m_stmt);
}

void Statement::rewind()
{
    sqlite3_reset(m_stmt);
}

int Statement::parameterCount() const
{
    return sqlite3_bind_parameter_count(m_stmt);
}

int Statement::columnCount() const
{
    return sqlite3_column_count(m_stmt);
}

QString Statement::columnName(int index) const
{
    return QString::fromUtf8(sqlite3_column_name(m_stmt, index));
}

QVariant Statement::value(int index) const
{
    switch (sqlite3_column_type(m_stmt, index)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return {qlonglong(sqlite3_column_int64(m_stmt, index))};
    case SQLITE_FLOAT:
        return {sqlite3_column_double(m_stmt, index)};
    default:
        return {text(index)};
    }
}

bool Statement::isNull(int index) const
{
    return sqlite3_column_type(m_stmt, index) == SQLITE_NULL;
}

std::optional<qint64> Statement::optionalInt64(int index) const
{
    sqlite3_value* value = sqlite3_column_value(m_stmt, index);
    if (sqlite3_value_type(value) == SQLITE_NULL)
        return std::nullopt;
    return sqlite3_value_int64(value);
}

qint64 Statement::int64(int index) const
{
    return sqlite3_column_int64(m_stmt, index);
}

void Statement::readText(int index, QString& into) const
{
    const auto* data = sqlite3_column_text(m_stmt, index);
    const qsizetype size = sqlite3_column_bytes(m_stmt, index);
    if (!std::all_of(data, data + size, [](unsigned char byte) { return byte < 0x80; })) {
        into = QString::fromUtf8(reinterpret_cast<const char*>(data), size);
        return;
    }
    into.resize(size); // within the room the last row left, unless this text is longer
    std::transform(data, data + size, into.data(), [](unsigned char byte) { return QChar(byte); });
}

QByteArrayView Statement::blob(int index) const
{
    const void* data = sqlite3_column_blob(m_stmt, index); // before its size, as SQLite asks
    return {static_cast<const char*>(data), sqlite3_column_bytes(m_stmt, index)};
}

QString Statement::text(int index) const
{
    const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, index));
    return QString::fromUtf8(data, sqlite3_column_bytes(m_stmt, index));
}

void Statement::fail(const QString& what) const
{
    throwStoreError(m_db, what);
}

// What went wrong, in the words of a mod author rather than of SQLite, whose own words
// follow in brackets for whoever has to dig further.
void throwStoreError(sqlite3* db, const QString& what)
{
    const QString file = QDir::toNativeSeparators(QString::fromUtf8(sqlite3_db_filename(db, "main")));
    const QString why = QString::fromUtf8(sqlite3_errmsg(db));
    const auto said = [&](const char* words) {
        return QStringLiteral("%1 %2 (%3).").arg(file, QLatin1String(words), why);
    };
    switch (sqlite3_errcode(db) & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw StoreError(QStringLiteral("%1 is busy: another program is writing to it (%2). Close that program or "
                                        "wait until it is done, then try again.")
                             .arg(file, why),
                         StoreError::Cause::Busy);
    case SQLITE_CORRUPT:
        throw StoreError(said("is damaged: part of it cannot be read. Restore it from a backup"));
    case SQLITE_NOTADB:
        throw StoreError(said("is not a store of this program: it is no database at all"));
    case SQLITE_FULL:
        throw StoreError(said("cannot take the change: the disk is full. Make room, then try again"));
    case SQLITE_IOERR:
        throw StoreError(said("could not be read or written: the disk or its file system failed"));
    case SQLITE_READONLY:
        throw StoreError(said("cannot be changed: it is read-only for this program"));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        throw StoreError(said("cannot be opened: it is missing or this program may not use it"));
    default:
        throw StoreError(what.isEmpty() ? QStringLiteral("%1: %2").arg(file, why)
                                        : QStringLiteral("%1: %2: %3").arg(file, what, why));
    }
}

} // namespace tarn
