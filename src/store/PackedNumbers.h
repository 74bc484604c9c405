#pragma once

#include <QByteArrayView>
#include <QtGlobal>
#include <cstring>
#include <optional>

struct sqlite3;

namespace tarn
{

// The whole-number columns of a row, packed by SQLite into one value. Read one by one,
// each column costs a call into SQLite that checks the statement and its connection
// every time, and a walk over a configuration's classes reads some fifty numbers a row.
// Such a statement selects instead
//   tarn_numbers(column, column, ...)
// whose value is a blob: a 64-bit mask of the missing (NULL) numbers, then each number
// in 8 bytes. It is a value like any other, so it comes out right whatever plan SQLite
// takes (a sort included), and a row's numbers are read with one call.
class PackedNumbers
{
public:
    static constexpr int MaxNumbers = 64;

    // The size of the blob that packs so many numbers.
    static constexpr qsizetype sizeFor(int numbers) { return qsizetype(8) * (numbers + 1); }

    PackedNumbers() = default;
    // Views the blob, which must outlive this and be sizeFor() the numbers read.
    explicit PackedNumbers(QByteArrayView packed) : m_packed(packed.data())
    {
        std::memcpy(&m_missing, m_packed, sizeof m_missing);
    }

    // Number k, or nothing where it is missing.
    std::optional<qint64> optional(int k) const
    {
        return (m_missing >> k & 1U) != 0 ? std::nullopt : std::optional<qint64>(value(k));
    }
    // Number k, 0 where it is missing.
    qint64 value(int k) const
    {
        qint64 number = 0;
        std::memcpy(&number, m_packed + sizeFor(k), sizeof number);
        return number;
    }

private:
    const char* m_packed = nullptr;
    quint64 m_missing = 0;
};

// Makes tarn_numbers() known to a connection as it opens.
void addNumberPacking(sqlite3* db);

} // namespace tarn
