#include "ClassBindings.h"

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
    auto row = [](const char* control, const char* column, const char* field) {
        return ClassBinding{QLatin1String(control), QLatin1String(column), QLatin1String(field)};
    };
    return {
        row("Label31", "package_name", "Config Name"), row("fldClassName", "class_name", "Class Name"),
        row("fldModel", "model_name", "Model Name"),   row("fldSkin1", "skin_name1", "Red Skin"),
        row("fldSkin2", "skin_name2", "Blue Skin"),    row("Text1", "class_num", "Class Num"),
        row("fldArmor", "max_armor", "Max Armor"),     row("fldSpeed", "max_speed", "Max Speed"),
        row("fldHealth", "max_health", "Max Health"),  row("fldDecoySkin", "decoyskin", "Decoy Skin # (blue)"),
        row("maxbullets", "maxbullets", "Bullets"),    row("maxshells", "maxshells", "Shells"),
        row("maxrockets", "maxrockets", "Rockets"),    row("maxgrenades", "maxgrenades", "Grenades"),
        row("maxcells", "maxcells", "Cells"),          row("maxslugs", "maxslugs", "Slugs"),
    };
}

// Numbered controls: prefix + (k + offset) bound to column + k, for k = 1..count.
void appendNumbered(std::vector<ClassBinding>& table, const QString& control, int offset, const QString& column,
                    int count, const QString& field)
{
    for (int k = 1; k <= count; ++k) {
        table.push_back(
            {control + QString::number(k + offset), column + QString::number(k), field + QString::number(k)});
    }
}

std::vector<ClassBinding> buildTable()
{
    std::vector<ClassBinding> table = namedBindings();
    appendNumbered(table, QStringLiteral("dw"), 0, QStringLiteral("w"), 10, QStringLiteral("Weapon "));
    appendNumbered(table, QStringLiteral("dg"), 0, QStringLiteral("g"), 3, QStringLiteral("Grenade "));
    appendNumbered(table, QStringLiteral("Check1_"), -1, QStringLiteral("i"), ItemBoxes, QStringLiteral("Item "));
    appendNumbered(table, QStringLiteral("special_"), -1, QStringLiteral("s"), SpecialBoxes,
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
