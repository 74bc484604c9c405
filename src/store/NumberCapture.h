#pragma once

#include <QtGlobal>
#include <array>
#include <optional>

struct sqlite3;
struct sqlite3_value;

namespace tarn
{

// The whole-number columns of each row of a long walk, taken from SQLite in one call
// per row. Read one by one, each column costs a call into SQLite that checks the
// statement and its connection every time, and a walk over a configuration's classes
// reads some fifty numbers a row. Such a statement selects instead
//   tarn_numbers(?, column, column, ...)
// with this capture bound to that parameter (Statement::bindCapture): as SQLite works
// out each row, the function copies the row's values here, to be read after the step.
class NumberCapture
{
public:
    static constexpr int MaxNumbers = 64;

    // Value k of the current row, or nothing where it is missing (NULL).
    std::optional<qint64> optional(int k) const
    {
        return m_missing[std::size_t(k)] ? std::nullopt : std::optional<qint64>(m_values[std::size_t(k)]);
    }
    // Value k of the current row, 0 where it is missing.
    qint64 value(int k) const { return m_values[std::size_t(k)]; }

    // Called by tarn_numbers() with the row's values; false when there are too many.
    bool take(int count, sqlite3_value** values);

private:
    std::array<qint64, MaxNumbers> m_values{};
    std::array<bool, MaxNumbers> m_missing{};
};

// The pointer type SQLite checks before it hands tarn_numbers() its capture.
inline constexpr const char* NumberCaptureType = "tarn_numbers";

// Makes tarn_numbers() known to a connection as it opens. Only a statement of the
// program can call it: no trigger or view of a store file can.
void addNumberCapture(sqlite3* db);

} // namespace tarn
