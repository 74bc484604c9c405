#pragma once

#include <QString>

namespace tarn
{

// What a record set shows: the rows of one table that the filter keeps, in the given order.
struct RecordSource {
    QString table;
    QString filter; // a condition with "?" parameters; empty keeps every row
    QString order;  // columns, as after "order by"
};

} // namespace tarn
