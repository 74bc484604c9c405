#include "AppState.h"
#include "DataDirectory.h"
#include "config/frmConfig.h"
#include "store/StoreError.h"
#include "toolkit/QtDialogs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <cstdio>

namespace
{

QString dataDirectoryOption(const QApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tarn Workbench: player classes for game modifications."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"),
                                     QStringLiteral("Keep the stores and tarn.ini in <dir>."), QStringLiteral("dir"));
    parser.addOption(dataDir);
    parser.process(app);
    return parser.value(dataDir);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tarn"));
    QApplication::setApplicationVersion(QStringLiteral(TARN_VERSION));
    // The desktop entry's name, so that desktops match the window to its entry and icon.
    QGuiApplication::setDesktopFileName(QStringLiteral(TARN_APP_ID));

    std::unique_ptr<tarn::AppState> state;
    try {
        state = tarn::AppState::open(tarn::resolveDataDirectory(dataDirectoryOption(app)));
    } catch (const tarn::StoreError& error) {
        std::fprintf(stderr, "tarn: %s\n", qPrintable(error.message()));
        QMessageBox::critical(nullptr, tarn::MessageTitle, error.message());
        return 1;
    }
    tarn::QtDialogs dialogs;
    tarn::frmConfig mainForm(*state, dialogs);
    mainForm.show();
    return app.exec();
}
