#include "AppIcon.h"

namespace tarn
{

// One icon for the whole run: it decodes its pictures once, for the first window that
// shows it, and every later window shares them.
QIcon appIcon()
{
    static const QIcon icon = [] {
        QIcon sizes;
        for (int size : {16, 22, 24, 32, 48, 64, 128, 256})
            sizes.addFile(QStringLiteral(":/icons/%1/org.tarnworkbench.Tarn.png").arg(size), QSize(size, size));
        return sizes;
    }();
    return icon;
}

} // namespace tarn
