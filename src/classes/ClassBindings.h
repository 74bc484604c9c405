#pragma once

#include <QString>
#include <vector>

class QWidget;

namespace tarn
{

class DataControl;

// One control of the class editor bound to a classdef column.
struct ClassBinding {
    QString control;   // object name on the form
    QString column;    // classdef column
    QString fieldName; // what a refusal message calls it
};

// Every binding of the class editor: the named boxes, Label31, the hidden slot
// boxes and the two check-box arrays. i9 has no control.
const std::vector<ClassBinding>& classBindings();

// Binds each control of the table, found by name in the window, to its column.
void bindClassControls(QWidget& window, DataControl& data);

} // namespace tarn
