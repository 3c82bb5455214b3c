#include "schematicPainter.h"

#include <algorithm>
#include <cmath>

#include "colors.h"
#include "glyphs.h"
#include "vectors.h"

namespace Kiv_v4::qt::detail {

namespace {

constexpr double kNearestDrawn = 1e-4;
/// Smaller shapes are drawn as a point.
constexpr double kSmallest = 1.5;
constexpr std::array<std::array<std::size_t, 2>, 12> kEdges{{{0, 1},
                                                             {2, 3},
                                                             {4, 5},
                                                             {6, 7},
                                                             {0, 2},
                                                             {1, 3},
                                                             {4, 6},
                                                             {5, 7},
                                                             {0, 4},
                                                             {1, 5},
                                                             {2, 6},
                                                             {3, 7}}};
const std::array<QColor, 3> kAxisColors{QColor(200, 70, 70), QColor(80, 160, 80),
                                        QColor(70, 110, 210)};

QColor faded(QColor color, double alpha)
{
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

const char* iconOf(Light::Type type)
{
    switch (type) {
    case Light::Directional:
        return "directionalLight";
    case Light::Point:
        return "pointLight";
    case Light::Spot:
        return "spotLight";
    case Light::Area:
        return "areaLight";
    default:
        return "light";
    }
}

/// The outline of the points.
QPolygonF hullOf(QPolygonF points)
{
    const auto turn = [](const QPointF& a, const QPointF& b, const QPointF& c) {
        return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
    };
    std::ranges::sort(points, [](const QPointF& a, const QPointF& b) {
        return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
    });
    QPolygonF hull;
    for (auto side = 0; side < 2; ++side) { // below from left to right, then above and back
        const auto first = hull.size();
        for (const auto& point : points) {
            while (hull.size() > first + 1 &&
                   turn(hull[hull.size() - 2], hull.back(), point) <= 0) {
                hull.pop_back();
            }
            hull.append(point);
        }
        hull.pop_back();
        std::ranges::reverse(points);
    }
    return hull;
}

/// The corners of a rectangle from -x, -y to x, y at a distance along -z, in the world.
std::array<Vector3d, 4> rectangle(const Matrix4d& world, const QPointF& half, double distance)
{
    const auto corner = [&](double x, double y) {
        auto at = axis(world, 3);
        at = sum(at, unit(axis(world, 0)), x * half.x());
        at = sum(at, unit(axis(world, 1)), y * half.y());
        return sum(at, unit(axis(world, 2)), -distance);
    };
    return {corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1)};
}

} // namespace

SchematicPainter::SchematicPainter(QPainter& painter, const Viewpoint& viewpoint,
                                   const QSizeF& picture, const QPalette& palette, double sceneSize)
    : _painter(painter), _viewpoint(viewpoint), _picture(picture), _palette(palette),
      _symbol(0.05 * sceneSize)
{}

std::optional<QPointF> SchematicPainter::place(const Vector3d& point) const
{
    return _viewpoint.placed(_viewpoint.seen(point), _picture);
}

bool SchematicPainter::seenLine(Vector3d from, Vector3d to)
{
    if (from.vector[2] > to.vector[2]) {
        std::swap(from, to);
    }
    if (to.vector[2] <= kNearestDrawn) {
        return false;
    }
    if (from.vector[2] < kNearestDrawn) { // clipped at the viewer's plane
        const auto share = (kNearestDrawn - from.vector[2]) / (to.vector[2] - from.vector[2]);
        from = sum(scaled(from, 1 - share), to, share);
        from.vector[2] = 1.01 * kNearestDrawn;
    }
    const auto start = _viewpoint.placed(from, _picture);
    const auto end = _viewpoint.placed(to, _picture);
    if (!start || !end) {
        return false;
    }
    const QRectF seen = QRectF(*start, *end).normalized();
    // Ends far outside take rasterizers long, or overflow them.
    const QRectF limits(-4e4, -4e4, 8e4, 8e4);
    if (!limits.contains(*start) || !limits.contains(*end)) {
        return false;
    }
    _painter.drawLine(*start, *end);
    _drawn = _drawn.isNull() ? seen : _drawn.united(seen);
    return true;
}

bool SchematicPainter::line(const Vector3d& from, const Vector3d& to)
{
    return seenLine(_viewpoint.seen(from), _viewpoint.seen(to));
}

void SchematicPainter::drawGround(const Vector3d& centre, double cell)
{
    constexpr auto kCells = 20;
    const auto weak = faded(_palette.color(QPalette::Text), 0.10);
    const auto strong = faded(_palette.color(QPalette::Text), 0.20);
    const auto middle = [cell](double at) { return 10 * cell * std::round(at / (10 * cell)); };
    const auto x = middle(centre.vector[0]);
    const auto z = middle(centre.vector[2]);
    const auto reach = kCells * cell;
    // In pieces, so that what passes beside the viewer is left out and not the whole line.
    const auto piecewise = [&](const Vector3d& from, const Vector3d& to) {
        const auto step = scaled(sum(to, from, -1), 1.0 / kCells);
        for (auto i = 0; i < kCells; ++i) {
            line(sum(from, step, i), sum(from, step, i + 1));
        }
    };
    for (auto i = -kCells; i <= kCells; ++i) {
        const auto at = i * cell;
        _painter.setPen(QPen(i % 10 == 0 ? strong : weak, 1));
        piecewise({{x + at, 0, z - reach}}, {{x + at, 0, z + reach}});
        piecewise({{x - reach, 0, z + at}}, {{x + reach, 0, z + at}});
    }
    for (std::size_t i = 0; i < 3; ++i) {
        Vector3d end;
        end.vector[i] = i == 1 ? cell : 2 * cell;
        _painter.setPen(QPen(kAxisColors[i], 1.5));
        line({}, end);
    }
}

void SchematicPainter::draw(const Shape& shape, bool isSelected)
{
    _drawn = {};
    const auto color = isSelected                    ? _palette.color(QPalette::Highlight)
                       : shape.kind == Shape::Camera ? QColor(0x3f, 0x86, 0xc9)
                       : shape.kind == Shape::Light  ? QColor(0xc9, 0x87, 0x12)
                                                     : faded(_palette.color(QPalette::Text), 0.55);
    _painter.setPen(QPen(color, isSelected ? 2 : 1));
    switch (shape.kind) {
    case Shape::Box:
        drawBox(shape, isSelected);
        break;
    case Shape::Camera:
        drawCamera(shape);
        break;
    case Shape::Light:
        drawLight(shape);
        break;
    }
    shape.place = _drawn;
}

void SchematicPainter::drawBox(const Shape& shape, bool isSelected)
{
    const std::array ends{shape.box.min, shape.box.max};
    Corners seen;
    QPolygonF places;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        seen[i] = _viewpoint.seen(
            image({{ends[i & 1].vector[0], ends[i >> 1 & 1].vector[1], ends[i >> 2].vector[2]}},
                  shape.world));
        if (const auto at = _viewpoint.placed(seen[i], _picture)) {
            places.append(*at);
        }
    }
    const auto bounds = places.boundingRect();
    if (places.size() == 8 && std::max(bounds.width(), bounds.height()) < kSmallest) {
        _painter.drawPoint(bounds.center());
        _drawn = bounds;
        return;
    }
    if (shape.isOuter && !isSelected) {
        _drawn = {}; // its contents are drawn
        return;
    }
    if (places.size() == 8) {
        QPainterPath inside;
        inside.addPolygon(hullOf(places));
        _painter.fillPath(inside, faded(_painter.pen().color(), isSelected ? 0.12 : 0.04));
    }
    drawEdges(seen);
}

void SchematicPainter::drawEdges(const Corners& corners)
{
    for (const auto& [from, to] : kEdges) {
        seenLine(corners[from], corners[to]);
    }
}

void SchematicPainter::drawCamera(const Shape& shape)
{
    const auto longest = std::max(shape.film.x(), shape.film.y());
    const auto half = shape.isOrthographic ? shape.film * (_symbol / longest / 2)
                                           : shape.film * (_symbol / std::max(longest, 0.5));
    const auto far = rectangle(shape.world, half,
                               shape.isOrthographic ? _symbol : _symbol / std::max(longest, 0.5));
    const auto near = rectangle(shape.world, shape.isOrthographic ? half : QPointF(), 0);
    for (std::size_t i = 0; i < 4; ++i) {
        line(far[i], far[(i + 1) % 4]);
        line(near[i], near[(i + 1) % 4]);
        line(near[i], far[i]);
    }
    const auto top = scaled(sum(far[2], far[3]), 0.5);
    const auto tip = sum(top, unit(axis(shape.world, 1)), half.y() * 0.6);
    line(sum(scaled(top, 0.6), far[3], 0.4), tip);
    line(sum(scaled(top, 0.6), far[2], 0.4), tip);
}

void SchematicPainter::drawLight(const Shape& shape)
{
    const auto from = axis(shape.world, 3);
    const auto way = unit(axis(shape.world, 2));
    switch (shape.light) {
    case Light::Directional:
        line(from, sum(from, way, -_symbol));
        break;
    case Light::Spot: {
        const auto radius = std::min(shape.film.x(), 2.0) * _symbol;
        for (const auto& end : rectangle(shape.world, {radius * 0.7, radius * 0.7}, _symbol)) {
            line(from, end);
        }
        break;
    }
    case Light::Area: {
        const auto edge = rectangle(shape.world, {_symbol / 2, _symbol / 2}, 0);
        for (std::size_t i = 0; i < 4; ++i) {
            line(edge[i], edge[(i + 1) % 4]);
        }
        line(from, sum(from, way, -_symbol / 2));
        break;
    }
    default:
        break;
    }
    if (const auto at = place(from)) {
        drawIcon(iconOf(shape.light), *at);
    }
}

void SchematicPainter::drawIcon(const char* name, const QPointF& at)
{
    const QRect bounds((at - QPointF(8, 8)).toPoint(), QSize(16, 16));
    if (QRectF(QPointF(), _picture).intersects(bounds)) {
        glyphIcon(name).paint(&_painter, bounds);
    }
    _drawn = _drawn.isNull() ? QRectF(bounds) : _drawn.united(bounds);
}

void SchematicPainter::drawCompass()
{
    constexpr double kLength = 22;
    const QPointF centre(36, _picture.height() - 36);
    const std::array<const char*, 3> names{"x", "y", "z"};
    for (std::size_t i = 0; i < 3; ++i) {
        const QPointF way(_viewpoint.right().vector[i], -_viewpoint.up().vector[i]);
        _painter.setPen(QPen(kAxisColors[i], 1.5));
        _painter.drawLine(centre, centre + way * kLength);
        const QRectF label(centre + way * (kLength + 8) - QPointF(8, 8), QSizeF(16, 16));
        _painter.drawText(label, Qt::AlignCenter, QLatin1String(names[i]));
    }
}

void SchematicPainter::drawFrame()
{
    const auto frame = _viewpoint.frame(_picture);
    QPainterPath outside;
    outside.addRect(QRectF(QPointF(), _picture));
    outside.addRect(frame);
    _painter.fillPath(outside, faded(_palette.color(QPalette::Window).darker(), 0.35));
    _painter.setPen(QPen(faded(_palette.color(QPalette::Text), 0.6), 1));
    _painter.drawRect(frame.adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace Kiv_v4::qt::detail
