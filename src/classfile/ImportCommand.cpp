#include "ImportCommand.h"

#include "ClassFileError.h"
#include "ClassFileReader.h"
#include "store/Classes.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "store/StoreError.h"

#include <QDir>
#include <QFile>

namespace tarn
{

namespace
{

using Status = ImportResult::Status;

const QString BadRecordPrefix = QStringLiteral("Bad Class Record: ");

// One import into the store. Rows go in as the records are read; the package row
// goes in last, so the configuration is listed only after a complete read.
class ImportRun
{
public:
    ImportRun(Database& db, QString newName) : m_db(db), m_name(std::move(newName)), m_transaction(db), m_rows(db) {}

    ImportResult run(QIODevice& in)
    {
        try {
            ClassFileReader reader(in);
            while (const std::optional<RecordEvent> event = reader.next()) {
                if (std::optional<ImportResult> stopped = take(*event))
                    return *stopped;
            }
            addConfiguration(m_db, m_name);
            m_transaction.commit();
            return {Status::Complete, QStringLiteral("Import Complete"), m_stored};
        } catch (const Error& e) {
            return fail(e.message());
        }
    }

private:
    // Stores one record; a result when the import stops at it.
    std::optional<ImportResult> take(const RecordEvent& event)
    {
        if (const auto* bad = std::get_if<BadRecord>(&event))
            return keepRowsRead(*bad);
        const auto& read = std::get<ReadClass>(event);
        if (!read.problems.isEmpty())
            return fail(read.problems.join(u'\n'));
        addClassRow(m_rows, read.record, m_name, read.number);
        ++m_stored;
        return std::nullopt;
    }

    // At a bad record the rows of the records before it are kept, without a package
    // row; only a store that cannot keep them loses them.
    ImportResult keepRowsRead(const BadRecord& bad)
    {
        const QString message = BadRecordPrefix + bad.text;
        try {
            m_transaction.commit();
            return {Status::BadRecord, message, m_stored, bad.line};
        } catch (const StoreError& e) {
            return {Status::Failed, message + u'\n' + e.message(), 0};
        }
    }

    // Any other failure leaves the store as it was: the transaction is rolled back.
    static ImportResult fail(const QString& message) { return {Status::Failed, message, 0}; }

    Database& m_db;
    QString m_name;
    Transaction m_transaction;
    NewClassRows m_rows;
    int m_stored = 0;
};

QStringList problemsOf(const RecordEvent& event)
{
    if (const auto* bad = std::get_if<BadRecord>(&event))
        return {QStringLiteral("line %1: %2").arg(bad->line).arg(BadRecordPrefix + bad->text)};
    return std::get<ReadClass>(event).problems;
}

} // namespace

ImportResult importClassFile(Database& classDb, const QString& newName, QIODevice& in)
{
    try {
        ImportRun import(classDb, newName);
        return import.run(in);
    } catch (const StoreError& e) {
        return {Status::Failed, e.message(), 0};
    }
}

QString cannotImport(const QString& file, const QString& why)
{
    return QStringLiteral("Cannot import %1: %2").arg(file, why);
}

ImportResult importClassFile(Database& classDb, const ImportRequest& request)
{
    const QString file = QDir::toNativeSeparators(request.file);
    QFile in(request.file);
    if (!in.open(QIODevice::ReadOnly))
        return {Status::Failed, QStringLiteral("Cannot open %1: %2").arg(file, in.errorString()), 0};
    ImportResult result = importClassFile(classDb, request.newName, in);
    if (result.status == Status::Failed)
        result.message = cannotImport(file, result.message);
    return result;
}

ClassFileCheck checkClassFile(QIODevice& in)
{
    ClassFileCheck check;
    std::optional<ClassFileReader> reader;
    try {
        reader.emplace(in);
        while (const std::optional<RecordEvent> event = reader->next())
            check.problems << problemsOf(*event);
    } catch (const TooFewLinesError& e) {
        check.problems << (e.lineFeeds() ? QStringLiteral("The file's lines end with a line feed alone, which a class "
                                                          "file does not allow: its lines end with a carriage return "
                                                          "and a line feed, and only a carriage return ends a line.")
                                         : e.message());
    } catch (const ClassFileError& e) {
        check.problems << e.message();
    }
    if (reader) {
        for (int line : reader->linesWithLineFeeds())
            check.warnings << QStringLiteral("line %1: a line feed without a carriage return before it does not "
                                             "end the line.")
                                  .arg(line);
    }
    return check;
}

} // namespace tarn
