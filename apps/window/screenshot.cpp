#include "screenshot.h"

#include <QApplication>
#include <QBuffer>
#include <QPalette>
#include <QTreeView>

#include "kiv/document/fileReplacement.h"
#include "kiv/host/errorPrefix.h"

namespace window {

using namespace Kiv_v4;

void saveScreenshot(MainWindow& window, const QString& file, const QSize& size)
{
    window.resize(size);
    window.show();
    QCoreApplication::processEvents();
    window.outliner().expandToDepth(3);
    window.outliner().scrollTo(window.outliner().currentIndex());
    static_cast<void>(window.view().picture()); // so that all is read
    if (window.view().camera().empty()) {
        window.view().frameAll();
    }
    static_cast<void>(window.view().picture());
    QCoreApplication::processEvents();
    QBuffer picture;
    window.grab().save(&picture, "PNG", 0); // as small as it gets
    host::prefixed(file.toStdString(), [&] {
        const auto& bytes = picture.data();
        document::replaceFile(file.toStdString(),
                              {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
}

void useDarkColors()
{
    QPalette dark(QColor(53, 53, 55));
    dark.setColor(QPalette::Base, QColor(36, 36, 38));
    dark.setColor(QPalette::AlternateBase, QColor(42, 42, 45));
    dark.setColor(QPalette::Text, QColor(224, 224, 226));
    dark.setColor(QPalette::WindowText, QColor(224, 224, 226));
    dark.setColor(QPalette::ButtonText, QColor(224, 224, 226));
    dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 154));
    dark.setColor(QPalette::Highlight, QColor(61, 125, 196));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Link, QColor(110, 170, 235));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        dark.setColor(QPalette::Disabled, role, QColor(120, 120, 124));
    }
    QApplication::setPalette(dark);
}

} // namespace window
