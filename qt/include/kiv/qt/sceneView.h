#pragma once

#include <QImage>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kiv/export.h"
#include "kiv/globalSelection.h"
#include "kiv/mathTypes.h"
#include "kiv/object3d.h"
#include "kiv/observableSelection.h"
#include "kiv/path.h"
#include "kiv/qt/viewpoint.h"

namespace Kiv_v4::qt {

/// A schematic view of the scene, drawn from the interfaces alone: boxes of objects, cameras as
/// frusta, lights by kind, a grid and axes. It leaves out hidden items and items without a world
/// matrix.
///
/// **Looking.** The middle button, or Alt and the left button, orbits; with Shift, or Alt and the
/// middle button, pans; the wheel zooms. F frames the selection, A frames everything.
/// `lookThrough` shows the picture of a camera of any run-time, until the user moves the view.
///
/// **Editing.** A click selects, with Shift adds, with Ctrl toggles; a drag over the background
/// selects the items that it encloses. A drag of an item moves all selected items in the plane of
/// the picture; with a `host::UndoHistory` as the command manager a drag is one entry, and Escape
/// undoes it.
///
/// **Large scenes** are read and drawn in slices between events, so items appear one after the
/// other. With more than 10 000 items, the view follows only its own edits and the notifications of
/// the scene; `refresh` reads all items again.
class KIV_EXPORT SceneView : public QWidget
{
    Q_OBJECT

public:
    explicit SceneView(ObservableSelection::Ptr selection = GlobalSelection::get(),
                       QWidget* parent = nullptr);
    ~SceneView() override;

    /// Returns the current viewpoint.
    [[nodiscard]] const Viewpoint& viewpoint() const noexcept;

    /// Looks through the camera, and follows it. Returns false if the item is not a camera with a
    /// world matrix.
    bool lookThrough(const Path& camera);

    /// Leaves the camera; the view stays where it is.
    void leaveCamera();

    /// Returns the path of the camera that the view looks through; empty for none.
    [[nodiscard]] const Path& camera() const noexcept;

    /// Sets the length of a scene unit in metres, which must be above 0. The cells of the grid then
    /// have a round length, which the view tells. `std::nullopt`, as at first, takes the unit of
    /// the scene's files.
    void setUnit(std::optional<double> metres);

    /// Returns the length that was set, or else the one that all scene files of the scene agree on
    /// with their attribute `file.sceneUnit`; `std::nullopt` if none tells it or they differ.
    [[nodiscard]] std::optional<double> unit() const;

    /// Returns the box of all drawn items, in the world.
    [[nodiscard]] BoundingBox3d sceneBox() const;

    /// Returns the position of a point of the world in the view; `std::nullopt` behind the viewer.
    [[nodiscard]] std::optional<QPointF> placeOf(const Vector3d& point) const;

    /// Returns the path of the item drawn at a position, of several the smallest; empty for none.
    [[nodiscard]] Path itemAt(const QPointF& position) const;

    /// Returns the items drawn within the rectangle, parents before children.
    [[nodiscard]] std::vector<Path> itemsIn(const QRectF& rectangle) const;

    /// Returns whether some items were not read or measured yet, or not drawn yet.
    [[nodiscard]] bool isReading() const noexcept;
    [[nodiscard]] bool isDrawing() const noexcept;

    /// Returns the number of items read so far.
    [[nodiscard]] std::size_t nbItems() const noexcept;

    /// Reads all items, and returns a complete picture of the view, in its size and pixel ratio.
    [[nodiscard]] QImage picture();

    /// As in `QWidget`.
    [[nodiscard]] QSize sizeHint() const override;

public Q_SLOTS:
    /// Frame everything, or the selection. That is measured first, in slices between events, while
    /// `isReading` returns true; the user cancels it by looking from elsewhere.
    void frameAll();
    void frameSelection();

    /// Reads all items again.
    void refresh();

    /// Stops reading and measuring; the view shows the items read so far.
    void stopReading();

Q_SIGNALS:
    /// Some items, or all, were read.
    void progressed();

    /// The view looks through another camera, or none.
    void cameraChanged();

protected:
    /// As in `QWidget`.
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class KIV_HIDDEN Content;
    class KIV_HIDDEN Picture;
    class KIV_HIDDEN Move;
    struct KIV_HIDDEN Orbit;

    KIV_HIDDEN void look();
    KIV_HIDDEN void leaveToOrbit();
    KIV_HIDDEN void redraw();
    KIV_HIDDEN void orbit(const QPointF& by);
    KIV_HIDDEN void pan(const QPointF& by);
    KIV_HIDDEN void frame(const BoundingBox3d& box);
    KIV_HIDDEN void choose(const std::vector<Path>& paths, Qt::KeyboardModifiers modifiers);
    KIV_HIDDEN void beginMove(const QPointF& at);
    KIV_HIDDEN void drag(Qt::KeyboardModifiers modifiers);
    KIV_HIDDEN void drawPicture(int milliseconds);
    KIV_HIDDEN void drawOver(QPainter& painter);
    KIV_HIDDEN void contentChanged(bool isRead);

    const ObservableSelection::Ptr _selection;
    const Observer::Ptr _selectionObserver;
    const std::unique_ptr<Orbit> _orbit;
    const std::unique_ptr<Content> _content;
    const std::unique_ptr<Picture> _picture;
    std::unique_ptr<Move> _move; ///< Null without a drag.
    double _moveDepth = 1;       ///< Its distance in front of the viewer.
    Viewpoint _viewpoint;
    Path _camera;
    std::optional<double> _unit; ///< Set by the host.
    QPointF _pressed;
    QPointF _last;
    QRectF _band;           ///< The rectangle of a drag; null for none.
    double _cell = 1;       ///< The size of the grid's cells.
    bool _isFramed = false; ///< Whether the first items were framed.
};

} // namespace Kiv_v4::qt
