#include "kiv/hierarchy.h"
#include "kiv/pathString.h"
#include "kiv/transform3d.h"

#include "sections.h"

namespace app {

using namespace Kiv_v4;

namespace {

/// The lowest gateway above the path without a transform, which leaves what is below it without a
/// place in the world; the empty path when there is none.
Path gatewayWithoutTransform(Path path)
{
    while (path.nbSegments() > 1) {
        path = path.popSegment();
        if (!Transform3dRead::transform3dRead(Hierarchy::createItem(path))) {
            return path;
        }
    }
    return {};
}

Fact matrixFact(const char* key, const char* label, const Matrix4d& matrix)
{
    auto value = json(matrix);
    auto lines = rowsOf(value);
    return {key, label, std::move(value), "", std::move(lines)};
}

void addMatrices(std::vector<Fact>& facts, const Transform3dRead& transform)
{
    facts.push_back(matrixFact("matrix", "matrix", transform.matrix()));
    const auto gateway = gatewayWithoutTransform(transform.path());
    if (gateway.empty()) {
        facts.push_back(matrixFact("worldMatrix", "world matrix", transform.inclusiveMatrix()));
    } else {
        facts.push_back({"worldMatrix", "world matrix", Json()});
        facts.push_back(
            {"gatewayWithoutTransform", "gateway without transform", PathString::string(gateway)});
    }
}

/// For the properties that run-times may leave out, and then read as zero.
void addUnlessZero(std::vector<Fact>& facts, const char* key, const char* label,
                   const Vector3d& value, const char* unit)
{
    if (value != Vector3d()) {
        facts.push_back({key, label, json(value), unit});
    }
}

void addProperties(std::vector<Fact>& facts, const Transform3d& transform)
{
    facts.push_back({"translation", "translation", json(transform.translation()), kSceneUnits});
    facts.push_back({"rotation", "rotation", json(transform.rotation()), kDegrees});
    facts.push_back({"scale", "scale", json(transform.scale())});
    facts.push_back({"rotatePivot", "rotate pivot", json(transform.rotatePivot()), kSceneUnits});
    facts.push_back({"scalePivot", "scale pivot", json(transform.scalePivot()), kSceneUnits});
    addUnlessZero(facts, "rotatePivotTranslation", "rotate pivot translation",
                  transform.rotatePivotTranslation(), kSceneUnits);
    addUnlessZero(facts, "scalePivotTranslation", "scale pivot translation",
                  transform.scalePivotTranslation(), kSceneUnits);
    addUnlessZero(facts, "rotateAxis", "rotate axis", transform.rotateAxis(), kDegrees);
    addUnlessZero(facts, "shear", "shear", transform.shear(), "");
}

} // namespace

Section transform(const SceneItem::Ptr& item)
{
    Section section{"transform", "transform"};
    if (const auto matrices = Transform3dRead::transform3dRead(item)) {
        addMatrices(section.facts, *matrices);
    }
    if (const auto properties = Transform3d::transform3d(item)) {
        addProperties(section.facts, *properties);
    }
    return section;
}

} // namespace app
