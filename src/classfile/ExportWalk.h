#pragma once

#include "SlotSearch.h"
#include "store/ReferenceLists.h"

#include <QString>

namespace tarn
{

class ClassChecks;
class ClassFileWriter;
class ClassRows;
class Database;

// Walks the classes of a configuration in class_num order as the class editor does:
// the slot tracking runs on each row and stores what it changed (unless told not to),
// the ticked boxes are summed, and the class goes to the writer.
class ExportWalk
{
public:
    ExportWalk(Database& classDb, const ReferenceLists& lists);
    // Each class goes to the checks (if any) as stored, with the slots the tracking
    // changes, then to the writer (if any) as tracked. Returns how many classes the tracking changed.
    int run(const QString& configName, ClassFileWriter* writer, bool storeSlots, ClassChecks* checks = nullptr);
    // Hands one class, by its rowid, to the checks.
    void check(qint64 rowId, ClassChecks& checks);

    const ReferenceLists& lists() const { return m_lists; }

private:
    int walk(ClassRows& rows, ClassFileWriter* writer, bool storeSlots, ClassChecks* checks);

    Database& m_classDb;
    const ReferenceLists& m_lists;
    SlotLookup m_weaponSlots;
    SlotLookup m_grenadeSlots;
};

} // namespace tarn
