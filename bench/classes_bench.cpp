// The class editor on a large configuration: opening it, and stepping through every
// class with its navigator, beside the sqlite3 shell reading the same rows in the
// same run. Prints a Markdown table of median times, peak memory and the ratios.
//
//   classes_bench [RUNS]   (default 5)

#include "classes/frmClasses.h"
#include "core/AppState.h"
#include "store/Classes.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "store/Schema.h"
#include "toolkit/DataControl.h"
#include "toolkit/Dialogs.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <sys/resource.h>

using namespace tarn;

namespace
{

const QString Config = QStringLiteral("Bench");
constexpr int Classes = 5000;
constexpr int Weapons = 1000;
constexpr int Grenades = 100;
const QString Shell = QStringLiteral("/usr/bin/sqlite3");

// A run with no one to answer: any message means the measurement went wrong.
class SilentDialogs final : public Dialogs
{
public:
    QStringList messages;
    QString inputBox(QWidget*, const QString&, const QString&) override { return {}; }
    void message(QWidget*, const QString& text) override { messages << text; }
    QString chooseItem(QWidget*, const QString&, const QString&, const QStringList&) override { return {}; }
    bool confirm(QWidget*, const QString&, const QString&) override { return false; }
    QString openFileName(QWidget*, const QString&) override { return {}; }
    QString saveFileName(QWidget*, const QString&) override { return {}; }
    void setBusy(bool) override {}
    void showModal(QWidget&) override {}
};

void fillArmoury(Database& refDb, const QString& table, int rows)
{
    const QString prefix = table.left(1);
    refDb.exec(QStringLiteral("delete from %1").arg(table));
    Statement insert = refDb.prepare(
        QStringLiteral("insert into %1 (%2_id, %2_name, kd_enabled) values (?, ?, 1)").arg(table, prefix));
    for (int id = 1; id <= rows; ++id)
        insert.run({id, QStringLiteral("%1 %2").arg(table).arg(id)});
}

// Classes whose slots hold ids the pickers offer, so that a step stores nothing.
void fillClasses(Database& classDb)
{
    Transaction transaction(classDb);
    addConfiguration(classDb, Config);
    NewClassRows rows(classDb);
    QRandomGenerator random(Classes);
    const auto id = [&](int count) { return qint16(1 + random.bounded(count)); };
    for (int number = 1; number <= Classes; ++number) {
        using C = ClassColumn;
        rows.set(C::package_name, Config).set(C::class_name, QStringLiteral("Class %1").arg(number));
        rows.set(C::class_num, qint16(number)).set(C::skin_name1, QStringLiteral("red"));
        rows.set(C::skin_name2, QStringLiteral("blue")).set(C::model_name, QStringLiteral("model"));
        rows.set(C::w1, qint16(1));
        for (std::size_t k = 1; k < classdef::weapons.size; ++k)
            rows.set(classdef::weapons.at(k), id(Weapons));
        for (std::size_t k = 0; k < classdef::grenades.size; ++k)
            rows.set(classdef::grenades.at(k), id(Grenades));
        rows.set(C::max_speed, qint16(300)).set(C::max_health, qint16(100)).set(C::max_armor, qint16(50));
        for (std::size_t k = 0; k < classdef::items.size; ++k)
            rows.set(classdef::items.at(k), random.bounded(2) == 1);
        for (std::size_t k = 0; k < classdef::specials.size; ++k)
            rows.set(classdef::specials.at(k), random.bounded(2) == 1);
        rows.set(C::decoyskin, qint16(1));
        rows.set(classdef::ammo, std::array<qint16, classdef::ammo.size>{100, 50, 25, 10, 100, 10});
        rows.addRow();
    }
    transaction.commit();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double peakMiB(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

// Milliseconds of one run of the sqlite3 shell on the data directory.
double shellRun(const QString& dir, const QString& sql)
{
    QProcess shell;
    shell.setStandardOutputFile(QProcess::nullDevice());
    shell.setWorkingDirectory(dir);
    QElapsedTimer timer;
    timer.start();
    shell.start(Shell, {QStringLiteral("tarn_dat.db"), sql});
    if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
        qFatal("the sqlite3 shell failed on: %s", qPrintable(sql));
    return double(timer.nsecsElapsed()) / 1e6;
}

struct Figures {
    double ms;
    double mib;
};

// What the load reads: the four reference lists and the configuration's rows in order.
const QString OpenSql = QStringLiteral(
    "attach 'tarn_ref.db' as ref; "
    "select * from weapon where kd_enabled = 1 order by w_id; select * from grenade where kd_enabled = 1 "
    "order by g_id; select * from item order by i_id; select * from special order by s_id; "
    "select rowid from classdef where package_name = 'Bench' order by package_name,class_num;");
// What a walk through every class reads.
const QString ReadSql =
    QStringLiteral("select * from classdef where package_name = 'Bench' order by package_name,class_num;");

// The shell's peak for a statement; the children's peak only grows, so the smaller work goes first.
double shellPeak(const QString& dir, const QString& sql)
{
    shellRun(dir, sql);
    return peakMiB(RUSAGE_CHILDREN);
}

double openEditor(AppState& state, SilentDialogs& dialogs)
{
    QElapsedTimer timer;
    timer.start();
    frmClasses editor(state, dialogs);
    editor.show();
    QApplication::processEvents();
    return double(timer.nsecsElapsed()) / 1e6;
}

double stepThrough(AppState& state, SilentDialogs& dialogs)
{
    frmClasses editor(state, dialogs);
    editor.show();
    DataControl& navigator = *editor.findChild<DataControl*>(QStringLiteral("dbClassDef"));
    QElapsedTimer timer;
    timer.start();
    for (int step = 1; step < Classes; ++step)
        navigator.moveNext();
    return double(timer.nsecsElapsed()) / 1e6;
}

// 30,000 classes: six copies of the bench's 5,000 under one name.
const QString ListConfig = QStringLiteral("List");
constexpr int ListClasses = 30000;
const QString ListSql = QStringLiteral(
    "select rowid, class_num, class_name, model_name, max_armor, max_speed, max_health, w2, w3, w4, w5, w6, w7, "
    "w8, w9, w10 from classdef where package_name = 'List' order by package_name,class_num;");

void fillList(Database& classDb)
{
    QStringList columns = schema::classColumnNames();
    columns.removeAll(QStringLiteral("package_name"));
    columns.removeAll(QStringLiteral("class_num"));
    const QString list = columns.join(u", ");
    addConfiguration(classDb, ListConfig);
    for (int copy = 0; copy < ListClasses / Classes; ++copy)
        classDb.exec(QStringLiteral("insert into classdef (package_name, class_num, %1) select 'List', "
                                    "class_num + %2, %1 from classdef where package_name = 'Bench'")
                         .arg(list)
                         .arg(copy * Classes));
}

// The class list shown on the editor that is open on 30,000 classes.
double showClassList(AppState& state, SilentDialogs& dialogs)
{
    state.currentConfig = ListConfig;
    frmClasses editor(state, dialogs);
    editor.show();
    QElapsedTimer timer;
    timer.start();
    editor.findChild<QAction*>(QStringLiteral("mnuViewClassList"))->trigger();
    QApplication::processEvents();
    const double ms = double(timer.nsecsElapsed()) / 1e6;
    state.currentConfig = Config;
    return ms;
}

void row(QTextStream& out, const QString& work, const Figures& ours, const Figures& shell)
{
    out << QStringLiteral("| %1 | %2 ms | %3 MiB | %4 ms | %5 MiB | %6 |\n")
               .arg(work)
               .arg(ours.ms, 0, 'f', 2)
               .arg(ours.mib, 0, 'f', 1)
               .arg(shell.ms, 0, 'f', 2)
               .arg(shell.mib, 0, 'f', 1)
               .arg(ours.ms / shell.ms, 0, 'f', 2);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 5;
    QTemporaryDir dir;
    auto state = AppState::open(dir.path());
    fillArmoury(state->refDb(), QStringLiteral("weapon"), Weapons);
    fillArmoury(state->refDb(), QStringLiteral("grenade"), Grenades);
    fillClasses(state->classDb());
    state->currentConfig = Config;
    SilentDialogs dialogs;

    const double baselineMib = peakMiB(RUSAGE_SELF);
    const double shellOpenMib = shellPeak(dir.path(), OpenSql);
    const double shellReadMib = shellPeak(dir.path(), ReadSql);
    openEditor(*state, dialogs); // the first window pays for fonts and style once
    // Ours and the shell take turns, so that a busy spell of the machine hits both.
    std::vector<double> opens, shellOpens, steps, shellReads;
    for (int i = 0; i < runs; ++i) {
        shellOpens.push_back(shellRun(dir.path(), OpenSql));
        opens.push_back(openEditor(*state, dialogs));
    }
    const double openMib = peakMiB(RUSAGE_SELF);
    for (int i = 0; i < runs; ++i) {
        shellReads.push_back(shellRun(dir.path(), ReadSql));
        steps.push_back(stepThrough(*state, dialogs));
    }
    fillList(state->classDb());
    const double shellListMib = shellPeak(dir.path(), ListSql);
    std::vector<double> lists, shellLists;
    for (int i = 0; i < runs; ++i) {
        shellLists.push_back(shellRun(dir.path(), ListSql));
        lists.push_back(showClassList(*state, dialogs));
    }
    if (!dialogs.messages.isEmpty())
        qFatal("the editor showed a message: %s", qPrintable(dialogs.messages.first()));

    QTextStream out(stdout);
    out << "| work | ours | peak | sqlite3 shell | peak | time ratio |\n|---|---|---|---|---|---|\n";
    row(out,
        QStringLiteral("open the editor on %1 classes, %2 weapons, %3 grenades")
            .arg(Classes)
            .arg(Weapons)
            .arg(Grenades),
        {median(opens), openMib}, {median(shellOpens), shellOpenMib});
    row(out, QStringLiteral("step through all %1 classes").arg(Classes), {median(steps), peakMiB(RUSAGE_SELF)},
        {median(shellReads), shellReadMib});
    row(out, QStringLiteral("show the class list of %1 classes").arg(ListClasses),
        {median(lists), peakMiB(RUSAGE_SELF)}, {median(shellLists), shellListMib});
    out << QStringLiteral("\nOne step: %1 ms (median pass / %2 steps). Our peak is the whole process; before the "
                          "first editor opened (application and workload made) it was %3 MiB.\n")
               .arg(median(steps) / (Classes - 1), 0, 'f', 3)
               .arg(Classes - 1)
               .arg(baselineMib, 0, 'f', 1);
    return 0;
}
