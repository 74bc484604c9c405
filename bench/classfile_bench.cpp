// The class file side of the benchmark: makes the workload and runs one export or
// import per process, so that the script around it can time each and read its peak
// memory beside the sqlite3 shell doing the same rows.
//
//   classfile_bench generate DIR CLASSES   a data directory with CLASSES classes under "Bench"
//   classfile_bench export DIR FILE        the protected class file of "Bench"
//   classfile_bench import DIR FILE NAME   FILE as the new configuration NAME
//   classfile_bench copy DIR NAME          Make Copy of "Bench" as NAME
//   classfile_bench delete DIR             deletes the configuration "Bench"

#include "classfile/ExportCommand.h"
#include "classfile/ImportCommand.h"
#include "core/Stores.h"
#include "store/Configurations.h"
#include "store/Schema.h"
#include "store/StoreError.h"

#include <QHash>
#include <QRandomGenerator>
#include <QTextStream>

using namespace tarn;

namespace
{

const QString Config = QStringLiteral("Bench");

// A class as an author might make one: weapons and grenades that the pickers offer,
// a few boxes ticked, plain numbers.
QVariantList benchClass(int number, QRandomGenerator& random)
{
    QVariantList row{Config,
                     QStringLiteral("Class %1").arg(number),
                     number,
                     QStringLiteral("red%1").arg(number % 7),
                     QStringLiteral("blue%1").arg(number % 7),
                     QStringLiteral("model%1").arg(number % 13),
                     1};
    for (int slot = 2; slot <= 10; ++slot)
        row << (slot < 5 ? 2 + int(random.bounded(9)) : 0);
    row << 1 + int(random.bounded(4)) << 0 << 0 << 200 + int(random.bounded(200)) << 100 << 50;
    for (int flag = 0; flag < 30; ++flag)
        row << (flag != 8 && random.bounded(4) == 0 ? 1 : 0);
    row << number % 3 << 100 << 50 << 25 << 10 << 100 << 10;
    return row;
}

void generate(Database& classDb, int classes)
{
    const QStringList columns = schema::classColumnNames();
    Transaction transaction(classDb);
    classDb.prepare(QStringLiteral("insert into package (package_name) values (?)")).run({Config});
    Statement insert = classDb.prepare(QStringLiteral("insert into classdef (%1) values (%2)")
                                           .arg(columns.join(u", "), QStringList(columns.size(), "?").join(u", ")));
    QRandomGenerator random(classes);
    for (int number = 1; number <= classes; ++number)
        insert.run(benchClass(number, random));
    transaction.commit();
}

int fail(const QString& message)
{
    QTextStream(stderr) << message << Qt::endl;
    return 1;
}

bool usageFits(const QStringList& args)
{
    const QHash<QString, qsizetype> arguments{
        {"generate", 3}, {"export", 3}, {"import", 4}, {"copy", 3}, {"delete", 2}};
    return !args.isEmpty() && arguments.value(args[0]) == args.size();
}

int run(const QStringList& args)
{
    Stores stores = openStores(args[1]);
    if (args[0] == QLatin1String("generate")) {
        generate(*stores.classDb, args[2].toInt());
        return 0;
    }
    if (args[0] == QLatin1String("export")) {
        const auto error = exportConfigurationToFile({*stores.classDb, *stores.refDb},
                                                     {.configName = Config, .modId = "0", .target = args[2]});
        return error ? fail(*error) : 0;
    }
    if (args[0] == QLatin1String("copy")) {
        copyConfiguration(*stores.classDb, Config, args[2]);
        return 0;
    }
    if (args[0] == QLatin1String("delete")) {
        deleteConfiguration(*stores.classDb, Config);
        return 0;
    }
    const ImportResult result = importClassFile(*stores.classDb, {.file = args[2], .newName = args[3]});
    return result.status == ImportResult::Status::Complete ? 0 : fail(result.message);
}

} // namespace

int main(int argc, char** argv)
{
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    if (!usageFits(args))
        return fail(
            QStringLiteral("usage: classfile_bench generate DIR CLASSES | export DIR FILE | import DIR FILE NAME | "
                           "copy DIR NAME | delete DIR"));
    try {
        return run(args);
    } catch (const StoreError& e) {
        return fail(e.message());
    }
}
