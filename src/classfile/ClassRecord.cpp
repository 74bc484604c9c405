#include "ClassRecord.h"

#include "store/Statement.h"

namespace tarn
{

namespace
{

// Binds values to the parameters of a statement in turn, from the first.
class RowBinder
{
public:
    explicit RowBinder(Statement& statement) : m_statement(statement) {}

    RowBinder& operator<<(const QString& text)
    {
        m_statement.bindText(m_next++, text);
        return *this;
    }
    RowBinder& operator<<(qint64 number)
    {
        m_statement.bindInt64(m_next++, number);
        return *this;
    }
    template <typename T, std::size_t N> RowBinder& operator<<(const std::array<T, N>& fields)
    {
        for (const T field : fields)
            *this << qint64(field);
        return *this;
    }

private:
    Statement& m_statement;
    int m_next = 1;
};

} // namespace

void bindClassRow(Statement& insert, const ClassRecord& record, const QString& packageName, qint16 classNum)
{
    RowBinder row(insert);
    row << packageName << record.name << classNum << record.redSkin << record.blueSkin << record.model;
    row << record.weapons << record.grenades << record.speed << record.health << record.armor;
    row << record.items << record.abilities << record.decoySkin << record.ammo;
}

} // namespace tarn
