#pragma once

#include <QRectF>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "kiv/light.h"
#include "kiv/mathTypes.h"
#include "kiv/object3d.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"
#include "kiv/subtreeWalk.h"

namespace Kiv_v4::qt::detail {

/// What is drawn for one item.
struct Shape
{
    enum Kind : std::uint8_t { Box, Camera, Light };

    Path path;
    Matrix4d world;
    BoundingBox3d box{}; ///< In the item's space.
    Kind kind = Box;
    bool isOuter = false;        ///< Nothing is in it but other boxes, or hidden ones.
    bool isOrthographic = false; ///< Of a camera.
    Kiv_v4::Light::Type light = Kiv_v4::Light::Other;
    QPointF film{};  ///< Of a camera, as of a viewpoint; of a spot light, x is that of its cone.
    Color3f color{}; ///< Of a light.
    mutable QRectF place; ///< In the picture, when it was drawn last.
};

/// Boxes, and the places of cameras and lights for when there are none.
struct Extent
{
    void extend(const Shape& shape);
    [[nodiscard]] const BoundingBox3d& box() const { return boxes.empty() ? points : boxes; }

    BoundingBox3d boxes{};
    BoundingBox3d points{};
};

/// Returns a function that tells whether so many milliseconds have passed; never for 0. It looks
/// at the clock now and then, which costs more than a shape.
[[nodiscard]] std::function<bool()> dueAfter(int milliseconds);

/// Reads the shapes of what the scene shows, parents before children: the items of all run-times
/// that are visible and have a place in the world.
class SceneReading
{
public:
    SceneReading();

    /// Reads on for so many milliseconds, 0 for all. Returns whether there is more to read.
    bool readOn(int milliseconds);

    [[nodiscard]] std::vector<Shape>& shapes() noexcept { return _shapes; }

    /// Measures what is read. Nothing is left to be done when all was read.
    void measure();

    /// The extent of what was measured.
    [[nodiscard]] const Extent& extent() const noexcept { return _extent; }
    [[nodiscard]] std::size_t nbItems() const noexcept { return _nbItems; }

    /// The length of a scene unit in metres, if the files that tell it agree.
    [[nodiscard]] std::optional<double> unit() const noexcept;

    /// The items read that have a transform, up to `kWatched` of them.
    [[nodiscard]] const std::vector<SceneItem::Ptr>& placed() const noexcept { return _placed; }

    static constexpr std::size_t kWatched = 10000;

private:
    struct Level
    {
        Matrix4d world;
        Rtid runTimeId;
        bool hasTransform;
        std::size_t box; ///< The nearest shape of a box at or above it, or none.
    };

    /// What lies under the item of a box.
    struct Inner
    {
        std::optional<Matrix4d> fromWorld; ///< Nothing for a singular place.
        BoundingBox3d box{};               ///< In the item's space.
    };

    bool next();
    void addInner(const Level& above, const Matrix4d& world, const BoundingBox3d& box);
    void tellOuter();
    bool measureOn(const std::function<bool()>& isDue);
    void read();
    void addUnit(const SceneItem::Ptr& root);
    void addShapes(const SceneItem::Ptr& item, const Level& above, Level& level);

    SceneItemList _tops;
    std::unique_ptr<SubtreeWalk> _walk;
    std::vector<Level> _levels;
    std::vector<Shape> _shapes;
    std::unordered_map<std::size_t, Inner> _inner; ///< By the places of their shapes.
    std::vector<SceneItem::Ptr> _placed;
    std::vector<double> _units; ///< Of files, each once.
    bool _isRead = false;       ///< All items, though maybe not all measured.
    std::size_t _nbItems = 0;
    Extent _extent;
    std::size_t _nbMeasured = 0; ///< As many shapes are in the extent.
};

/// Reads the item's shape anew; false when there is none any more.
bool reread(Shape& shape);

/// The box of the shape in the world.
[[nodiscard]] BoundingBox3d worldBox(const Shape& shape);

} // namespace Kiv_v4::qt::detail
