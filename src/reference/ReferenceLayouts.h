#pragma once

#include <QList>
#include <QString>

#include "store/RecordSource.h"

namespace tarn
{

// One bound box of a reference editor: the caption of its label and its column.
struct BoundField {
    QString label;
    QString column;
};

// All that tells one twin reference editor from the other.
struct ReferenceLayout {
    QString windowName;        // the window's system name
    QString caption;           // the window title
    QString dataName;          // the system name of its navigator
    QString dataCaption;       // the caption between the navigator's buttons
    RecordSource recordSource; // lowest id first
    QList<BoundField> fields;  // Text1 onwards, in the order of the boxes
};

namespace layouts
{

// Five boxes each: id, name, damage, speed, enabled mark.
const ReferenceLayout& weapons();
const ReferenceLayout& grenades();
// Three boxes each: id, name, enabled mark.
const ReferenceLayout& items();
const ReferenceLayout& special();

} // namespace layouts

} // namespace tarn
