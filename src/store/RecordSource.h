#pragma once

#include <QString>

namespace tarn
{

// What a record set shows: the rows of one table that the filter keeps, in the given order.
struct RecordSource {
    QString table;
    QString filter; // a condition with "?" parameters; empty keeps every row
    QString order;  // columns, as after "order by"
    QString noun;   // what a row is to the author: "class", "weapon"
};

} // namespace tarn
