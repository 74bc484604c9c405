#pragma once

#include "config/frmConfig.h"
#include "store/Configurations.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"

#include <QAction>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace tarn::test
{

// The main window on a fresh data directory holding "Example" and the given configurations.
struct ConfigWindowFixture {
    TempData data;
    ScriptedDialogs dialogs;
    std::unique_ptr<frmConfig> window;

    explicit ConfigWindowFixture(const QStringList& configs = {})
    {
        for (const QString& name : configs)
            addConfiguration(data.classDb(), name);
        reopen();
    }
    void reopen()
    {
        window = std::make_unique<frmConfig>(*data.state, dialogs);
        window->show();
    }
    QListWidget* list() const { return window->findChild<QListWidget*>("classlist"); }
    void click(const char* button) const { QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton); }
    void trigger(const char* action) const { window->findChild<QAction*>(action)->trigger(); }
    // Clicks a name in the list, as the author does.
    void select(const QString& name) const
    {
        const int row = int(window->configNames().indexOf(name));
        QVERIFY(row >= 0);
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(row)).center());
        QCOMPARE(data.state->currentConfig, name);
    }
};

} // namespace tarn::test
