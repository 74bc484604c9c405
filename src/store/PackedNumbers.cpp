#include "PackedNumbers.h"

#include "Statement.h"

#include <array>
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
    std::array<char, PackedNumbers::sizeFor(PackedNumbers::MaxNumbers)> packed{};
    quint64 missing = 0;
    for (int k = 0; k < count; ++k) {
        if (sqlite3_value_type(values[k]) == SQLITE_NULL)
            missing |= quint64(1) << k;
        const qint64 number = sqlite3_value_int64(values[k]); // 0 for a missing number
        std::memcpy(packed.data() + PackedNumbers::sizeFor(k), &number, sizeof number);
    }
    std::memcpy(packed.data(), &missing, sizeof missing);
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
