// Imports arbitrary bytes into a scratch store. When the import completes and the
// export takes the rows, the file it writes must import again to the same rows and
// export to the same lines, in the plain form and the protected one alike. An export
// that is refused must leave every row as it was.

#include "classfile/ExportCommand.h"
#include "classfile/ImportCommand.h"
#include "store/Database.h"
#include "store/DefaultRows.h"
#include "store/Schema.h"

#include <QBuffer>
#include <cstdlib>
#include <optional>

using namespace tarn;

namespace
{

struct Scratch {
    Database classDb{QStringLiteral(":memory:"), Database::Open::CreateNew};
    Database refDb{QStringLiteral(":memory:"), Database::Open::CreateNew};

    Scratch()
    {
        schema::create(classDb, schema::dataTables());
        schema::create(refDb, schema::referenceTables());
        addDefaultReferenceRows(refDb);
    }
};

Scratch& scratch()
{
    static Scratch stores;
    return stores;
}

void require(bool holds)
{
    if (!holds)
        std::abort();
}

bool import(const QByteArray& bytes, const QString& name)
{
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    return importClassFile(scratch().classDb, name, in).status == ImportResult::Status::Complete;
}

std::optional<QByteArray> exported(const QString& name, bool protect)
{
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    if (exportConfiguration({scratch().classDb, scratch().refDb},
                            {.configName = name, .modId = QStringLiteral("0"), .protectOutput = protect}, out)
            .error)
        return std::nullopt;
    return out.data();
}

// The rows of a configuration in class order, without the columns the file does not
// carry: w1 is always written as 1, and i9 is past the eight item boxes.
QStringList rows(const QString& name)
{
    QStringList columns = schema::classColumnNames();
    columns.removeAll(QStringLiteral("package_name"));
    columns.removeAll(QStringLiteral("w1"));
    columns.removeAll(QStringLiteral("i9"));
    Statement select = scratch().classDb.prepare(
        QStringLiteral("select %1 from classdef where package_name = ? order by class_num").arg(columns.join(u',')));
    select.bindAll({name});
    QStringList result;
    while (select.step()) {
        QStringList values;
        for (int i = 0; i < columns.size(); ++i)
            values << select.value(i).toString();
        result << values.join(u'\x1F');
    }
    return result;
}

// The file below its two header lines, which name the configuration.
QByteArray body(const QByteArray& file)
{
    const qsizetype first = file.indexOf("\r\n");
    return file.mid(file.indexOf("\r\n", first + 2) + 2);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    scratch().classDb.exec(QStringLiteral("delete from classdef; delete from package"));
    if (!import(bytes, QStringLiteral("first")))
        return 0;
    const QStringList imported = rows(QStringLiteral("first"));
    const std::optional<QByteArray> plain = exported(QStringLiteral("first"), false);
    if (!plain) {
        // a text the file cannot carry is refused: nothing is written and no row changes
        require(rows(QStringLiteral("first")) == imported);
        return 0;
    }
    const QStringList tracked = rows(QStringLiteral("first"));

    require(import(*plain, QStringLiteral("second")));
    require(rows(QStringLiteral("second")) == tracked);
    const std::optional<QByteArray> again = exported(QStringLiteral("second"), false);
    require(again && body(*again) == body(*plain));

    if (const std::optional<QByteArray> protectedFile = exported(QStringLiteral("first"), true)) {
        require(import(*protectedFile, QStringLiteral("protected")));
        require(rows(QStringLiteral("protected")) == tracked);
    } else {
        require(rows(QStringLiteral("first")) == tracked);
    }
    return 0;
}
