#include "grid.h"

#include <QCoreApplication>
#include <cmath>

#include "kiv/host/propertyValue.h"

#include "texts.h"

namespace Kiv_v4::qt::detail {

namespace {

/// As many cells lie between the viewer and what is looked at.
constexpr double kCells = 8;

QString lengthText(double metres)
{
    const auto [length, name] = metres >= 999.5     ? std::pair(metres / 1000, "km")
                                : metres >= 0.9995  ? std::pair(metres, "m")
                                : metres >= 0.00995 ? std::pair(metres * 100, "cm")
                                                    : std::pair(metres * 1000, "mm");
    return textOf(host::numberText(length)) + QChar(0x00a0) + QLatin1String(name);
}

} // namespace

double cellFor(double distance, std::optional<double> unit)
{
    const auto metres = unit.value_or(1);
    return std::pow(10, std::round(std::log10(distance * metres / kCells))) / metres;
}

QString cellText(double cell, std::optional<double> unit)
{
    return unit ? QCoreApplication::translate("kiv", "one cell is %1").arg(lengthText(cell * *unit))
           : cell == 1 ? QCoreApplication::translate("kiv", "one cell is 1 unit")
                       : QCoreApplication::translate("kiv", "one cell is %1 units")
                             .arg(textOf(host::numberText(cell)));
}

} // namespace Kiv_v4::qt::detail
