#pragma once

#include "tables/ParamTable.h"

#include <QAbstractTableModel>

namespace tables {

// Shows a ParamTable to Qt. The table's header row becomes the horizontal header, so model row 0 is grid row 1. What is
// drawn (the display role) ends after 1,000 characters; the edit role has the whole cell.
class ParamGridModel final : public QAbstractTableModel, private TableListener
{
    Q_OBJECT

public:
    explicit ParamGridModel(ParamTable& table, QObject* parent = nullptr);
    ~ParamGridModel() override;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void cellChanged(int row, int column) override;
    void rowCountAboutToChange(int newCount) override;
    void rowCountChanged() override;

    ParamTable& m_table;
    enum class Pending { None, Insert, Remove } m_pending = Pending::None;
};

} // namespace tables
