#pragma once

#include <QSize>
#include <QString>

#include "mainWindow.h"

namespace window {

/// Writes a picture of the window in that size, with its rows opened and the view complete. Throws
/// `std::runtime_error` with the reason when the file cannot be written.
void saveScreenshot(MainWindow& window, const QString& file, const QSize& size);

/// Gives the application dark colours, whatever the desktop has.
void useDarkColors();

} // namespace window
