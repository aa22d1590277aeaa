#include "tables/ui/ParamGridModel.h"

#include "platform/qt/AnsiText.h"

#include <QBrush>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>

#include <string_view>

namespace tables {

namespace {

// More than any cell shows: the notes of a file may be megabytes, which must not be laid out at each painting.
constexpr std::size_t kShownCharacters = 1000;

// A tint of the highlight, faint enough for the text's own colour. In a palette of few colours it is hardly seen; the
// mark and the bold face are.
QColor markedBackground(const QPalette& palette)
{
    constexpr double kTint = 0.18;
    const QColor base = palette.color(QPalette::Base);
    const QColor tint = palette.color(QPalette::Highlight);
    const auto mixed = [](float from, float to) { return static_cast<float>(from + (to - from) * kTint); };
    return QColor::fromRgbF(mixed(base.redF(), tint.redF()), mixed(base.greenF(), tint.greenF()),
                            mixed(base.blueF(), tint.blueF()));
}

} // namespace

ParamGridModel::ParamGridModel(ParamTable& table, QObject* parent)
    : QAbstractTableModel(parent)
    , m_table(table)
{
    m_table.setListener(this);
}

ParamGridModel::~ParamGridModel()
{
    m_table.setListener(nullptr);
}

int ParamGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_table.rowCount() - 1;
}

int ParamGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumnCount;
}

QVariant ParamGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const int row = index.row() + 1;
    if (role == Qt::DisplayRole) {
        return platform::toQString(std::string_view(m_table.cell(row, index.column())).substr(0, kShownCharacters));
    }
    if (role == Qt::EditRole) {
        return platform::toQString(m_table.cell(row, index.column()));
    }
    if (role == Qt::FontRole && index.column() != kNotesColumn) {
        QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        font.setBold(m_table.cell(row, kChangedColumn) == kChangedMark);
        return font;
    }
    if (role == Qt::BackgroundRole && m_table.cell(row, kChangedColumn) == kChangedMark) {
        return QBrush(markedBackground(QGuiApplication::palette()));
    }
    return {};
}

QVariant ParamGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return platform::toQString(m_table.cell(0, section));
    }
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) {
        return int{Qt::AlignLeft | Qt::AlignVCenter};
    }
    return {};
}

void ParamGridModel::cellChanged(int row, int column)
{
    if (row == 0) {
        emit headerDataChanged(Qt::Horizontal, column, column);
        return;
    }
    const int lastChanged = column == kChangedColumn ? kColumnCount - 1 : column; // a mark also changes the row's font
    emit dataChanged(index(row - 1, column), index(row - 1, lastChanged));
}

void ParamGridModel::rowCountAboutToChange(int newCount)
{
    const int present = rowCount();
    const int wanted = newCount - 1;
    if (wanted > present) {
        m_pending = Pending::Insert;
        beginInsertRows({}, present, wanted - 1);
    } else if (wanted < present) {
        m_pending = Pending::Remove;
        beginRemoveRows({}, wanted, present - 1);
    }
}

void ParamGridModel::rowCountChanged()
{
    const Pending pending = m_pending;
    m_pending = Pending::None;
    if (pending == Pending::Insert) {
        endInsertRows();
    } else if (pending == Pending::Remove) {
        endRemoveRows();
    }
}

} // namespace tables
