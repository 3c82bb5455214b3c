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
/// frusta, lights by kind, a grid and axes. What is hidden, or has no place in the world, is left
/// out.
///
/// **Looking.** The middle button, or Alt and the left one, orbits; with Shift, or Alt and the
/// middle one, pans; the wheel zooms. F frames the selection, A all. `lookThrough` shows what a
/// camera of any run-time sees; moving the view leaves it.
///
/// **Editing.** A click selects, with Shift adds, with Ctrl toggles; a drag over the ground selects
/// what it encloses. A drag of an item moves all that is selected in the plane of the picture; with
/// a `host::UndoHistory` as the command manager that is one entry, and Escape takes it back.
///
/// **Large scenes** are read and drawn in slices: items appear while the program goes on, and a
/// picture of many fills in. Of more than 10 000 items, only what the view itself moves and what
/// the scene announces is followed; `refresh` reads all anew.
class KIV_EXPORT SceneView : public QWidget
{
    Q_OBJECT

public:
    explicit SceneView(ObservableSelection::Ptr selection = GlobalSelection::get(),
                       QWidget* parent = nullptr);
    ~SceneView() override;

    /// Returns from where the scene is looked at.
    [[nodiscard]] const Viewpoint& viewpoint() const noexcept;

    /// Looks through the camera from now on, and follows it. Returns false when the item is none
    /// that can be looked through.
    bool lookThrough(const Path& camera);

    /// Leaves the camera; the view stays where it is.
    void leaveCamera();

    /// Returns the camera that is looked through; empty for none.
    [[nodiscard]] const Path& camera() const noexcept;

    /// Calls the scene's unit that beside the size of the grid's cells. At first it has none.
    void setUnit(const QString& unit);

    /// Returns the box of all that is drawn, in the world.
    [[nodiscard]] BoundingBox3d sceneBox() const;

    /// Returns the place of a point of the world in the view; nothing for one behind the viewer.
    [[nodiscard]] std::optional<QPointF> placeOf(const Vector3d& point) const;

    /// Returns the item drawn at a position, of several the smallest; the empty path for none.
    [[nodiscard]] Path itemAt(const QPointF& position) const;

    /// Returns the items drawn within the rectangle, parents before children.
    [[nodiscard]] std::vector<Path> itemsIn(const QRectF& rectangle) const;

    /// Returns whether there are items left to be read, or to be drawn.
    [[nodiscard]] bool isReading() const noexcept;
    [[nodiscard]] bool isDrawing() const noexcept;

    /// Returns the number of items read so far.
    [[nodiscard]] std::size_t nbItems() const noexcept;

    /// Returns a complete picture of the view, for which all is read, in its size and pixel ratio.
    [[nodiscard]] QImage picture();

    /// As in `QWidget`.
    [[nodiscard]] QSize sizeHint() const override;

public Q_SLOTS:
    /// Brings all, or what is selected, into the picture.
    void frameAll();
    void frameSelection();

    /// Reads all items anew.
    void refresh();

    /// Stops reading: what was read so far is shown.
    void stopReading();

Q_SIGNALS:
    /// Some items, or all, were read.
    void progressed();

    /// Another camera, or none, is looked through.
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
    class Content;
    class Picture;
    class Move;
    struct Orbit;

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
    std::unique_ptr<Move> _move; ///< Null when nothing is dragged.
    double _moveDepth = 1;       ///< How far in front of the viewer it is.
    Viewpoint _viewpoint;
    Path _camera;
    QString _unit;
    QPointF _pressed;
    QPointF _last;
    QRectF _band;           ///< What a drag encloses; null for none.
    double _cell = 1;       ///< The size of the grid's cells.
    bool _isFramed = false; ///< The first items brought the view to them.
};

} // namespace Kiv_v4::qt
