#pragma once

class QMainWindow;
class QWidget;

namespace tarn
{

// Sizes measured in characters and lines of the control's own font, so that the windows
// keep their proportions at any font size and scale.

// A box just wide enough for `characters` digits.
void setWidthInCharacters(QWidget& box, int characters);
// A list `characters` wide and `lines` rows tall.
void setSizeInCharacters(QWidget& list, int characters, int lines);

// Puts the window's central widget in a scroll area: a window made smaller than its
// content shows scroll bars, so every control can still be reached. The window still
// asks for the room of its whole content.
void scrollCentralWidget(QMainWindow& window);

} // namespace tarn
