#include "WindowFixture.h"

#include "classes/frmClasses.h"
#include "config/frmAbout.h"
#include "config/frmConfig.h"
#include "reference/ReferenceWindows.h"
#include "toolkit/DataControl.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

namespace tarn::test
{

namespace
{

std::unique_ptr<QWidget> build(Window which, AppState& state, Dialogs& dialogs)
{
    using enum Window;
    if (which == Config)
        return std::make_unique<frmConfig>(state, dialogs);
    if (which == Classes)
        return std::make_unique<frmClasses>(state, dialogs);
    if (which == About)
        return std::make_unique<frmAbout>();
    const ReferenceTable table = which == Weapons    ? ReferenceTable::Weapons
                                 : which == Grenades ? ReferenceTable::Grenades
                                 : which == Items    ? ReferenceTable::Items
                                                     : ReferenceTable::Special;
    return createReferenceWindow(table, state, dialogs, nullptr);
}

} // namespace

QWidget& WindowFixture::open(Window which, const QString& config)
{
    data.state->currentConfig = config;
    window.reset(); // one window at a time, as the program has them
    window = build(which, *data.state, dialogs);
    window->show();
    return *window;
}

DataControl& WindowFixture::nav() const
{
    return *control<DataControl>({});
}

void WindowFixture::type(const QString& boxName, const QString& text) const
{
    QLineEdit* edit = box(boxName);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    if (std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; }))
        QTest::keyClicks(edit, text);
    else
        edit->insert(text); // pasted: the test's keyboard types ASCII only
}

void WindowFixture::press(const QString& button) const
{
    QTest::mouseClick(control<QAbstractButton>(button), Qt::LeftButton);
}

void WindowFixture::trigger(const QString& action) const
{
    control<QAction>(action)->trigger();
}

void WindowFixture::choose(const QString& pickerName, int index) const
{
    QComboBox* combo = picker(pickerName);
    while (combo->currentIndex() != index)
        QTest::keyClick(combo, combo->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
}

void WindowFixture::navigate(const QString& button) const
{
    for (QToolButton* tool : nav().findChildren<QToolButton*>()) {
        if (tool->accessibleName() == button)
            return QTest::mouseClick(tool, Qt::LeftButton);
    }
    QFAIL(qPrintable(QStringLiteral("no navigator button \"%1\"").arg(button)));
}

bool WindowFixture::activate() const
{
    window->activateWindow();
    return QTest::qWaitForWindowActive(window.get());
}

void WindowFixture::keys(const QKeySequence& sequence) const
{
    const QKeyCombination key = sequence[0];
    QWidget* popup = QApplication::activePopupWidget();
    QTest::keyClick(popup ? popup->windowHandle() : window->windowHandle(), key.key(), key.keyboardModifiers());
}

bool WindowFixture::leave(const QString& how) const
{
    const qsizetype told = dialogs.messages.size();
    const bool closing = how == "close" || how == "Esc" || how == "Ctrl+W";
    if (how == "close")
        window->close();
    else if (closing && activate())
        QTest::keySequence(window.get(), QKeySequence(how));
    else if (how == "add")
        press(window->findChild<QPushButton*>("AddClass") ? "AddClass" : "Command1");
    else
        navigate(how);
    return dialogs.messages.size() == told && (!closing || !window->isVisible());
}

void onModalDialog(const std::function<void()>& command, const std::function<void(QWidget&)>& inspect)
{
    bool seen = false;
    QTimer::singleShot(0, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            seen = true;
            inspect(*dialog);
        }
    });
    command();
    QVERIFY2(seen, "no modal dialog opened");
}

} // namespace tarn::test
