#pragma once

#include <QLabel>

namespace tarn
{

// A label that never widens its column: a text longer than the room it has ends in "…".
// Whoever sets its text gives the whole of it as tooltip and accessible name.
class ElidedLabel : public QLabel
{
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tarn
