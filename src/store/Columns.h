#pragma once

#include <span>

namespace tarn
{

// What a column holds, as the windows and the class file see it.
enum class ColumnKind {
    Text,    // a string
    Integer, // signed 16-bit whole number
    Long,    // signed 32-bit whole number
    Flag,    // 0 or 1, bound to a check box
    Open,    // free text the program never computes with
};

struct ColumnDef {
    const char* name = nullptr;
    ColumnKind kind = ColumnKind::Text;
};

struct TableDef {
    const char* name;
    std::span<const ColumnDef> columns;
};

} // namespace tarn
