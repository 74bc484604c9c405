#include "NumberCapture.h"

#include "Statement.h"

#include <sqlite3.h>

namespace tarn
{

namespace
{

void captureNumbers(sqlite3_context* context, int count, sqlite3_value** values)
{
    auto* capture =
        count > 0 ? static_cast<NumberCapture*>(sqlite3_value_pointer(values[0], NumberCaptureType)) : nullptr;
    if (!capture)
        sqlite3_result_error(context, "tarn_numbers() takes a bound capture first", -1);
    else if (!capture->take(count - 1, values + 1))
        sqlite3_result_error(context, "tarn_numbers() takes at most 64 numbers", -1);
}

} // namespace

bool NumberCapture::take(int count, sqlite3_value** values)
{
    if (count > MaxNumbers)
        return false;
    for (int k = 0; k < count; ++k) {
        m_missing[std::size_t(k)] = sqlite3_value_type(values[k]) == SQLITE_NULL;
        m_values[std::size_t(k)] = sqlite3_value_int64(values[k]);
    }
    return true;
}

void addNumberCapture(sqlite3* db)
{
    if (sqlite3_create_function_v2(db, "tarn_numbers", -1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, captureNumbers,
                                   nullptr, nullptr, nullptr) != SQLITE_OK)
        throwStoreError(db);
}

} // namespace tarn
