#pragma once

#include <QScrollArea>

namespace tarn
{

// Holds a window's content so that a window made smaller than it shows scroll bars and
// every control can still be reached, while the window still asks for the room of its
// whole content. Made by the form itself, around content built in place.
class ContentScrollArea : public QScrollArea
{
    Q_OBJECT
public:
    explicit ContentScrollArea(QWidget* parent = nullptr);
    QSize sizeHint() const override;
};

} // namespace tarn
