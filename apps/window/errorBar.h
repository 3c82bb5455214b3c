#pragma once

#include <QFrame>

#include "kiv/host/errorChannel.h"

class QLabel;

namespace window {

/// A bar with the last error that anybody wrote to the log, until it is closed.
class ErrorBar : public QFrame
{
    Q_OBJECT

public:
    explicit ErrorBar(QWidget* parent = nullptr);

    /// The first line of the error that is shown.
    [[nodiscard]] QString text() const;

    void tell(const QString& message);

private:
    QLabel* const _label;
    int _nbMore = 0; ///< Errors before the one that is shown.
    const Kiv_v4::host::ErrorChannel _errors;
};

} // namespace window
