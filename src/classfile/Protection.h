#pragma once

#include <QByteArray>
#include <array>

namespace tarn
{

// The fields of one class file line: entries 1 to 30; entry 0 is never used, so the
// entry number is the field number of the format. Each views the line it was cut from.
using Tokens = std::array<QByteArrayView, 31>;

// The protected form of a line when protectOutput is set, else the line as it is.
// A line keeps its length; the thresholds are on the byte codes of the line.
QByteArray protectLine(const QByteArray& line, bool protectOutput);
// The protected form, made in the bytes themselves.
void protectInPlace(QByteArray& bytes);
// Works on lines of either form, so one reading path serves both.
QByteArray unprotectLine(const QByteArray& line);
// The same, made in the bytes themselves.
void unprotectInPlace(QByteArray& bytes);
// Cuts an unprotected line at blanks (code 32 only); a run of blanks is one separator,
// a leading blank leaves entry 1 empty, and fields past the thirtieth have no entry and
// are dropped. The tokens view the line, which must outlive them.
Tokens splitTokens(QByteArrayView plainLine);

} // namespace tarn
