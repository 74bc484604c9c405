#pragma once

#include "store/Classes.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QStyledItemDelegate>

namespace tarn
{

// The classes of a configuration as a table: number, name, model, armor, speed, health
// and the weapons by name. One model over rows read in a single statement, never a
// widget per row, so a list of 30,000 classes opens at once.
class ClassListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Number, Name, Model, Armor, Speed, Health, Weapons, ColumnCount };
    // The largest value of a bar column, for the bars drawn behind its numbers.
    static constexpr int ColumnMaximumRole = Qt::UserRole + 1;
    static constexpr int RowIdRole = Qt::UserRole + 2;

    explicit ClassListModel(QObject* parent = nullptr);

    void setRows(std::vector<ClassListRow> rows, QHash<qint64, QString> weaponNames);
    // The model row of a class, by its rowid; -1 when it has none.
    int rowOf(qint64 rowId) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString weaponsOf(const ClassListRow& row) const;

    std::vector<ClassListRow> m_rows;
    QHash<qint64, QString> m_weaponNames;
    QHash<qint64, int> m_rowOfId;
    std::array<qint64, ColumnCount> m_maximum{};
};

// Draws a column's numbers over bars as long as the number is large beside the
// column's largest, so that the balance of the classes shows at a glance.
class BarDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace tarn
