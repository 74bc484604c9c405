#pragma once

#include "classfile/SlotSearch.h"

#include <QString>

namespace tarn
{

// The class editor's rule for the picker position of the id a hidden slot box holds as
// text: an empty text looks for id 0; a text that is not a 16-bit number matches
// nothing and shows position 0.
int pickerPosition(const SlotLookup& lookup, const QString& idText);

} // namespace tarn
