#pragma once

#include <QString>
#include <QStringList>

namespace tarn
{

class Database;

// Whole-configuration commands on the class store, shared by the workbench and
// tarnctl. A name is always bound as a value, so any text is a good name.
// Each throws StoreError when the store refuses, and then leaves it as it was.

// Configuration names in the store's order of package_name.
QStringList listConfigurations(Database& classDb);
bool configurationExists(Database& classDb, const QString& name);
// The number of package rows that carry the name: more than one lists it twice.
int countPackageRows(Database& classDb, const QString& name);
// The number of classes under the name.
int countClasses(Database& classDb, const QString& name);
void addConfiguration(Database& classDb, const QString& name);
// Removes the first package row of the name and every class of the name.
void deleteConfiguration(Database& classDb, const QString& name);
// A new package row under the new name, then a copy of every class of the source
// with all its columns as stored, class numbers and missing values included.
// A new name already in use is refused, and nothing is written.
void copyConfiguration(Database& classDb, const QString& source, const QString& newName);

} // namespace tarn
