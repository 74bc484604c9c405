#include "AppIcon.h"

namespace tarn
{

QIcon appIcon()
{
    QIcon icon;
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/%1/org.tarnworkbench.Tarn.png").arg(size), QSize(size, size));
    return icon;
}

} // namespace tarn
