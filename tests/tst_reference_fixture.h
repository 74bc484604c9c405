#pragma once

#include "reference/ReferenceWindows.h"
#include "store/Database.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace tarn::test
{

// A reference table as the tests see it: its window, its name and its first two columns.
struct TableInfo {
    ReferenceTable window;
    QString table;
    QString id;
    QString name;
};

inline TableInfo tableInfo(ReferenceTable window)
{
    switch (window) {
    case ReferenceTable::Weapons:
        return {window, QStringLiteral("weapon"), QStringLiteral("w_id"), QStringLiteral("w_name")};
    case ReferenceTable::Grenades:
        return {window, QStringLiteral("grenade"), QStringLiteral("g_id"), QStringLiteral("g_name")};
    case ReferenceTable::Special:
        return {window, QStringLiteral("special"), QStringLiteral("s_id"), QStringLiteral("s_name")};
    case ReferenceTable::Items:
        break;
    }
    return {window, QStringLiteral("item"), QStringLiteral("i_id"), QStringLiteral("i_name")};
}

// Replaces the rows of a table by rows of the given ids, stored in that order, named
// "Row <id>" and enabled.
inline void resetRows(Database& db, const TableInfo& t, const QList<qint64>& ids)
{
    db.exec(QStringLiteral("delete from %1").arg(t.table));
    Statement insert =
        db.prepare(QStringLiteral("insert into %1 (%2, %3, kd_enabled) values (?, ?, 1)").arg(t.table, t.id, t.name));
    for (qint64 id : ids)
        insert.run({id, QStringLiteral("Row %1").arg(id)});
}

// The ids in the table, lowest first.
inline QList<qint64> storedIds(Database& db, const TableInfo& t)
{
    Statement query = db.prepare(QStringLiteral("select %1 from %2 order by %1").arg(t.id, t.table));
    QList<qint64> ids;
    while (query.step())
        ids << query.int64(0);
    return ids;
}

inline QVariant storedValue(Database& db, const TableInfo& t, const QString& column, qint64 id)
{
    return db.scalar(QStringLiteral("select %1 from %2 where %3 = ?").arg(column, t.table, t.id), {id});
}

// One reference window, open on a fresh data directory, driven as the author would.
struct ReferenceFixture {
    TempData data;
    ScriptedDialogs dialogs;
    std::unique_ptr<QWidget> window;

    void open(ReferenceTable table)
    {
        window = createReferenceWindow(table, *data.state, dialogs, nullptr);
        window->show();
    }
    QLineEdit* box(const char* name) const { return window->findChild<QLineEdit*>(QLatin1String(name)); }
    QString text(const char* name) const { return box(name)->text(); }
    DataControl& navigator() const { return *window->findChild<DataControl*>(); }

    // Replaces the text of a box by typing, as the author would.
    void type(const char* name, const QString& text) const
    {
        QLineEdit* target = box(name);
        target->selectAll();
        QTest::keyClick(target, Qt::Key_Backspace);
        QTest::keyClicks(target, text);
    }
    void click(const char* buttonName) const
    {
        QTest::mouseClick(window->findChild<QPushButton*>(QLatin1String(buttonName)), Qt::LeftButton);
    }
    // The navigator's buttons: "First record", "Previous record", "Next record", "Last record".
    void navigate(const QString& accessibleName) const
    {
        for (QToolButton* button : navigator().findChildren<QToolButton*>()) {
            if (button->accessibleName() == accessibleName) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL(qPrintable(QStringLiteral("no navigator button \"%1\"").arg(accessibleName)));
    }
};

} // namespace tarn::test
