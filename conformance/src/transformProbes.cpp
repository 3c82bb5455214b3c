#include <cmath>

#include "kiv/hierarchy.h"
#include "kiv/transform3d.h"

#include "attributeKinds.h"
#include "edits.h"
#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

const char* const kMatrices = "transforms.matrices";
const char* const kTransformValues = "transforms.values";

bool isNear(const std::vector<double>& a, const std::vector<double>& b)
{
    double size = 1;
    for (const auto number : a) {
        size = std::max(size, std::abs(number));
    }
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](double x, double y) {
        return std::abs(x - y) <= 1e-6 * size || (x != x && y != y);
    });
}

template <class T>
void expectNear(Checking& checking, const std::string& what, const T& expected, const T& seen)
{
    if (!isNear(numbersOf(expected), numbersOf(seen))) {
        checking.found(what + ": " + textOf(numbersOf(expected)), textOf(numbersOf(seen)));
    }
}

Matrix4d identity()
{
    Matrix4d matrix;
    for (std::size_t index = 0; index < 4; ++index) {
        matrix.matrix[index][index] = 1;
    }
    return matrix;
}

/// The inclusive matrix of the nearest ancestor in the segment that has a transform.
Matrix4d spaceAround(const Path& path)
{
    const auto nbAbove = path.getSegments().back().size();
    auto above = path;
    for (std::size_t level = 1; level < nbAbove; ++level) {
        above = above.pop();
        const auto item = Hierarchy::createItem(above);
        if (const auto transform = item ? Transform3d::transform3d(item) : nullptr) {
            return transform->segmentInclusiveMatrix();
        }
    }
    return identity();
}

void checkMatrices(Checking& checking, const SceneItem::Ptr& item)
{
    const auto transform = Transform3d::transform3d(item);
    if (!transform) {
        return;
    }
    checking.at(kMatrices, "segmentExclusiveMatrix", item->path());
    const auto around = spaceAround(item->path());
    expectNear(checking, "the parent's segmentInclusiveMatrix", around,
               transform->segmentExclusiveMatrix());
    checking.at(kMatrices, "segmentInclusiveMatrix", item->path());
    expectNear(checking, "matrix() times the parent's segmentInclusiveMatrix",
               transform->matrix() * around, transform->segmentInclusiveMatrix());
    checking.at(kMatrices, "path and sceneItem of the transform", item->path());
    if (transform->path() != item->path() || !transform->sceneItem() ||
        *transform->sceneItem() != *item) {
        checking.found("those of the item", textOf(transform->path()));
    }
}

/// Moves, rotates and scales the item and reads the values back. The item stays so, for the
/// matrices.
void checkValues(Checking& checking, const SceneItem::Ptr& item)
{
    const auto transform = Transform3d::transform3d(item);
    if (!transform) {
        return;
    }
    const auto x = randomNumber(checking);
    const auto set = [&](const char* what, const UndoableCommand::Ptr& command, auto read,
                         const Vector3d& value) {
        checking.at(kTransformValues, what, item->path());
        if (command && Checking::answers([&] { command->execute(); })) {
            expectNear(checking, what, value, read(*Transform3d::transform3d(item)));
        }
    };
    set(
        "translateCmd", transform->translateCmd(x, 2, -3),
        [](const Transform3d& now) { return now.translation(); }, Vector3d({x, 2, -3}));
    set(
        "rotateCmd", transform->rotateCmd(10, 20, 30),
        [](const Transform3d& now) { return now.rotation(); }, Vector3d({10, 20, 30}));
    set(
        "scaleCmd", transform->scaleCmd(1, 2, 4),
        [](const Transform3d& now) { return now.scale(); }, Vector3d({1, 2, 4}));
}

} // namespace

void checkTransforms(Checking& checking)
{
    const auto items = walk(checking.running().roots, checking.options().maxItems);
    bool any = false;
    for (const auto& item : items) {
        any = any || Transform3d::transform3d(item);
        checkMatrices(checking, item);
    }
    if (!any) {
        checking.skip(kMatrices, "no item has a transform");
        checking.skip(kTransformValues, "no item has a transform");
        return;
    }
    // If nothing is moved, a matrix that ignores the parent's is right by chance.
    for (const auto& item : items) {
        checkValues(checking, item);
    }
    for (const auto& item : items) {
        checkMatrices(checking, item);
    }
}

} // namespace Kiv_v4::conformance
