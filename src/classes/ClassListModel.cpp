#include "ClassListModel.h"

#include <QPainter>

namespace tarn
{

namespace
{

std::optional<qint64> valueOf(const ClassListRow& row, int column)
{
    switch (column) {
    case ClassListModel::Number:
        return row.number;
    case ClassListModel::Armor:
        return row.armor;
    case ClassListModel::Speed:
        return row.speed;
    case ClassListModel::Health:
        return row.health;
    default:
        return std::nullopt;
    }
}

} // namespace

ClassListModel::ClassListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ClassListModel::setRows(std::vector<ClassListRow> rows, QHash<qint64, QString> weaponNames)
{
    beginResetModel();
    m_rows = std::move(rows);
    m_weaponNames = std::move(weaponNames);
    m_rowOfId.clear();
    m_maximum.fill(0);
    for (int i = 0; i < int(m_rows.size()); ++i) {
        m_rowOfId.insert(m_rows[std::size_t(i)].rowId, i);
        for (int column : {Armor, Speed, Health})
            m_maximum[std::size_t(column)] =
                std::max(m_maximum[std::size_t(column)], valueOf(m_rows[std::size_t(i)], column).value_or(0));
    }
    endResetModel();
}

int ClassListModel::rowOf(qint64 rowId) const
{
    return m_rowOfId.value(rowId, -1);
}

int ClassListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ClassListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString ClassListModel::weaponsOf(const ClassListRow& row) const
{
    QStringList names;
    for (const std::optional<qint64>& id : row.weapons) {
        if (id && m_weaponNames.contains(*id))
            names << m_weaponNames.value(*id);
    }
    return names.join(QStringLiteral(", "));
}

QVariant ClassListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const ClassListRow& row = m_rows[std::size_t(index.row())];
    const int column = index.column();
    if (role == RowIdRole)
        return row.rowId;
    if (role == ColumnMaximumRole)
        return m_maximum[std::size_t(column)];
    if (role != Qt::DisplayRole)
        return {};
    switch (column) {
    case Name:
        return row.name;
    case Model:
        return row.model;
    case Weapons:
        return weaponsOf(row);
    default:
        if (const std::optional<qint64> value = valueOf(row, column))
            return *value;
        return {};
    }
}

QVariant ClassListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const std::array<QString, ColumnCount> titles{
        QStringLiteral("Number"), QStringLiteral("Name"),   QStringLiteral("Model"),  QStringLiteral("Armor"),
        QStringLiteral("Speed"),  QStringLiteral("Health"), QStringLiteral("Weapons")};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= ColumnCount)
        return {};
    return titles[std::size_t(section)];
}

void BarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const qint64 maximum = index.data(ClassListModel::ColumnMaximumRole).toLongLong();
    const qint64 value = index.data(Qt::DisplayRole).toLongLong();
    if (maximum > 0 && value > 0) {
        QRect bar = option.rect.adjusted(1, 2, -1, -2);
        bar.setWidth(int(qint64(bar.width()) * std::min(value, maximum) / maximum));
        QColor fill = option.palette.color(QPalette::Highlight);
        fill.setAlpha(70);
        painter->fillRect(bar, fill);
    }
    QStyledItemDelegate::paint(painter, option, index);
}

} // namespace tarn
