#pragma once

#include <QMenu>
#include <functional>

namespace window {

/// A menu of the files that were opened last, kept from one start to the next.
class RecentFiles : public QMenu
{
public:
    explicit RecentFiles(std::function<void(const QString&)> open, QWidget* parent = nullptr);

    void add(const QString& file);

private:
    void fill();

    const std::function<void(const QString&)> _open;
};

} // namespace window
