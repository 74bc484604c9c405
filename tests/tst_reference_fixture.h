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
#include <optional>

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
    using enum ReferenceTable;
    const QString table = window == Weapons    ? "weapon"
                          : window == Grenades ? "grenade"
                          : window == Items    ? "item"
                                               : "special";
    return {window, table, table.left(1) + "_id", table.left(1) + "_name"};
}

// A "window" column with one row for each of the given windows.
inline void windowRows(const QList<ReferenceTable>& windows)
{
    QTest::addColumn<int>("window");
    for (ReferenceTable window : windows)
        QTest::newRow(qPrintable(tableInfo(window).table)) << int(window);
}
inline void allWindows()
{
    windowRows({ReferenceTable::Weapons, ReferenceTable::Grenades, ReferenceTable::Items, ReferenceTable::Special});
}
inline ReferenceTable fetchWindow()
{
    QFETCH(int, window);
    return ReferenceTable(window);
}

// Replaces the rows of a table by enabled rows of the given ids, stored in that order
// and named "Row <id>".
inline void resetRows(Database& db, const TableInfo& t, const QList<qint64>& ids)
{
    QList<RefRow> rows;
    for (qint64 id : ids)
        rows.append({id, QStringLiteral("Row %1").arg(id)});
    setReferenceRows(db, t.table, rows);
}

// One reference window, open on a fresh data directory, driven as the author would.
struct ReferenceFixture {
    TempData data;
    ScriptedDialogs dialogs;
    TableInfo t;
    std::unique_ptr<QWidget> window;

    // Opens the window on the starting rows, or on rows of the given ids.
    void open(ReferenceTable table, const std::optional<QList<qint64>>& ids = std::nullopt)
    {
        t = tableInfo(table);
        if (ids)
            resetRows(data.refDb(), t, *ids);
        window = createReferenceWindow(table, *data.state, dialogs, nullptr);
        window->show();
    }
    // The stored ids, lowest first.
    QList<qint64> ids()
    {
        QList<qint64> ids;
        for (const QString& id :
             rowsOf(data.refDb(), QStringLiteral("select %1 from %2 order by %1").arg(t.id, t.table)))
            ids << id.toLongLong();
        return ids;
    }
    QString stored(const QString& column, qint64 id)
    {
        return rowsOf(data.refDb(), QStringLiteral("select %1 from %2 where %3 = ?").arg(column, t.table, t.id), {id})
            .value(0);
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
