#pragma once

namespace tarn
{

class Database;

// The reference rows a new store starts with: common weapons and grenades, eight
// items and twenty-one special abilities with the ids 1, 2, 4, 8 ... in row order.
void addDefaultReferenceRows(Database& refDb);
// One small example configuration, so a new author sees what a class looks like.
void addExampleConfiguration(Database& classDb);

} // namespace tarn
