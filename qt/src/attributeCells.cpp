#include "attributeCells.h"

#include <QCoreApplication>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include "kiv/host/itemProperties.h"

#include "colors.h"
#include "itemRows.h"
#include "texts.h"

namespace Kiv_v4::qt::detail {

namespace {

QColor placeholderColor()
{
    return QGuiApplication::palette().color(QPalette::PlaceholderText);
}

QFont bold()
{
    QFont font;
    font.setBold(true);
    return font;
}

QVariant choicesOf(const AttributeModel::Row& row)
{
    QStringList choices;
    for (const auto& choice : row.choices) {
        choices.append(textOf(choice));
    }
    return choices;
}

/// The value for people: of a switch, its box says it.
QVariant shownValue(const AttributeModel::Row& row)
{
    const auto isSwitch = std::holds_alternative<bool>(row.value);
    return row.isMixed ? QCoreApplication::translate("kiv", "mixed")
           : isSwitch  ? QString()
                       : textOf(host::valueText(row.value));
}

QVariant checkState(const AttributeModel::Row& row)
{
    const auto* isOn = std::get_if<bool>(&row.value);
    return !isOn         ? QVariant()
           : row.isMixed ? Qt::PartiallyChecked
           : *isOn       ? Qt::Checked
                         : Qt::Unchecked;
}

/// Short: the column is narrow.
QString unitText(const std::string& unit)
{
    return unit == host::kDegrees      ? QString(QChar(0x00b0))
           : unit == host::kSceneUnits ? QCoreApplication::translate("kiv", "units")
                                       : textOf(unit);
}

} // namespace

QVariant groupData(const AttributeModel::Group& group, int role)
{
    if (role == Qt::DisplayRole) {
        return titleOf(group.key);
    }
    if (role == Qt::FontRole) {
        return bold();
    }
    return {};
}

QVariant labelData(const AttributeModel::Row& row, int role)
{
    if (role == Qt::DisplayRole) {
        return textOf(row.label);
    }
    if (role == Qt::ToolTipRole) {
        return textOf(row.name + " (" + row.type + ")");
    }
    if (role == Qt::FontRole && row.standard && row.value != *row.standard) {
        return bold();
    }
    return {};
}

QVariant valueData(const AttributeModel::Row& row, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return shownValue(row);
    case Qt::EditRole:
        return row.isMixed ? QString() : textOf(Kiv_v4::textOf(row.value));
    case Qt::ToolTipRole:
        return row.isMixed ? QString() : textOf(host::valueText(row.value));
    case Qt::CheckStateRole:
        return checkState(row);
    case Qt::DecorationRole:
        return row.isMixed ? QVariant() : swatchOf(row.value);
    case Qt::ForegroundRole:
        return row.isMixed || !row.isSettable ? QVariant(placeholderColor()) : QVariant();
    case AttributeModel::TypeRole:
        return textOf(row.type);
    case AttributeModel::ChoicesRole:
        return choicesOf(row);
    case AttributeModel::MixedRole:
        return row.isMixed;
    default:
        return {};
    }
}

QVariant unitData(const AttributeModel::Row& row, int role)
{
    return role == Qt::DisplayRole      ? QVariant(unitText(row.unit))
           : role == Qt::ForegroundRole ? QVariant(placeholderColor())
                                        : QVariant();
}

} // namespace Kiv_v4::qt::detail
