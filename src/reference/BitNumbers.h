#pragma once

#include <QString>
#include <optional>

// The arithmetic behind the bit number display and the bit calculator of the item
// and ability editors. An id there is meant to be one bit of a 32-bit sum.
namespace tarn::bits
{

// How many halvings, each rounded half to even, bring the id down to 1 (0 for ids 0
// and 1). For a power of 2 this is its exponent; other ids get a count, not a logarithm.
int halvingCount(qint32 id);

// The bit number shown for the id text of the current row; nothing when the text is
// empty, negative, no whole number or beyond 32 bits, so the display keeps its text.
std::optional<int> bitNumberOfId(const QString& idText);

// A typed bit number as a 16-bit whole number, a fraction rounded half to even;
// nothing when the text is no number or the result does not fit 16 bits.
std::optional<qint16> bitNumberFromText(const QString& text);

inline constexpr int HighestBit = 30;

// The id of a bit: 2 to the power n, for n from 0 to HighestBit; nothing outside.
std::optional<qint32> bitValue(int n);

} // namespace tarn::bits
