#include "colors.h"

#include <algorithm>
#include <cmath>

namespace Kiv_v4::qt::detail {

namespace {

float encoded(double linear)
{
    const auto value = std::isfinite(linear) ? std::clamp(linear, 0.0, 1.0) : 0.0;
    return static_cast<float>(value <= 0.0031308 ? 12.92 * value
                                                 : 1.055 * std::pow(value, 1 / 2.4) - 0.055);
}

double decoded(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

} // namespace

QColor screenColor(double red, double green, double blue)
{
    return QColor::fromRgbF(encoded(red), encoded(green), encoded(blue));
}

QString linearText(const QColor& color)
{
    const auto element = [](double value) { return QString::number(decoded(value), 'g', 6); };
    return element(color.redF()) + ", " + element(color.greenF()) + ", " + element(color.blueF());
}

QVariant swatchOf(const host::PropertyValue& value)
{
    if (const auto* color = std::get_if<TypedColorN<float, 3>>(&value)) {
        return screenColor(color->r(), color->g(), color->b());
    }
    if (const auto* color = std::get_if<TypedColorN<float, 4>>(&value)) {
        return screenColor(color->r(), color->g(), color->b());
    }
    return {};
}

} // namespace Kiv_v4::qt::detail
