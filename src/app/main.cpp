#include "CommandLine.h"
#include "classfile/OutputFile.h"
#include "config/frmConfig.h"
#include "core/AppState.h"
#include "core/Backups.h"
#include "core/DataDirectory.h"
#include "store/StoreError.h"
#include "toolkit/QtDialogs.h"

#include <QApplication>
#include <QDateTime>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>

int main(int argc, char* argv[])
{
    // Answered before any window system is needed, so that they work without a display.
    const tarn::app::CommandLine options = tarn::app::parseCommandLine(argc, argv);
    if (options.exitStatus) {
        std::fputs(options.output.toLocal8Bit().constData(), *options.exitStatus == 0 ? stdout : stderr);
        return *options.exitStatus;
    }

    QApplication app(argc, argv);
    tarn::reportFileSizeLimit();
    QApplication::setApplicationName(QStringLiteral("tarn"));
    QApplication::setApplicationVersion(QStringLiteral(TARN_VERSION));
    // The desktop entry's name, so that desktops match the window to its entry and icon.
    QGuiApplication::setDesktopFileName(QStringLiteral(TARN_APP_ID));

    std::unique_ptr<tarn::AppState> state;
    try {
        state = tarn::AppState::open(tarn::resolveDataDirectory(options.dataDirectory));
        state->windowSettingsFile = tarn::resolveWindowSettingsFile(state->dataDirectory);
    } catch (const tarn::StoreError& error) {
        std::fprintf(stderr, "tarn: %s\n", qPrintable(error.message()));
        // Offscreen (scripts, CI) nobody could close the box, and the line above says it all.
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            QMessageBox::critical(nullptr, tarn::MessageTitle, error.message());
        return 1;
    }
    tarn::QtDialogs dialogs(state->windowSettingsFile);
    // A way back from whatever this run does; one that cannot be made is told, and the run goes on.
    if (const auto failed = tarn::backUpStores(state->dataDirectory, state->stores, QDateTime::currentDateTime()))
        dialogs.message(nullptr, *failed);
    tarn::frmConfig mainForm(*state, dialogs);
    mainForm.show();
    if (!options.classFile.isEmpty())
        QTimer::singleShot(0, &mainForm, [&] { mainForm.openClassFile(options.classFile); });
    return app.exec();
}
