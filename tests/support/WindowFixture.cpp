#include "WindowFixture.h"

#include "classes/frmClasses.h"
#include "config/frmAbout.h"
#include "config/frmConfig.h"
#include "reference/ReferenceWindows.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>

namespace tarn::test
{

QWidget& WindowFixture::open(Window which, const QString& config)
{
    using enum Window;
    data.state->currentConfig = config;
    window.reset(); // one window at a time, as the program has them
    const auto reference = [&](ReferenceTable table) {
        return createReferenceWindow(table, *data.state, dialogs, nullptr);
    };
    switch (which) {
    case Config:
        window = std::make_unique<frmConfig>(*data.state, dialogs);
        break;
    case Classes:
        window = std::make_unique<frmClasses>(*data.state, dialogs);
        break;
    case Weapons:
        window = reference(ReferenceTable::Weapons);
        break;
    case Grenades:
        window = reference(ReferenceTable::Grenades);
        break;
    case Special:
        window = reference(ReferenceTable::Special);
        break;
    case Items:
        window = reference(ReferenceTable::Items);
        break;
    case About:
        window = std::make_unique<frmAbout>();
        break;
    }
    window->show();
    return *window;
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
