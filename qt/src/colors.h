#pragma once

#include <QColor>
#include <QVariant>
#include <string>

#include "kiv/host/propertyValue.h"

namespace Kiv_v4::qt::detail {

// Colours of scenes are linear; those of screens are encoded as sRGB.

/// Returns the colour as screens show it, from red, green and blue; clamped to what they can show.
[[nodiscard]] QColor screenColor(double red, double green, double blue);

/// Returns red, green and blue of a colour of the screen, as a text for `valueFromText`.
[[nodiscard]] QString linearText(const QColor& color);

/// Returns the colour to show beside the value; nothing for what is no colour.
[[nodiscard]] QVariant swatchOf(const host::PropertyValue& value);

} // namespace Kiv_v4::qt::detail
