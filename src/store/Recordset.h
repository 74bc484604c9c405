#pragma once

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <optional>
#include <vector>

#include "RecordSource.h"
#include "Statement.h"

namespace tarn
{

class Database;

// A dynaset over one table: the set of rows is fixed when it is opened, in the
// statement's order; a row's values are read fresh at each look; a row added
// through it stands at the end of the set until it is opened again; after a
// delete there is no current row until the next move.
class Recordset
{
public:
    // The parameters are bound to the "?" of the source's filter, in turn.
    Recordset(Database& db, const RecordSource& source, QVariantList params = {});

    const QString& table() const { return m_table; }
    const QString& noun() const { return m_noun; }
    const QStringList& columns() const { return m_columns; }

    // Runs the statement afresh; the first row, if any, becomes current.
    void requery();
    int recordCount() const { return int(m_ids.size()); }
    bool isEmpty() const { return m_ids.empty(); }
    bool bof() const { return m_position < 0; }
    bool eof() const { return m_position >= recordCount(); }
    bool hasCurrent() const { return !m_noCurrent && !bof() && !eof(); }
    // Position of the current row in the set, from 0.
    int position() const { return m_position; }
    // The rowid of the current row; only while there is one.
    qint64 currentRowId() const { return m_ids[size_t(m_position)]; }

    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    // Makes the row of the given position current, from 0.
    void moveTo(int position);
    // Where the set stands, to go back to when the row a move came to cannot be read.
    struct Place {
        int position;
        bool noCurrent;
    };
    Place place() const { return {m_position, m_noCurrent}; }
    void moveBack(Place place);
    // The first position in the set of a row of the table, by its rowid.
    std::optional<int> positionOf(qint64 rowId) const;

    // The current row's value of a column; a null QVariant is a missing value. Reading
    // or writing a row another program deleted throws a StoreError that is gone().
    QVariant value(const QString& column) const;
    QVariantMap currentRow() const;

    // Writes the given columns to the current row.
    void update(const QVariantMap& changes);
    // Stores a new row and puts it at the end of the set; the current row stays.
    void addNew(const QVariantMap& values);
    // Removes the current row from the table; no row is current afterwards.
    void deleteCurrent();

private:
    void requireCurrent(const char* operation) const;
    [[noreturn]] void gone(const char* which) const;

    Database& m_db;
    QString m_table;
    QString m_noun;
    QString m_idSql;
    QVariantList m_params;
    mutable Statement m_readRow;
    QStringList m_columns;
    std::vector<qint64> m_ids;
    int m_position = -1;
    bool m_noCurrent = false;
};

} // namespace tarn
