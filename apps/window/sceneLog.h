#pragma once

#include <QPlainTextEdit>

#include "kiv/observer.h"

namespace window {

/// A list of what the scene tells of its structure, and of what users and programs do to it.
class SceneLog : public QPlainTextEdit
{
public:
    explicit SceneLog(QWidget* parent = nullptr);

private:
    const Kiv_v4::Observer::Ptr _observer;
};

} // namespace window
