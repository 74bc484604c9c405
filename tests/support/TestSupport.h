#pragma once

#include "core/AppState.h"

#include <QByteArrayList>
#include <QTemporaryDir>
#include <memory>

namespace tarn::test
{

// A fresh data directory with the starting stores, removed when the test ends.
struct TempData {
    QTemporaryDir dir;
    std::unique_ptr<AppState> state = AppState::open(dir.path());

    Database& classDb() { return state->classDb(); }
    Database& refDb() { return state->refDb(); }
    QString path(const QString& name) const { return dir.filePath(name); }
};

// Text of a caption without its mnemonic marker.
inline QString plain(QString caption)
{
    return caption.remove(u'&');
}
// A file in tests/data, such as test_set_protected.class.
inline QString testDataPath(const QString& name)
{
    return QStringLiteral(TARN_TEST_DATA "/") + name;
}
// The whole file, or nothing when it cannot be read.
QByteArray readFile(const QString& path);
bool writeFile(const QString& path, const QByteArray& content);

// The rows of a query, each as its values joined by '|', a missing value as "<null>".
QStringList rowsOf(Database& db, const QString& sql, const QVariantList& params = {});
int classCount(Database& classDb, const QString& config);
// A class of the configuration, whose package row is added first when it has none.
void insertClass(Database& classDb, const QString& config, int number, QVariantMap columns = {});
// The configuration "Test Set" whose class file, with Mod ID 12 and the starting
// reference rows, is tests/data/test_set_protected.class (and _unprotected): the
// classes "Light Scout" (number 1) and "Gunner" (number 5).
void insertTestSet(Database& classDb);

// A reference row: id, name and kd_enabled (a null QVariant is a missing value).
struct RefRow {
    qint64 id;
    QString name;
    QVariant enabled = 1;
};
// Replaces the rows of weapon, grenade, item or special, stored in the given order.
void setReferenceRows(Database& refDb, const QString& table, const QList<RefRow>& rows);

// The first two lines of a class file.
inline const QByteArrayList ClassFileHeader{"V3 0", "x"};
// Lines of a class file, each ended by lineEnd.
inline QByteArray classFile(const QByteArrayList& lines, const QByteArray& lineEnd = "\r\n")
{
    return lines.join(lineEnd) + lineEnd;
}
// A class record of six lines starting "[" + name, whose ability and item sums are 0;
// line (counted from 0) replaced by text when given.
QByteArrayList classRecord(const QByteArray& name, int line = -1, const QByteArray& text = {});

} // namespace tarn::test
