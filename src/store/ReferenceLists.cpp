#include "ReferenceLists.h"

#include "Database.h"
#include "Statements.h"

namespace tarn
{

namespace
{

std::vector<PickerEntry> loadPicker(Database& refDb, const QString& sql, const QString& idColumn,
                                    const QString& nameColumn)
{
    Statement query = refDb.prepare(QStringLiteral("select %1, %2 from (%3)").arg(idColumn, nameColumn, sql));
    std::vector<PickerEntry> entries;
    while (query.step())
        entries.push_back({query.text(1), query.int64(0)});
    return entries;
}

std::vector<BoxEntry> loadBoxes(Database& refDb, const QString& sql, const QString& idColumn, const QString& nameColumn,
                                int boxes)
{
    Statement query =
        refDb.prepare(QStringLiteral("select %1, %2, kd_enabled from (%3)").arg(idColumn, nameColumn, sql));
    std::vector<BoxEntry> entries;
    while (int(entries.size()) < boxes && query.step()) {
        const bool enabled = query.isNull(2) || query.int64(2) == 1;
        entries.push_back({query.text(1), query.int64(0), enabled});
    }
    return entries;
}

} // namespace

ReferenceLists loadReferenceLists(Database& refDb, int itemRows, int specialRows)
{
    ReferenceLists lists;
    lists.weapons = loadPicker(refDb, sql::EnabledWeapons, QStringLiteral("w_id"), QStringLiteral("w_name"));
    lists.grenades = loadPicker(refDb, sql::EnabledGrenades, QStringLiteral("g_id"), QStringLiteral("g_name"));
    lists.items = loadBoxes(refDb, sql::ItemsById, QStringLiteral("i_id"), QStringLiteral("i_name"), itemRows);
    lists.specials = loadBoxes(refDb, sql::SpecialsById, QStringLiteral("s_id"), QStringLiteral("s_name"), specialRows);
    return lists;
}

std::vector<qint64> idsOf(const std::vector<PickerEntry>& entries)
{
    std::vector<qint64> ids;
    ids.reserve(entries.size());
    for (const PickerEntry& entry : entries)
        ids.push_back(entry.id);
    return ids;
}

ReferenceLists loadReferenceLists(Database& refDb)
{
    return loadReferenceLists(refDb, ItemBoxes, SpecialBoxes);
}

} // namespace tarn
