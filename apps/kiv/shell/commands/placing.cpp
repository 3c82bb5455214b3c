#include <algorithm>
#include <string>

#include "kiv/host/matrix.h"
#include "kiv/transform3d.h"

#include "report/itemReport.h"
#include "shell/commands/editing.h"
#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

Transform3d::Ptr transformOf(const SceneItem::Ptr& item, EditTransform3dHint::Type edit)
{
    return required(Transform3d::editTransform3d(item, edit), item, "has no transform to edit");
}

/// One of the properties that a transform is made of.
struct Property
{
    std::string verb;
    EditTransform3dHint::Type hint;
    Vector3d (Transform3d::*get)() const;
    UndoableCommand::Ptr (Transform3d::*setCmd)(double x, double y, double z);
    double (*combine)(double change, double now); ///< For `--by`.
};

double sum(double a, double b)
{
    return a + b;
}

double product(double a, double b)
{
    return a * b;
}

void setProperty(Session& session, const Arguments& arguments, const Property& property)
{
    const auto item = session.item(arguments[0]);
    auto [to] = valueOf<Vector3d>(arguments.from(1));
    const auto transform = transformOf(item, property.hint);
    if (arguments.has("--by")) {
        std::ranges::transform(to, ((*transform).*property.get)().vector, to.begin(),
                               property.combine);
    }
    edit(property.verb + " " + item->nodeName(), item,
         ((*transform).*property.setCmd)(to[0], to[1], to[2]));
}

void move(Session& session, const Arguments& arguments)
{
    setProperty(session, arguments,
                {"move", EditTransform3dHint::Translate, &Transform3d::translation,
                 &Transform3d::translateCmd, sum});
}

void rotate(Session& session, const Arguments& arguments)
{
    setProperty(session, arguments,
                {"rotate", EditTransform3dHint::Rotate, &Transform3d::rotation,
                 &Transform3d::rotateCmd, sum});
}

void scale(Session& session, const Arguments& arguments)
{
    setProperty(session, arguments,
                {"scale", EditTransform3dHint::Scale, &Transform3d::scale, &Transform3d::scaleCmd,
                 product});
}

void print(const Session& session, const Matrix4d& matrix)
{
    for (const auto& row : rowsOf(json(matrix))) {
        session.output().line(row);
    }
}

Transform3dRead::Ptr placeOf(const SceneItem::Ptr& item)
{
    return required(Transform3dRead::transform3dRead(item), item, "has no transform");
}

/// The matrix that an item needs of its own to have `world` in world space.
Matrix4d ownMatrix(const SceneItem::Ptr& item, const Matrix4d& world)
{
    const auto own = host::ownMatrix(item, world);
    if (!own) {
        fail(item, "cannot be placed in world space: its parent's world matrix is singular");
    }
    return *own;
}

void matrix(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto isWorld = arguments.has("--world");
    if (arguments.size() == 1) {
        const auto place = placeOf(item);
        const auto world = isWorld ? host::worldMatrix(item) : place->matrix();
        return world ? print(session, *world)
                     : fail(item, "has no place in the world: a gateway above it has no transform");
    }
    const auto value = valueOf<Matrix4d>(arguments.from(1));
    const auto transform = transformOf(item, EditTransform3dHint::Matrix);
    edit("matrix " + item->nodeName(), item,
         transform->setMatrixCmd(isWorld ? ownMatrix(item, value) : value));
}

constexpr Command kPlacing[] = {
    {"move", "ITEM X Y Z [--by]", "Set the translation, in scene units, or add to it.",
     "move props/crate 0 1.5 -4", move},
    {"rotate", "ITEM X Y Z [--by]", "Set the rotation about x, then y, then z, in degrees.",
     "rotate stage/close -10 45 0", rotate},
    {"scale", "ITEM X Y Z [--by]", "Set the scale factors, or multiply them.",
     "scale props/crate 2 2 2 --by", scale},
    {"matrix", "ITEM [NUMBER...] [--world]",
     "Print the matrix, or set it from 16 numbers, row by row, translation last; both "
     "may be in world space.",
     "matrix props/crate --world", matrix},
};

} // namespace

CommandKind placing()
{
    return {"Placing", kPlacing};
}

} // namespace app::shell
