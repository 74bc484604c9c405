#include "classes/frmClasses.h"
#include "config/frmAbout.h"
#include "config/frmConfig.h"
#include "reference/ReferenceWindows.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace
{

enum class Window { Config, Classes, Weapons, Grenades, Items, Special, About };

std::unique_ptr<QWidget> open(Window window, AppState& state, Dialogs& dialogs)
{
    switch (window) {
    case Window::Config:
        return std::make_unique<frmConfig>(state, dialogs);
    case Window::Classes:
        state.currentConfig = QStringLiteral("Example");
        return std::make_unique<frmClasses>(state, dialogs);
    case Window::Weapons:
        return createReferenceWindow(ReferenceTable::Weapons, state, dialogs, nullptr);
    case Window::Grenades:
        return createReferenceWindow(ReferenceTable::Grenades, state, dialogs, nullptr);
    case Window::Items:
        return createReferenceWindow(ReferenceTable::Items, state, dialogs, nullptr);
    case Window::Special:
        return createReferenceWindow(ReferenceTable::Special, state, dialogs, nullptr);
    case Window::About:
        return std::make_unique<frmAbout>();
    }
    return nullptr;
}

// What the author sees and uses: the parts of a navigator or a picker count as one.
QList<QWidget*> visibleControls(QWidget& window)
{
    QList<QWidget*> controls;
    const auto children = window.findChildren<QWidget*>();
    for (QWidget* w : children) {
        const bool control = qobject_cast<QLabel*>(w) || qobject_cast<QLineEdit*>(w) || qobject_cast<QComboBox*>(w) ||
                             qobject_cast<QAbstractButton*>(w) || qobject_cast<QListWidget*>(w) ||
                             qobject_cast<QGroupBox*>(w) || qobject_cast<DataControl*>(w);
        const QWidget* parent = w->parentWidget();
        const bool part = qobject_cast<const DataControl*>(parent) || qobject_cast<const QComboBox*>(parent);
        if (control && !part && w->isVisibleTo(&window))
            controls << w;
    }
    return controls;
}

QRect placeIn(const QWidget& window, const QWidget& control)
{
    return QRect(control.mapTo(&window, QPoint(0, 0)), control.size());
}

// Where a caption is cut, or what it is: empty when all fit.
QString cutCaption(const QWidget& control)
{
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        const QRect room = label->contentsRect();
        const int flags = Qt::TextShowMnemonic | (label->wordWrap() ? Qt::TextWordWrap : 0);
        const QRect needed = label->fontMetrics().boundingRect(room, flags, label->text());
        return room.contains(needed) ? QString() : label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return button->sizeHint().width() <= button->width() ? QString() : button->text();
    return {};
}

// The named controls Tab reaches from the window's first, in turn.
QStringList tabOrder(QWidget& window)
{
    QStringList order;
    for (QWidget* w = window.nextInFocusChain(); w != &window; w = w->nextInFocusChain()) {
        const bool named = !w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_"));
        if (named && (w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(&window) && w->isEnabled())
            order << w->objectName();
    }
    return order;
}

QStringList numbered(const QString& name, int first, int last)
{
    QStringList names;
    for (int i = first; i <= last; ++i)
        names << name.arg(i);
    return names;
}

} // namespace

class LayoutTest : public QObject
{
    Q_OBJECT

private slots:
    // Half as large again as the desktop's font.
    void initTestCase()
    {
        QFont large = QApplication::font();
        large.setPointSizeF(large.pointSizeF() * 1.5);
        QApplication::setFont(large);
    }

    // At a large font every caption fits its control, no two controls overlap, and the
    // window opens within the screen.
    void captionsFitAndNothingOverlaps_data()
    {
        QTest::addColumn<int>("window");
        QTest::newRow("main window") << int(Window::Config);
        QTest::newRow("class editor") << int(Window::Classes);
        QTest::newRow("weapons") << int(Window::Weapons);
        QTest::newRow("grenades") << int(Window::Grenades);
        QTest::newRow("items") << int(Window::Items);
        QTest::newRow("special") << int(Window::Special);
        QTest::newRow("about") << int(Window::About);
    }
    void captionsFitAndNothingOverlaps()
    {
        QFETCH(int, window);
        TempData data;
        ScriptedDialogs dialogs;
        const std::unique_ptr<QWidget> shown = open(Window(window), *data.state, dialogs);
        shown->show();
        QVERIFY(QTest::qWaitForWindowExposed(shown.get()));

        const QSize room = shown->screen()->availableGeometry().size();
        QVERIFY2(shown->frameGeometry().size().boundedTo(room) == shown->frameGeometry().size(),
                 "the window is larger than the screen");

        const QList<QWidget*> controls = visibleControls(*shown);
        QVERIFY(controls.size() > 5);
        for (const QWidget* control : controls)
            QVERIFY2(cutCaption(*control).isEmpty(), qPrintable(control->objectName() + " cuts its caption"));
        for (qsizetype i = 0; i < controls.size(); ++i) {
            for (qsizetype j = i + 1; j < controls.size(); ++j) {
                const QWidget* a = controls[i];
                const QWidget* b = controls[j];
                if (a->isAncestorOf(b) || b->isAncestorOf(a))
                    continue; // a frame and what it holds
                QVERIFY2(!placeIn(*shown, *a).intersects(placeIn(*shown, *b)),
                         qPrintable(a->objectName() + " overlaps " + b->objectName()));
            }
        }
    }

    // Laid out or not, Tab visits the controls in the order each window always had.
    void tabOrderIsKept_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("main window") << int(Window::Config)
                                     << QStringList{"btNew", "btDelete", "btEdit", "classlist", "btCopy", "btImport"};
        QTest::newRow("class editor") << int(Window::Classes)
                                      << QStringList{"fldClassName", "fldModel", "fldSkin1",  "fldSkin2",    "Text1",
                                                     "fldArmor",     "fldSpeed", "fldHealth", "fldDecoySkin"} +
                                             numbered("w%1", 2, 10) + numbered("g%1", 1, 3) +
                                             numbered("Check1_%1", 0, 7) +
                                             QStringList{"maxbullets",  "maxshells", "maxrockets",
                                                         "maxgrenades", "maxcells",  "maxslugs"} +
                                             numbered("special_%1", 0, 20) + QStringList{"Command1", "AddClass"};
        QTest::newRow("weapons") << int(Window::Weapons)
                                 << numbered("Text%1", 1, 5) + QStringList{"Command1", "Command2"};
        QTest::newRow("items") << int(Window::Items) << QStringList{"Text1",    "Text2",     "Text5",   "Command1",
                                                                    "Command2", "fldBitNum", "btnCalc", "fldResult"};
    }
    void tabOrderIsKept()
    {
        QFETCH(int, window);
        QFETCH(QStringList, order);
        TempData data;
        ScriptedDialogs dialogs;
        const std::unique_ptr<QWidget> shown = open(Window(window), *data.state, dialogs);
        QCOMPARE(tabOrder(*shown), order);
    }
};

QTEST_MAIN(LayoutTest)
#include "tst_layouts.moc"
