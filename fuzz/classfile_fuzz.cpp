// Feeds arbitrary bytes to the class file reader, through the check and through an
// import into a store in memory, and holds them to what the two must agree on.

#include "classfile/Cp1252.h"
#include "classfile/ImportCommand.h"
#include "classfile/Protection.h"
#include "store/Database.h"
#include "store/Schema.h"

#include <QBuffer>
#include <cstdlib>

using namespace tarn;

namespace
{

Database& store()
{
    static Database db(QStringLiteral(":memory:"), Database::Open::CreateNew);
    static const bool created = (schema::create(db, schema::dataTables()), true);
    Q_UNUSED(created);
    return db;
}

void require(bool holds)
{
    if (!holds)
        std::abort();
}

QStringList check(const QByteArray& bytes)
{
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    return checkClassFile(in).problems;
}

ImportResult import(const QByteArray& bytes)
{
    QBuffer in;
    in.setData(bytes);
    in.open(QIODevice::ReadOnly);
    const ImportResult result = importClassFile(store(), QStringLiteral("fuzz"), in);
    store().exec(QStringLiteral("delete from classdef; delete from package"));
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QStringList problems = check(bytes);
    const ImportResult result = import(bytes);
    // One reader serves both: the import completes exactly when the check finds nothing.
    require((result.status == ImportResult::Status::Complete) == problems.isEmpty());
    require(encodeCp1252(decodeCp1252(bytes)).bytes == bytes);
    const QByteArray line = bytes.left(256);
    require(unprotectLine(protectLine(line, true)).size() == line.size());
    return 0;
}
