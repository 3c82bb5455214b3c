#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
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

    /// The length of a scene unit in metres, if the files tell one.
    [[nodiscard]] std::optional<double> unit() const noexcept;

    /// The box of all shapes in the world.
    [[nodiscard]] const BoundingBox3d& box() const;

    /// The box of the shapes at and under the selected items. With many shapes, `measure` does not
    /// keep the user waiting.
    [[nodiscard]] BoundingBox3d box(const Selection& selection) const;

    /// Measures that in slices, if there are many shapes, and then calls `measured` with it. A
    /// second measurement takes the place of the first.
    void measure(const Selection& selection, std::function<void(const BoundingBox3d&)> measured);
    void endMeasuring();
    [[nodiscard]] bool isMeasuring() const noexcept { return _measuring.has_value(); }

    /// Begins to read all anew. What is there stays until that is done.
    void read();

    /// Reads to the end.
    void finish();

    /// Makes do with what is read.
    void stop();

    /// Reads the shapes at and under the item anew, before anything else happens.
    void update(const SceneItem::Ptr& item);

private:
    /// A box that is being measured.
    struct Measuring
    {
        Selection selection;
        std::function<void(const BoundingBox3d&)> measured;
        detail::Extent extent{};
        std::size_t next = 0;
    };

    void readOn(int milliseconds);
    void measureOn(int milliseconds);
    void complete();
    void rereadMoved();
    void setExtent(const detail::Extent& extent, std::size_t nbShapes);
    void watch(const std::vector<SceneItem::Ptr>& items);
    void unwatch();
    void dropItems();
    void receive(const Notification& notification);

    const std::function<void(bool)> _changed;
    std::unique_ptr<detail::SceneReading> _reading;
    std::vector<detail::Shape> _shapes;
    std::vector<SceneItem::Ptr> _watched;
    std::size_t _nbItems = 0;
    std::optional<double> _unit;
    Selection _moved; ///< The items whose shapes are to be read anew.
    mutable detail::Extent _extent;
    mutable std::size_t _nbExtended = 0; ///< As many shapes are in the extent.
    const Observer::Ptr _observer;
    const host::RunTimeWatch _runTimes; ///< Nothing is held of one that leaves.
    std::optional<Measuring> _measuring;
    QTimer _slice;
    QTimer _measureSlice;
    QTimer _restart;
    QTimer _reread;
};

} // namespace Kiv_v4::qt
