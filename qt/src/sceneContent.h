#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "kiv/host/runTimeWatch.h"
#include "kiv/observer.h"
#include "kiv/qt/sceneView.h"

#include "schematic.h"

namespace Kiv_v4::qt {

/// The shapes of the scene, read in slices and kept in step with it.
class SceneView::Content
{
public:
    /// `changed` is called when there are other shapes, with whether all is read.
    explicit Content(std::function<void(bool isRead)> changed);
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;
    ~Content();

    [[nodiscard]] const std::vector<detail::Shape>& shapes() const noexcept;
    [[nodiscard]] bool isReading() const noexcept { return _reading != nullptr; }
    [[nodiscard]] std::size_t nbItems() const noexcept;

    /// The box of all shapes in the world.
    [[nodiscard]] const BoundingBox3d& box() const;

    /// The box of the shapes at and under the selected items.
    [[nodiscard]] BoundingBox3d box(const Selection& selection) const;

    /// Begins to read all anew. What is there stays until that is done.
    void read();

    /// Reads to the end.
    void finish();

    /// Makes do with what is read.
    void stop();

    /// Reads the shapes at and under the item anew, before anything else happens.
    void update(const SceneItem::Ptr& item);

private:
    /// Boxes, and the places of cameras and lights for when there are none.
    struct Extent
    {
        void extend(const detail::Shape& shape);
        [[nodiscard]] const BoundingBox3d& box() const { return boxes.empty() ? points : boxes; }

        BoundingBox3d boxes;
        BoundingBox3d points;
    };

    void readOn(int milliseconds);
    void complete();
    void rereadMoved();
    void forgetExtent();
    void watch(const std::vector<SceneItem::Ptr>& items);
    void unwatch();
    void letGo();
    void hear(const Notification& notification);

    const std::function<void(bool)> _changed;
    std::unique_ptr<detail::SceneReading> _reading;
    std::vector<detail::Shape> _shapes;
    std::vector<SceneItem::Ptr> _watched;
    std::size_t _nbItems = 0;
    Selection _moved; ///< The items whose shapes are to be read anew.
    mutable Extent _extent;
    mutable std::size_t _nbExtended = 0; ///< As many shapes are in the extent.
    const Observer::Ptr _observer;
    const host::RunTimeWatch _runTimes; ///< Nothing is held of one that leaves.
    QTimer _slice;
    QTimer _restart;
    QTimer _reread;
};

} // namespace Kiv_v4::qt
