#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <optional>

class QIODevice;

namespace tarn
{

// A stored number as its box shows it; a missing value is written as empty text.
using ShownNumber = std::optional<qint64>;

// One class as the export writes it, in the order of the file's fields.
struct ExportedClass {
    QString name;
    QString model;
    QString redSkin;
    QString blueSkin;
    ShownNumber decoySkin;
    std::array<ShownNumber, 9> weapons; // slots 2 to 10; slot 1 is always written as 1
    std::array<ShownNumber, 3> grenades;
    ShownNumber armor;
    ShownNumber speed;
    ShownNumber health;
    qint32 abilitySum = 0;
    qint32 itemSum = 0;
    std::array<ShownNumber, 6> ammo; // bullets, shells, rockets, grenades, cells, slugs
};

// Writes a class file, protected or not, to a device opened for writing. Each call
// writes whole lines; a text that the chosen form cannot carry, or a device that
// fails, throws ClassFileError before anything of that call reaches the device.
class ClassFileWriter
{
public:
    ClassFileWriter(QIODevice& out, bool protectOutput);

    void writeHeader(const QString& modId, const QString& configName);
    void writeClass(const ExportedClass& cls);

private:
    void write();

    QIODevice& m_out;
    bool m_protect;
    QByteArray m_block; // the lines of one call, kept to reuse its memory
};

// The lines the export writes for one class, as bytes: what the class editor's preview
// shows. Throws ClassFileError where the export would refuse.
QByteArray classLines(const ExportedClass& cls, bool protectOutput);

} // namespace tarn
