#include "support/WindowFixture.h"
#include "toolkit/DataControl.h"
#include "toolkit/QtDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QTextDocument>
#include <cmath>

using namespace tarn;
using namespace tarn::test;

namespace
{

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
        const bool part = qobject_cast<const DataControl*>(parent) || qobject_cast<const QComboBox*>(parent) ||
                          qobject_cast<const QStatusBar*>(parent); // the status bar lies over a scrolled window

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

// The controls Tab reaches from the window's first, in turn, by name (or what a screen
// reader calls them); the parts of a picker count as the picker.
QStringList tabOrder(QWidget& window)
{
    QStringList order;
    for (QWidget* w = window.nextInFocusChain(); w != &window; w = w->nextInFocusChain()) {
        const bool part = qobject_cast<const QComboBox*>(w->parentWidget());
        if (!part && (w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(&window) && w->isEnabled())
            order << (w->objectName().isEmpty() ? w->accessibleName() : w->objectName());
    }
    return order;
}

// What a label or a caption shows of its text: markup as rendered, access-key marks taken out.
QString shownText(const QWidget& control)
{
    const auto withoutAccessKeys = [](QString text) { // "&&" shows one '&', a single one marks the key
        return text.replace(QStringLiteral("&&"), QStringLiteral("\x01")).remove(u'&').replace(u'\x01', u'&');
    };
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        return withoutAccessKeys(button->text());
    const auto& label = static_cast<const QLabel&>(control);
    const Qt::TextFormat format = label.textFormat();
    if (format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(label.text()))) {
        QTextDocument document;
        document.setHtml(label.text());
        return document.toPlainText();
    }
    return label.buddy() ? withoutAccessKeys(label.text()) : label.text();
}

// The texts of every label of the dialog that opens while the command runs, which closes it.
QStringList labelsOfDialog(const std::function<void()>& command)
{
    QStringList texts;
    onModalDialog(command, [&](QWidget& dialog) {
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            texts << shownText(*label);
        dialog.close();
    });
    return texts;
}

// The contrast of two colours as the accessibility guidelines reckon it, from 1 to 21.
double contrast(const QColor& a, const QColor& b)
{
    const auto luminance = [](const QColor& c) {
        const auto linear = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
    };
    const auto [darker, lighter] = std::minmax(luminance(a), luminance(b));
    return (lighter + 0.05) / (darker + 0.05);
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
    // window opens within the screen. The class editor, too tall for it, scrolls down only:
    // room for the vertical scroll bar is kept beside the content, which keeps the width it
    // asks for. "Bit Calculator:" is a heading larger than the rest.
    void captionsFitAndNothingOverlaps_data()
    {
        QTest::addColumn<Window>("window");
        int window = 0; // every window, in the order of the enum
        for (const char* name : {"main window", "class editor", "weapons", "grenades", "special", "items", "about"})
            QTest::newRow(name) << Window(window++);
    }
    void captionsFitAndNothingOverlaps()
    {
        QFETCH(Window, window);
        WindowFixture f;
        QWidget* shown = &f.open(window);
        QVERIFY(QTest::qWaitForWindowExposed(shown));

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
        if (const auto* area = shown->findChild<QScrollArea*>()) {
            QVERIFY(area->verticalScrollBar()->isVisible() && !area->horizontalScrollBar()->isVisible());
            QCOMPARE(area->widget()->width(), area->widget()->sizeHint().width()); // nothing squeezed
        }
        if (window == Window::Items)
            QVERIFY(f.control<QLabel>("Label4")->font().pointSizeF() >
                    f.control<QLabel>("Label8")->font().pointSizeF());
    }

    // The class editor keeps its arrangement whatever class is on show and however long
    // the configuration's name: nothing moves, and no scroll bar comes or goes.
    void classEditorStaysPut_data()
    {
        QTest::addColumn<QString>("config");
        QTest::addColumn<bool>("walkToTheLast");
        QTest::newRow("walking to class 120 of 120") << "C" << true;
        QTest::newRow("a name of 55 characters") << QString(55, u'W') << false;
    }
    void classEditorStaysPut()
    {
        QFETCH(QString, config);
        QFETCH(bool, walkToTheLast);
        WindowFixture f;
        for (const QString& name : {QStringLiteral("C"), config}) {
            for (int number = 1; number <= 120; ++number)
                insertClass(f.data.classDb(), name, number);
        }
        QStringList wholeNames; // Label31's tooltip and accessible name
        const auto arrangement = [&](const QString& name, bool last) {
            QWidget& editor = f.open(Window::Classes, name);
            if (last)
                f.nav().moveLast();
            QApplication::sendPostedEvents(); // the layouts settle
            QStringList places;
            for (const QWidget* control : visibleControls(editor))
                places << control->objectName() + u'@' + QString::number(placeIn(editor, *control).x());
            for (const QScrollBar* bar : editor.findChildren<QScrollBar*>())
                places << (bar->isVisible() ? "scroll bar shown" : "no scroll bar");
            const auto* shownName = f.control<QLabel>("Label31");
            wholeNames << shownName->toolTip() + u'|' + shownName->accessibleName();
            return places;
        };
        const QStringList before = arrangement("C", false);
        QCOMPARE(arrangement(config, walkToTheLast), before);
        QCOMPARE(wholeNames, QStringList({"C|C", config + u'|' + config})); // at hand, however narrow the label
    }

    // The bold blue notes and headings stay blue and read well on a light and on a dark palette.
    void blueLabelsReadOnEveryPalette_data()
    {
        QTest::addColumn<QColor>("window");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(0xef, 0xef, 0xef) << QColor(Qt::black);
        QTest::newRow("dark") << QColor(0x35, 0x35, 0x35) << QColor(0xe0, 0xe0, 0xe0);
    }
    void blueLabelsReadOnEveryPalette()
    {
        QFETCH(QColor, window);
        QFETCH(QColor, text);
        const QPalette before = QApplication::palette();
        QPalette palette = before;
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::WindowText, text);
        QApplication::setPalette(palette);
        WindowFixture main;
        main.open(Window::Config);
        WindowFixture editor;
        editor.open(Window::Classes);
        QApplication::setPalette(before);
        for (QLabel* label :
             {main.control<QLabel>("Label1"), editor.control<QLabel>("Label31"), editor.control<QLabel>("Label32")}) {
            label->ensurePolished();
            const QColor blue = label->palette().color(QPalette::WindowText);
            QVERIFY2(blue.hueF() > 0.55 && blue.hueF() < 0.7, qPrintable(label->objectName() + " " + blue.name()));
            QVERIFY2(contrast(blue, window) >= 4.5, qPrintable(label->objectName() + " " + blue.name()));
        }
    }

    // A name, a Mod ID or a line of a file is shown as it stands, never as markup or with
    // its '&' taken for an access key.
    void authorsTextIsShownAsItStands_data()
    {
        QTest::addColumn<QString>("place");
        for (const char* place : {"message", "question", "input prompt", "configuration name", "item caption"})
            QTest::newRow(place) << place;
    }
    void authorsTextIsShownAsItStands()
    {
        QFETCH(QString, place);
        const QString text = QStringLiteral("<b>Bold</b> & <i>x</i>");
        QtDialogs real;
        QStringList shown;
        if (place == "message")
            shown = labelsOfDialog([&] { real.message(nullptr, text); });
        else if (place == "question")
            shown = labelsOfDialog([&] { real.confirm(nullptr, text, "Delete Confirmation"); });
        else if (place == "input prompt")
            shown = labelsOfDialog([&] { real.inputBox(nullptr, text, "Mod ID"); });
        else {
            WindowFixture editor;
            setReferenceRows(editor.data.refDb(), "item", {{1, text}});
            insertClass(editor.data.classDb(), text, 1);
            editor.open(Window::Classes, text);
            shown << shownText(*editor.control(place == "item caption" ? "Check1_0" : "Label31"));
        }
        QVERIFY2(shown.contains(text), qPrintable(shown.join(u'|')));
    }

    // Laid out or not, Tab visits the controls in the order each window always had.
    void tabOrderIsKept_data()
    {
        QTest::addColumn<Window>("window");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("main window") << Window::Config
                                     << QStringList{"btNew", "btDelete", "btEdit", "classlist", "btCopy", "btImport"};
        QTest::newRow("class editor") << Window::Classes
                                      << QStringList{"fldClassName", "fldModel", "fldSkin1",  "fldSkin2",    "Text1",
                                                     "fldArmor",     "fldSpeed", "fldHealth", "fldDecoySkin"} +
                                             numbered("w%1", 2, 10) + numbered("g%1", 1, 3) +
                                             numbered("Check1_%1", 0, 7) +
                                             QStringList{"maxbullets",  "maxshells", "maxrockets",
                                                         "maxgrenades", "maxcells",  "maxslugs"} +
                                             numbered("special_%1", 0, 20) + QStringList{"Command1", "AddClass"};
        QTest::newRow("weapons") << Window::Weapons << numbered("Text%1", 1, 5) + QStringList{"Command1", "Command2"};
        QTest::newRow("items") << Window::Items << QStringList{"Text1",    "Text2",     "Text5",   "Command1",
                                                               "Command2", "fldBitNum", "btnCalc", "fldResult"};
    }
    void tabOrderIsKept()
    {
        QFETCH(Window, window);
        QFETCH(QStringList, order);
        WindowFixture f;
        QCOMPARE(tabOrder(f.open(window)), order);
    }
};

QTEST_MAIN(LayoutTest)
#include "tst_layouts.moc"
