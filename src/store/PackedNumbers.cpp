#include "PackedNumbers.h"

#include "Statement.h"

#include <array>
#include <cstddef>
#include <sqlite3.h>

namespace tarn
{

namespace
{

void packNumbers(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (count > PackedNumbers::MaxNumbers) {
        sqlite3_result_error(context, "tarn_numbers() packs at most 64 numbers", -1);
        return;
    }
    std::array<qint64, PackedNumbers::MaxNumbers + 1> packed; // the mask, then the numbers
    quint64 missing = 0;
    for (int k = 0; k < count; ++k) {
        const qint64 number = sqlite3_value_int64(values[k]);
        if (number == 0 && sqlite3_value_type(values[k]) == SQLITE_NULL) // a missing number reads as 0
            missing |= quint64(1) << k;
        packed[std::size_t(k) + 1] = number;
    }
    packed[0] = qint64(missing);
    sqlite3_result_blob(context, packed.data(), int(PackedNumbers::sizeFor(count)), SQLITE_TRANSIENT);
}

} // namespace

void addNumberPacking(sqlite3* db)
{
    // Deterministic and without side effects, but kept to the program's own statements.
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    if (sqlite3_create_function_v2(db, "tarn_numbers", -1, flags, nullptr, packNumbers, nullptr, nullptr, nullptr) !=
        SQLITE_OK)
        throwStoreError(db);
}

} // namespace tarn
