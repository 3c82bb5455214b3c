#pragma once

#include <QSize>
#include <QString>

#include "mainWindow.h"

namespace window {

/// Returns the size of a text as `1280x800`; an empty one for other texts.
[[nodiscard]] QSize sizeOf(const QString& text);

/// Writes a picture of the window in that size, with its rows opened and the view complete. Returns
/// false when the file cannot be written.
bool saveScreenshot(MainWindow& window, const QString& file, const QSize& size);

/// Gives the application dark colours, whatever the desktop has.
void useDarkColors();

} // namespace window
