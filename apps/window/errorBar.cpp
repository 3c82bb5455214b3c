#include "errorBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "kiv/log.h"
#include "kiv/qt/icons.h"

namespace window {

ErrorBar::ErrorBar(QWidget* parent)
    : QFrame(parent), _label(new QLabel(this)), _errors([this](const Kiv_v4::LogRecord& record) {
          tell(QString::fromStdString(record.message));
      })
{
    setAutoFillBackground(true);
    // A ground and a text of its own, to be read on whatever palette.
    setStyleSheet("window--ErrorBar { background: #8c2f2f; } QLabel { color: white; }");
    _label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    _label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* close = new QToolButton(this);
    close->setText(QChar(0x00d7));
    close->setAutoRaise(true);
    close->setStyleSheet("color: white; font-size: 16px;");
    close->setToolTip(tr("Close"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 2, 4, 2);
    row->addWidget(_label, 1);
    row->addWidget(close);
    connect(close, &QToolButton::clicked, this, [this] {
        _nbMore = 0;
        hide();
    });
    hide();
}

QString ErrorBar::text() const
{
    return isHidden() ? QString() : _label->text();
}

void ErrorBar::tell(const QString& message)
{
    const auto first = message.section('\n', 0, 0).trimmed();
    if (first.isEmpty()) {
        return;
    }
    _nbMore = isHidden() ? 0 : _nbMore + 1;
    _label->setText(_nbMore ? tr("%1 (and %L2 before)").arg(first).arg(_nbMore) : first);
    _label->setToolTip(message);
    setVisible(true);
}

} // namespace window
