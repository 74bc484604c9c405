#pragma once

#include "ClassColumns.h"
#include "PackedNumbers.h"
#include "Statement.h"

#include <QString>
#include <array>
#include <optional>

namespace tarn
{

class Database;

namespace classrows
{

// What a walk over classes reads: every column but package_name (the configuration it
// walks), w1 (always the blaster) and i9 (a box no window shows).
constexpr bool isRead(ClassColumn column)
{
    return column != ClassColumn::package_name && column != ClassColumn::w1 && column != ClassColumn::i9;
}

// Where each column read stands: a text among the result columns, behind the rowid; a
// number among the packed ones, which follow the texts. -1 where the column is not of
// that kind or not read.
struct Places {
    std::array<int, classdef::ColumnCount> text{};
    std::array<int, classdef::ColumnCount> number{};
    int texts = 0;
    int numbers = 0;
};

inline constexpr Places places = [] {
    Places at;
    for (std::size_t c = 0; c < classdef::ColumnCount; ++c) {
        const bool read = isRead(ClassColumn(c));
        const bool text = classdef::columns[c].kind == ColumnKind::Text;
        at.text[c] = read && text ? 1 + at.texts++ : -1;
        at.number[c] = read && !text ? at.numbers++ : -1;
    }
    return at;
}();
static_assert(places.numbers <= PackedNumbers::MaxNumbers, "every number a walk reads fits one packing");

} // namespace classrows

// The classes of a configuration, or one class, as the export and its checks walk them,
// each column read by name. The texts are result columns; the numbers, some fifty a
// row, come packed in one (see PackedNumbers).
class ClassRows
{
public:
    // The classes of a configuration in the order the class editor shows them.
    static ClassRows ofConfig(Database& classDb, const QString& config);
    // One class, by its rowid.
    static ClassRows byRowId(Database& classDb, qint64 rowId);

    // Advances to the next row; false when there is none left.
    bool step();
    qint64 rowId() const { return m_rows.int64(0); }
    // Into a text kept from row to row, so that a walk reuses its room.
    void readText(ClassColumn column, QString& into) const
    {
        m_rows.readText(place(classrows::places.text, column), into);
    }
    // A number, or nothing where it is missing.
    std::optional<qint64> number(ClassColumn column) const
    {
        return m_numbers.optional(place(classrows::places.number, column));
    }
    // A box is ticked when it holds 1; a missing value is not.
    bool isTicked(ClassColumn column) const { return m_numbers.value(place(classrows::places.number, column)) == 1; }
    template <ClassColumn First, std::size_t Count>
    std::array<std::optional<qint64>, Count> numbers(classdef::Series<First, Count> series) const
    {
        std::array<std::optional<qint64>, Count> values;
        for (std::size_t k = 0; k < Count; ++k)
            values[k] = number(series.at(k));
        return values;
    }

private:
    ClassRows(Database& classDb, const QString& sql);

    static int place(const std::array<int, classdef::ColumnCount>& places, ClassColumn column)
    {
        const int at = places[classdef::indexOf(column)];
        if (at < 0) [[unlikely]]
            notRead(column);
        return at;
    }
    // Throws StoreError: a column the walk does not read, or not of that kind, is asked for.
    [[noreturn]] static void notRead(ClassColumn column);

    Statement m_rows;
    PackedNumbers m_numbers; // of the current row, viewing SQLite's copy until the next step
};

} // namespace tarn
