#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QPixmap>
#include <string>

namespace Kiv_v4::qt::detail {

/// Returns the drawn icon of that name; a null icon when there is none.
[[nodiscard]] QIcon glyphIcon(const std::string& name);

/// Returns an icon with the letter on a tile.
[[nodiscard]] QIcon letterIcon(QChar letter);

/// Returns what the engine paints, on a transparent ground.
[[nodiscard]] QPixmap painted(QIconEngine& engine, const QSize& size, QIcon::Mode mode,
                              QIcon::State state);

} // namespace Kiv_v4::qt::detail
