#include "TestSupport.h"

namespace tarn::test
{

QString plain(const QString& caption)
{
    QString text = caption;
    return text.remove(u'&');
}

} // namespace tarn::test
