#include "ClassBindings.h"

#include "store/ClassColumns.h"
#include "store/ReferenceLists.h"
#include "toolkit/DataControl.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace tarn
{

namespace
{

std::vector<ClassBinding> namedBindings()
{
    using C = ClassColumn;
    auto row = [](const char* control, ClassColumn column, const char* field) {
        return ClassBinding{QLatin1String(control), classdef::nameOf(column), QLatin1String(field)};
    };
    return {
        row("Label31", C::package_name, "Config Name"), row("fldClassName", C::class_name, "Class Name"),
        row("fldModel", C::model_name, "Model Name"),   row("fldSkin1", C::skin_name1, "Red Skin"),
        row("fldSkin2", C::skin_name2, "Blue Skin"),    row("Text1", C::class_num, "Class Num"),
        row("fldArmor", C::max_armor, "Max Armor"),     row("fldSpeed", C::max_speed, "Max Speed"),
        row("fldHealth", C::max_health, "Max Health"),  row("fldDecoySkin", C::decoyskin, "Decoy Skin # (blue)"),
        row("maxbullets", C::maxbullets, "Bullets"),    row("maxshells", C::maxshells, "Shells"),
        row("maxrockets", C::maxrockets, "Rockets"),    row("maxgrenades", C::maxgrenades, "Grenades"),
        row("maxcells", C::maxcells, "Cells"),          row("maxslugs", C::maxslugs, "Slugs"),
    };
}

// Numbered controls: control + (k + 1 + offset) bound to column k of the series, whose
// caption is field + (k + 1).
template <ClassColumn First, std::size_t Size>
void appendNumbered(std::vector<ClassBinding>& table, const QString& control, int offset,
                    classdef::Series<First, Size> series, const QString& field)
{
    for (std::size_t k = 0; k < Size; ++k) {
        const int number = int(k) + 1;
        table.push_back({control + QString::number(number + offset), classdef::nameOf(series.at(k)),
                         field + QString::number(number)});
    }
}

std::vector<ClassBinding> buildTable()
{
    std::vector<ClassBinding> table = namedBindings();
    appendNumbered(table, QStringLiteral("dw"), 0, classdef::weapons, QStringLiteral("Weapon "));
    appendNumbered(table, QStringLiteral("dg"), 0, classdef::grenades, QStringLiteral("Grenade "));
    // i9 has no box.
    appendNumbered(table, QStringLiteral("Check1_"), -1, classdef::Series<ClassColumn::i1, ItemBoxes>{},
                   QStringLiteral("Item "));
    appendNumbered(table, QStringLiteral("special_"), -1, classdef::Series<ClassColumn::s1, SpecialBoxes>{},
                   QStringLiteral("Special "));
    return table;
}

} // namespace

const std::vector<ClassBinding>& classBindings()
{
    static const std::vector<ClassBinding> table = buildTable();
    return table;
}

void bindClassControls(QWidget& window, DataControl& data)
{
    for (const ClassBinding& binding : classBindings()) {
        auto* control = window.findChild<QWidget*>(binding.control);
        if (auto* box = qobject_cast<QLineEdit*>(control))
            data.bindText(box, binding.column, binding.fieldName);
        else if (auto* check = qobject_cast<QCheckBox*>(control))
            data.bindCheck(check, binding.column, binding.fieldName);
        else if (auto* label = qobject_cast<QLabel*>(control))
            data.bindLabel(label, binding.column);
    }
}

} // namespace tarn
