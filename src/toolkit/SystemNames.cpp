#include "SystemNames.h"

#include <QWidget>

namespace tarn
{

void publishSystemNames(QWidget& window)
{
    window.setAccessibleDescription(window.objectName());
    const auto children = window.findChildren<QWidget*>();
    for (QWidget* child : children) {
        if (!child->objectName().isEmpty() && !child->objectName().startsWith(QLatin1String("qt_")))
            child->setAccessibleDescription(child->objectName());
    }
}

} // namespace tarn
