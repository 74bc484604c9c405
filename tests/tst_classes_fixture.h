#pragma once

#include "classes/frmClasses.h"
#include "core/AppState.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace tarn::test
{

// A fresh data directory, scripted dialogs and the class editor opened on it.
struct ClassEditorFixture {
    TempData data;
    ScriptedDialogs dialogs;
    std::unique_ptr<frmClasses> editor;

    void setReference(const QString& table, const QList<RefRow>& rows) { setReferenceRows(data.refDb(), table, rows); }
    void addClass(const QString& config, int number, const QVariantMap& columns = {})
    {
        insertClass(data.classDb(), config, number, columns);
    }

    // A new configuration holding classes of the given numbers.
    void addConfig(const QString& name, const QList<int>& numbers = {})
    {
        addConfiguration(data.classDb(), name);
        for (int number : numbers)
            addClass(name, number, {{QStringLiteral("class_name"), QStringLiteral("C%1").arg(number)}});
    }

    frmClasses& open(const QString& config)
    {
        data.state->currentConfig = config;
        editor = std::make_unique<frmClasses>(*data.state, dialogs);
        editor->show();
        return *editor;
    }

    template <typename T = QWidget> T* control(const QString& name)
    {
        T* found = editor->findChild<T*>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }
    QLineEdit* box(const QString& name) { return control<QLineEdit>(name); }
    QComboBox* picker(const QString& name) { return control<QComboBox>(name); }
    DataControl& nav() { return *control<DataControl>(QStringLiteral("dbClassDef")); }
    void press(const char* button) { QTest::mouseClick(control<QPushButton>(button), Qt::LeftButton); }

    // Chooses a picker entry as the author does, through the keyboard.
    void choose(const QString& pickerName, int index)
    {
        QComboBox* combo = picker(pickerName);
        while (combo->currentIndex() != index)
            QTest::keyClick(combo, combo->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
    }

    // Replaces the text of a box as the author types it.
    void type(const QString& boxName, const QString& text)
    {
        QLineEdit* edit = box(boxName);
        edit->selectAll();
        QTest::keyClicks(edit, text);
        if (text.isEmpty())
            QTest::keyClick(edit, Qt::Key_Delete);
    }

    QVariant column(const QString& config, int number, const QString& column)
    {
        return data.classDb().scalar(
            QStringLiteral("select %1 from classdef where package_name = ? and class_num = ?").arg(column),
            {config, number});
    }

    QList<int> classNumbers(const QString& config)
    {
        QList<int> numbers;
        for (const QString& number : rowsOf(
                 data.classDb(), "select class_num from classdef where package_name = ? order by class_num", {config}))
            numbers << number.toInt();
        return numbers;
    }
};

} // namespace tarn::test
