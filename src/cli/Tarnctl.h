#pragma once

#include <QStringList>

class QIODevice;
class QTextStream;

namespace tarn::cli
{

// Exit statuses of tarnctl.
inline constexpr int Success = 0;
inline constexpr int Refused = 1;
inline constexpr int Usage = 2;

// Where a command reads and writes: the process's standard streams in tarnctl.
struct Console {
    QIODevice& in;      // raw bytes, for the protect and unprotect filters
    QIODevice& out;     // raw bytes
    QTextStream& text;  // standard output as text
    QTextStream& error; // standard error
};

// Runs one tarnctl command line (without the program name) and gives its exit status.
int run(const QStringList& arguments, Console& console);

} // namespace tarn::cli
