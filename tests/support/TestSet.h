#pragma once

namespace tarn
{
class Database;
}

namespace tarn::test
{

// The configuration "Test Set" whose class file, with Mod ID 12 and the starting
// reference rows, is tests/data/test_set_protected.class (and _unprotected): the
// classes "Light Scout" (number 1) and "Gunner" (number 5).
void insertTestSet(Database& classDb);

} // namespace tarn::test
