#pragma once

class QWidget;

namespace tarn
{

// Sizes measured in characters and lines of the control's own font, so that the windows
// keep their proportions at any font size and scale.

// A box just wide enough for `characters` digits.
void setWidthInCharacters(QWidget& box, int characters);
// A list `characters` wide and `lines` rows tall.
void setSizeInCharacters(QWidget& list, int characters, int lines);

} // namespace tarn
