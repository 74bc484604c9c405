// The class file side of the benchmark: makes the workload and runs one export or
// import per process, so that the script around it can time each and read its peak
// memory beside the sqlite3 shell doing the same rows.
//
//   classfile_bench generate DIR CLASSES   a data directory with CLASSES classes under "Bench"
//   classfile_bench generate-armoury DIR CLASSES WEAPONS   the same, among WEAPONS weapons
//   classfile_bench export DIR FILE        the protected class file of "Bench"
//   classfile_bench import DIR FILE NAME   FILE as the new configuration NAME
//   classfile_bench copy DIR NAME          Make Copy of "Bench" as NAME
//   classfile_bench delete DIR             deletes the configuration "Bench"

#include "classfile/ExportCommand.h"
#include "classfile/ImportCommand.h"
#include "core/Backups.h"
#include "core/Stores.h"
#include "store/Classes.h"
#include "store/Configurations.h"
#include "store/StoreError.h"

#include <QDateTime>
#include <QHash>
#include <QRandomGenerator>
#include <QTextStream>

using namespace tarn;

namespace
{

const QString Config = QStringLiteral("Bench");

// Classes as an author might make them: weapons and grenades that the pickers offer,
// a few boxes ticked, plain numbers. With a number of weapons, the weapon table holds that
// many (ids from 0, all enabled) and the classes choose among them.
void generate(Database& classDb, Database& refDb, int classes, int weapons)
{
    if (weapons > 0) {
        Transaction armoury(refDb);
        refDb.exec(QStringLiteral("delete from weapon"));
        Statement insert =
            refDb.prepare(QStringLiteral("insert into weapon (w_id, w_name, kd_enabled) values (?, ?, 1)"));
        for (int id = 0; id < weapons; ++id)
            insert.run({id, QStringLiteral("Weapon %1").arg(id)});
        armoury.commit();
    }
    const int choices = weapons > 0 ? weapons - 2 : 9;
    Transaction transaction(classDb);
    addConfiguration(classDb, Config);
    NewClassRows rows(classDb);
    QRandomGenerator random(classes);
    const auto upTo = [&](int count) { return qint16(random.bounded(count)); };
    for (int number = 1; number <= classes; ++number) {
        using C = ClassColumn;
        rows.set(C::package_name, Config).set(C::class_name, QStringLiteral("Class %1").arg(number));
        rows.set(C::class_num, qint16(number)).set(C::skin_name1, QStringLiteral("red%1").arg(number % 7));
        rows.set(C::skin_name2, QStringLiteral("blue%1").arg(number % 7));
        rows.set(C::model_name, QStringLiteral("model%1").arg(number % 13));
        for (std::size_t k = 0; k < classdef::weapons.size; ++k) // slot k + 1
            rows.set(classdef::weapons.at(k), qint16(k == 0 ? 1 : k < 4 ? 2 + upTo(choices) : 0));
        rows.set(C::g1, qint16(1 + upTo(4))).set(C::g2, qint16(0)).set(C::g3, qint16(0));
        rows.set(C::max_speed, qint16(200 + upTo(200))).set(C::max_health, qint16(100)).set(C::max_armor, qint16(50));
        for (std::size_t k = 0; k < classdef::items.size; ++k)
            rows.set(classdef::items.at(k), k != 8 && random.bounded(4) == 0);
        for (std::size_t k = 0; k < classdef::specials.size; ++k)
            rows.set(classdef::specials.at(k), random.bounded(4) == 0);
        rows.set(C::decoyskin, qint16(number % 3));
        rows.set(classdef::ammo, std::array<qint16, classdef::ammo.size>{100, 50, 25, 10, 100, 10});
        rows.addRow();
    }
    transaction.commit();
}

int fail(const QString& message)
{
    QTextStream(stderr) << message << Qt::endl;
    return 1;
}

bool usageFits(const QStringList& args)
{
    const QHash<QString, qsizetype> arguments{{"generate", 3}, {"generate-armoury", 4}, {"export", 3}, {"import", 4},
                                              {"copy", 3},     {"delete", 2},           {"backup", 2}};
    return !args.isEmpty() && arguments.value(args[0]) == args.size();
}

int run(const QStringList& args)
{
    Stores stores = openStores(args[1]);
    if (args[0].startsWith(QLatin1String("generate"))) {
        generate(*stores.classDb, *stores.refDb, args[2].toInt(), args.value(3).toInt());
        return 0;
    }
    if (args[0] == QLatin1String("export")) {
        const auto error =
            exportConfigurationToFile(
                {*stores.classDb, *stores.refDb},
                {.configName = Config, .modId = "0", .target = args[2], .ownFiles = {}, .readerWait = {}})
                .error;
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
    if (args[0] == QLatin1String("backup")) {
        const auto error = backUpStores(args[1], stores, QDateTime::currentDateTime(), true);
        return error ? fail(*error) : 0;
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
        return fail(QStringLiteral("usage: classfile_bench generate DIR CLASSES | generate-armoury DIR CLASSES WEAPONS "
                                   "| export DIR FILE | import DIR FILE NAME | "
                                   "copy DIR NAME | delete DIR | backup DIR"));
    try {
        return run(args);
    } catch (const StoreError& e) {
        return fail(e.message());
    }
}
