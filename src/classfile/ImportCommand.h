#pragma once

#include <QString>
#include <QStringList>

class QIODevice;

namespace tarn
{

class Database;

struct ImportResult {
    enum class Status { Complete, BadRecord, Failed };
    Status status = Status::Failed;
    // "Import Complete", "Bad Class Record: " and the line, or what failed and why.
    QString message;
    // Rows stored under the new name: those before a bad record stay, and any other
    // failure stores none.
    int classes = 0;
    // The line of a bad record, which its message leaves out.
    int line = 0;
};

// What a failed import of a file says: "Cannot import FILE: " and why.
QString cannotImport(const QString& file, const QString& why);

// Reads a class file of either form into classdef under newName, taken as typed, and
// adds the package row only when the whole file has been read. On a bad record the
// rows before it are kept with no package row; any other failure leaves the store
// exactly as it was.
ImportResult importClassFile(Database& classDb, const QString& newName, QIODevice& in);
// The same from a file: what to read, and the configuration it becomes.
struct ImportRequest {
    QString file;
    QString newName;
};
ImportResult importClassFile(Database& classDb, const ImportRequest& request);

// What an import of a file would meet, each with its line number. The import would
// complete when problems is empty; warnings name what reads differently elsewhere.
struct ClassFileCheck {
    QStringList problems;
    QStringList warnings;
};

// Reads a class file as the import would, without storing anything.
ClassFileCheck checkClassFile(QIODevice& in);

} // namespace tarn
