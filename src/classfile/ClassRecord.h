#pragma once

#include "store/ClassColumns.h"

#include <QString>
#include <array>

namespace tarn
{

class NewClassRows;

inline constexpr std::size_t AbilityFlags = classdef::specials.size;
inline constexpr std::size_t ItemFlags = classdef::items.size;

// One class as a class file carries it back, with the fields the reader converted.
struct ClassRecord {
    QString name;
    QString model;
    QString redSkin;
    QString blueSkin;
    qint16 decoySkin = 0;
    std::array<qint16, classdef::weapons.size> weapons{}; // w1 to w10
    std::array<qint16, classdef::grenades.size> grenades{};
    qint16 armor = 0;
    qint16 speed = 0;
    qint16 health = 0;
    std::array<bool, AbilityFlags> abilities{};     // s1 to s21
    std::array<bool, ItemFlags> items{};            // i1 to i9
    std::array<qint16, classdef::ammo.size> ammo{}; // bullets, shells, rockets, grenades, cells, slugs
};

// Bit k of the sum gives flag k+1; higher bits have no flag and are dropped.
template <std::size_t N> std::array<bool, N> spreadBits(qint32 sum)
{
    std::array<bool, N> flags{};
    for (std::size_t k = 0; k < N; ++k)
        flags[k] = (quint32(sum) >> k) & 1U;
    return flags;
}

// Stores the record as a classdef row under the configuration's name: text columns as
// strings, flags as 0 and 1.
void addClassRow(NewClassRows& rows, const ClassRecord& record, const QString& packageName, qint16 classNum);

} // namespace tarn
