#pragma once

#include "Columns.h"

#include <QLatin1String>
#include <array>
#include <cstddef>
#include <cstdint>

namespace tarn
{

// The columns of classdef, in the order of the table. This is the one place they are
// listed: the schema is made from it, and the rest of the program names a column by
// its enumerator, never by its place or by a text of its own.
enum class ClassColumn : std::uint8_t {
    package_name,
    class_name,
    class_num,
    skin_name1,
    skin_name2,
    model_name,
    w1,
    w2,
    w3,
    w4,
    w5,
    w6,
    w7,
    w8,
    w9,
    w10,
    g1,
    g2,
    g3,
    max_speed,
    max_health,
    max_armor,
    i1,
    i2,
    i3,
    i4,
    i5,
    i6,
    i7,
    i8,
    i9,
    s1,
    s2,
    s3,
    s4,
    s5,
    s6,
    s7,
    s8,
    s9,
    s10,
    s11,
    s12,
    s13,
    s14,
    s15,
    s16,
    s17,
    s18,
    s19,
    s20,
    s21,
    decoyskin,
    maxbullets,
    maxshells,
    maxrockets,
    maxgrenades,
    maxcells,
    maxslugs,
};

namespace classdef
{

inline constexpr std::size_t ColumnCount = 59;

struct Entry {
    ClassColumn column;
    ColumnDef def;
};

using K = ColumnKind;
using C = ClassColumn;

// Each column's stored name and kind, beside its enumerator.
inline constexpr std::array<Entry, ColumnCount> entries{{
    {C::package_name, {"package_name", K::Text}},
    {C::class_name, {"class_name", K::Text}},
    {C::class_num, {"class_num", K::Integer}},
    {C::skin_name1, {"skin_name1", K::Text}},
    {C::skin_name2, {"skin_name2", K::Text}},
    {C::model_name, {"model_name", K::Text}},
    {C::w1, {"w1", K::Integer}},
    {C::w2, {"w2", K::Integer}},
    {C::w3, {"w3", K::Integer}},
    {C::w4, {"w4", K::Integer}},
    {C::w5, {"w5", K::Integer}},
    {C::w6, {"w6", K::Integer}},
    {C::w7, {"w7", K::Integer}},
    {C::w8, {"w8", K::Integer}},
    {C::w9, {"w9", K::Integer}},
    {C::w10, {"w10", K::Integer}},
    {C::g1, {"g1", K::Integer}},
    {C::g2, {"g2", K::Integer}},
    {C::g3, {"g3", K::Integer}},
    {C::max_speed, {"max_speed", K::Integer}},
    {C::max_health, {"max_health", K::Integer}},
    {C::max_armor, {"max_armor", K::Integer}},
    {C::i1, {"i1", K::Flag}},
    {C::i2, {"i2", K::Flag}},
    {C::i3, {"i3", K::Flag}},
    {C::i4, {"i4", K::Flag}},
    {C::i5, {"i5", K::Flag}},
    {C::i6, {"i6", K::Flag}},
    {C::i7, {"i7", K::Flag}},
    {C::i8, {"i8", K::Flag}},
    {C::i9, {"i9", K::Flag}},
    {C::s1, {"s1", K::Flag}},
    {C::s2, {"s2", K::Flag}},
    {C::s3, {"s3", K::Flag}},
    {C::s4, {"s4", K::Flag}},
    {C::s5, {"s5", K::Flag}},
    {C::s6, {"s6", K::Flag}},
    {C::s7, {"s7", K::Flag}},
    {C::s8, {"s8", K::Flag}},
    {C::s9, {"s9", K::Flag}},
    {C::s10, {"s10", K::Flag}},
    {C::s11, {"s11", K::Flag}},
    {C::s12, {"s12", K::Flag}},
    {C::s13, {"s13", K::Flag}},
    {C::s14, {"s14", K::Flag}},
    {C::s15, {"s15", K::Flag}},
    {C::s16, {"s16", K::Flag}},
    {C::s17, {"s17", K::Flag}},
    {C::s18, {"s18", K::Flag}},
    {C::s19, {"s19", K::Flag}},
    {C::s20, {"s20", K::Flag}},
    {C::s21, {"s21", K::Flag}},
    {C::decoyskin, {"decoyskin", K::Integer}},
    {C::maxbullets, {"maxbullets", K::Integer}},
    {C::maxshells, {"maxshells", K::Integer}},
    {C::maxrockets, {"maxrockets", K::Integer}},
    {C::maxgrenades, {"maxgrenades", K::Integer}},
    {C::maxcells, {"maxcells", K::Integer}},
    {C::maxslugs, {"maxslugs", K::Integer}},
}};

constexpr std::size_t indexOf(ClassColumn column)
{
    return std::size_t(column);
}

// An entry out of its enumerator's place fails the build.
constexpr bool entriesInOrder()
{
    for (std::size_t i = 0; i < ColumnCount; ++i) {
        if (indexOf(entries[i].column) != i)
            return false;
    }
    return indexOf(ClassColumn::maxslugs) + 1 == ColumnCount;
}
static_assert(entriesInOrder(), "classdef::entries must list every ClassColumn once, in the enumeration's order");

// The table's columns as the schema takes them.
inline constexpr std::array<ColumnDef, ColumnCount> columns = [] {
    std::array<ColumnDef, ColumnCount> defs{};
    for (std::size_t i = 0; i < ColumnCount; ++i)
        defs[i] = entries[i].def;
    return defs;
}();

constexpr ColumnKind kindOf(ClassColumn column)
{
    return columns[indexOf(column)].kind;
}

inline QLatin1String nameOf(ClassColumn column)
{
    return QLatin1String(columns[indexOf(column)].name);
}

// Columns that follow one another and hold the same kind: w1 to w10 and the like.
// Element k of an array given for a series goes to its column k.
template <ClassColumn First, std::size_t Count> struct Series {
    static constexpr ClassColumn first = First;
    static constexpr std::size_t size = Count;

    static constexpr ClassColumn at(std::size_t k) { return ClassColumn(indexOf(First) + k); }

    static constexpr bool sameKind()
    {
        for (std::size_t k = 0; k < Count; ++k) {
            if (kindOf(at(k)) != kindOf(First))
                return false;
        }
        return true;
    }
    static_assert(Count > 0 && indexOf(First) + Count <= ColumnCount, "a series stays within classdef");
    static_assert(sameKind(), "the columns of a series hold one kind");
};

inline constexpr Series<ClassColumn::w1, 10> weapons{};
inline constexpr Series<ClassColumn::g1, 3> grenades{};
inline constexpr Series<ClassColumn::i1, 9> items{};
inline constexpr Series<ClassColumn::s1, 21> specials{};
// Bullets, shells, rockets, grenades, cells and slugs.
inline constexpr Series<ClassColumn::maxbullets, 6> ammo{};
static_assert(weapons.at(9) == ClassColumn::w10 && grenades.at(2) == ClassColumn::g3 &&
              items.at(8) == ClassColumn::i9 && specials.at(20) == ClassColumn::s21 &&
              ammo.at(5) == ClassColumn::maxslugs);

} // namespace classdef

} // namespace tarn
