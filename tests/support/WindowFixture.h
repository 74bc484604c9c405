#pragma once

#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"

#include "toolkit/DataControl.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <functional>
#include <memory>

namespace tarn::test
{

// The workbench's windows, each as the program opens it.
enum class Window { Config, Classes, Weapons, Grenades, Special, Items, About };

// One window on a fresh data directory with scripted dialogs, driven as the author
// drives it: find a control, type, press, choose, navigate, leave the row on show,
// and read what reached the store.
struct WindowFixture {
    TempData data;
    ScriptedDialogs dialogs;
    std::unique_ptr<QWidget> window;

    // Builds the window (the class editor on the given configuration) and shows it.
    QWidget& open(Window which, const QString& config = QStringLiteral("Example"));
    template <typename T> T& as() const { return static_cast<T&>(*window); }

    // The control of that name; a missing one ends the test program.
    template <typename T = QWidget> T* control(const QString& name) const
    {
        T* found = window->findChild<T*>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }
    QLineEdit* box(const QString& name) const { return control<QLineEdit>(name); }
    QComboBox* picker(const QString& name) const { return control<QComboBox>(name); }
    QString text(const QString& boxName) const { return box(boxName)->text(); }
    DataControl& nav() const { return *control<DataControl>({}); }

    // Replaces the text of a box as the author types it.
    void type(const QString& boxName, const QString& text) const;
    void press(const QString& button) const { QTest::mouseClick(control<QAbstractButton>(button), Qt::LeftButton); }
    void trigger(const QString& action) const { control<QAction>(action)->trigger(); }
    // Chooses a picker's entry through the keyboard.
    void choose(const QString& pickerName, int index) const;
    // A navigator button: "First record", "Previous record", "Next record", "Last record".
    void navigate(const QString& button) const;
    bool activate() const
    {
        window->activateWindow();
        return QTest::qWaitForWindowActive(window.get());
    }
    // Leaves the row on show by a navigator button, "add" (the window's add button),
    // "close", "Esc" or "Ctrl+W"; true when the window let it go without a word.
    bool leave(const QString& how) const;
};

// Runs inspect on the modal dialog that the command opens, once it is up; inspect
// answers or closes it.
void onModalDialog(const std::function<void()>& command, const std::function<void(QWidget&)>& inspect);

} // namespace tarn::test

Q_DECLARE_METATYPE(tarn::test::Window)
