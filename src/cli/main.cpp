#include "Tarnctl.h"

#include "classfile/OutputFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>
#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    tarn::reportFileSizeLimit();
    // The same name as the workbench, so both find the same per-user data directory.
    QCoreApplication::setApplicationName(QStringLiteral("tarn"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TARN_VERSION));

    QFile in;
    QFile out;
    in.open(stdin, QIODevice::ReadOnly);
    out.open(stdout, QIODevice::WriteOnly);
    QTextStream text(stdout);
    QTextStream error(stderr);
    tarn::cli::Console console{in, out, text, error};
    const int status = tarn::cli::run(app.arguments().mid(1), console);
    text.flush();
    error.flush();
    return status;
}
