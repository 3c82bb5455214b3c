#include <cmath>
#include <gtest/gtest.h>

#include "kiv/attributeNotification.h"
#include "kiv/kit/attributeJson.h"
#include "kiv/kit/handlers.h"
#include "kiv/sceneItemOps.h"
#include "kiv/setValueCommands.h"
#include "kiv/transform3d.h"

#include "kitBoxes.h"
#include "matrices.h"

namespace {

using namespace Kiv_v4;
using kit::AttributeTable;
using test::Box;
using test::Kit;

/// A value of each type, and another one.
const std::pair<AttributeVariant, AttributeVariant> kValues[] = {
    {false, true},
    {-3, 2147483647},
    {0.1F, 3.4e38F},
    {0.1, -1e-300},
    {std::string("a"), std::string("q\"\xff, (1)")},
    {FilenameValue{"a.png"}, FilenameValue{""}},
    {EnumStringValue{"low"}, EnumStringValue{"high"}},
    {TypedColorN<float, 3>({0, 0.5F, 1}), TypedColorN<float, 3>({0.1F, 0.2F, 0.3F})},
    {TypedColorN<float, 4>({0, 0.5F, 1, 1}), TypedColorN<float, 4>({0.1F, 0.2F, 0.3F, 0.4F})},
    {TypedVectorN<int, 3>({1, 2, 3}), TypedVectorN<int, 3>({-1, 0, 1})},
    {TypedVectorN<float, 2>({1, 2}), TypedVectorN<float, 2>({0.7F, INFINITY})},
    {TypedVectorN<float, 3>({1, 2, 3}), TypedVectorN<float, 3>({0.7F, -0.0F, 3})},
    {TypedVectorN<float, 4>({1, 2, 3, 4}), TypedVectorN<float, 4>({0.7F, 1, 1, -INFINITY})},
    {TypedVectorN<double, 3>({1, 2, 3}), TypedVectorN<double, 3>({1 / 3.0, 5e-324, 1e308})},
    {TypedSquareMatrixN<double, 3>(),
     TypedSquareMatrixN<double, 3>({{{1, 2, 3}, {4, 5, 6}, {7, 8, 0.1}}})},
    {TypedSquareMatrixN<double, 4>(), test::translationOf(1 / 3.0, 2, 3)},
};

class KitAttributes : public Kit
{
protected:
    KitAttributes()
    {
        for (const auto& [first, other] : kValues) {
            const auto type = typeOf(first);
            made("/top", type);
            box(type).values[type] = first;
            table->add({type, type,
                        [this, type](const Path& path) {
                            auto* found = tree->find(path);
                            return found ? found->values[type] : AttributeVariant();
                        },
                        [this, type](const Path& path, const AttributeVariant& value) {
                            tree->find(path)->values[type] = value;
                        }});
        }
        table->add({"opaque", Attribute::kGeneric, {}, {}});
        table->keepMetadata([this](const Path& path, const std::string&) {
            auto* found = tree->find(path);
            return found ? &found->metadata : nullptr;
        });
        RunTimeMgr::instance().setAttributesHandler(
            id, kit::attributesHandler([this](const auto& of) { return table->attributes(of); }));
        Attributes::addObserver(observer);
    }

    Box& box(const std::string& name) { return *tree->find(PathString::path("/top/" + name)); }

    const AttributeTable::Ptr table = std::make_shared<AttributeTable>();
    std::vector<std::string> changes;
    const Observer::Ptr observer = test::Callback::make([this](const Notification& notification) {
        changes.push_back(dynamic_cast<const AttributeChanged&>(notification).name());
    });
};

TEST_F(KitAttributes, EveryTypeIsReadSetUndoneWrittenAsTextAndRead)
{
    ASSERT_EQ(std::size(kValues) + 1, attributeTypes().size());
    for (const auto& [first, other] : kValues) {
        const auto type = typeOf(first);
        SCOPED_TRACE(type);
        const auto attribute = Attributes::attributes(item("/top/" + type))->attribute(type);
        EXPECT_EQ(attribute->type(), type);
        EXPECT_EQ(value(*attribute), first);
        EXPECT_EQ(attribute->string(), textOf(first));
        for (const auto& each : {first, other}) {
            EXPECT_EQ(valueFromText(type, textOf(each)), each) << textOf(each);
#if __has_include(<nlohmann/json.hpp>)
            EXPECT_EQ(kit::valueFromJson(type, kit::jsonOf(each)), each) << kit::jsonOf(each);
            EXPECT_THROW(static_cast<void>(kit::valueFromJson(type, "[{}")), std::invalid_argument);
            EXPECT_THROW(static_cast<void>(kit::valueFromJson(type, "{}")), std::invalid_argument);
#endif
        }
        if (type == Attribute::kEnumString) {
            EXPECT_THROW(setValueCmd(*attribute, other)->execute(), std::invalid_argument);
            continue;
        }
        changes.clear();
        const auto command = setValueCmd(*attribute, other);
        EXPECT_EQ(command->commandString(), "Set " + type);
        EXPECT_EQ(value(*attribute), first);
        command->execute();
        EXPECT_EQ(value(*attribute), other);
        command->undo();
        EXPECT_EQ(value(*attribute), first);
        command->redo();
        EXPECT_EQ(value(*attribute), other);
        EXPECT_EQ(changes, std::vector<std::string>(3, type));
        EXPECT_THROW(static_cast<void>(setValueCmd(*attribute, std::monostate())),
                     std::invalid_argument);

        SceneItemOps::sceneItemOps(item("/top/" + type))->deleteItem();
        EXPECT_FALSE(attribute->hasValue());
        EXPECT_EQ(attribute->string(), "");
        EXPECT_FALSE(setValueCmd(*attribute, first));
    }
    EXPECT_THROW(static_cast<void>(valueFromText(Attribute::kInt3, "(1, 2)")),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(valueFromText(Attribute::kInt, "1.5")), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(valueFromText(Attribute::kFloat, "1e39")),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(valueFromText("Int7", "1")), std::invalid_argument);
}

TEST_F(KitAttributes, MetadataAreSetAndTakenBack)
{
    const auto attributes = Attributes::attributes(item("/top/Int"));
    const auto attribute = attributes->attribute("Int");
    const auto command = attribute->setMetadataCmd("unit", Value("mm"));
    command->execute();
    EXPECT_EQ(attribute->metadata("unit").get<std::string>(), "mm");
    command->undo();
    EXPECT_FALSE(attribute->hasMetadata("unit"));
    command->redo();
    EXPECT_TRUE(attribute->clearMetadata("unit"));
    EXPECT_FALSE(attribute->clearMetadata("unit"));
    EXPECT_EQ(changes, std::vector<std::string>(4, "Int"));
    EXPECT_EQ(attributes->attribute("opaque")->type(), Attribute::kGeneric);
    EXPECT_TRUE(attributes->attribute("opaque")->metadata(Attribute::kLocked).get<bool>());
    EXPECT_FALSE(attributes->attribute("none"));
    EXPECT_EQ(std::dynamic_pointer_cast<Attributes_v4_2>(attributes)
                  ->attributeDef("Double3")
                  ->defaultValue(),
              "(0, 0, 0)");
}

TEST_F(Kit, TransformsOfAMatrixOfFactorsAndOfAttributesEditAlike)
{
    const auto parent = made("/top", "parent");
    const auto child = made("/top/parent", "child");
    const auto table = std::make_shared<AttributeTable>();
    for (const auto* name : {"translation", "rotation", "scale", "shear"}) {
        table->add({name, Attribute::kDouble3,
                    [this, name](const Path& path) {
                        auto* box = tree->find(path);
                        const auto initial = std::string(name) == "scale" ? 1.0 : 0.0;
                        return box ? box->values
                                         .try_emplace(name, Vector3d({initial, initial, initial}))
                                         .first->second
                                   : AttributeVariant();
                    },
                    [this, name](const Path& path, const AttributeVariant& value) {
                        tree->find(path)->values[name] = value;
                    }});
    }
    const Transform3dHandler::Ptr handlers[] = {
        kit::transformHandler(kit::MatrixAccess{[this](const Path& path) {
                                                    const auto* box = tree->find(path);
                                                    return box ? std::optional(box->matrix)
                                                               : std::nullopt;
                                                },
                                                [this](const Path& path, const Matrix4d& matrix) {
                                                    tree->find(path)->matrix = matrix;
                                                }}),
        kit::transformHandler(
            kit::FactorsAccess{[this](const Path& path) {
                                   const auto* box = tree->find(path);
                                   return box ? std::optional(box->factors) : std::nullopt;
                               },
                               [this](const Path& path, const kit::AffineFactors& factors) {
                                   tree->find(path)->factors = factors;
                               }}),
        kit::transformHandler(
            kit::AttributesAccess{table, "translation", "rotation", "scale", "shear"})};
    for (const auto& handler : handlers) {
        RunTimeMgr::instance().setTransform3dHandler(id, handler);
        auto changes = 0;
        const auto observer = test::Callback::make([&](const Notification&) { ++changes; });
        Transform3d::addObserver(child, observer);
        const auto transform = Transform3d::transform3d(child);
        Transform3d::transform3d(parent)->translate(0, 0, 5);
        const auto turn = transform->rotateCmd(10, 20, 30);
        EXPECT_EQ(turn->commandString(), "Rotate child");
        turn->execute();
        EXPECT_TRUE(std::dynamic_pointer_cast<SetDouble3UndoableCommand>(turn)->set(0, 0, 90));
        EXPECT_NEAR(transform->rotation().vector[2], 90, 1e-12);
        transform->translate(1, 2, 3);
        EXPECT_EQ(transform->translation(), Vector3d({1, 2, 3}));
        EXPECT_EQ(changes, 3);
        EXPECT_LT(
            test::error(transform->segmentInclusiveMatrix(),
                        kit::rotationMatrix(Vector3d({0, 0, 90})) * test::translationOf(1, 2, 8)),
            1e-12);
        const auto placing =
            transform->setMatrixCmd(kit::composed({{{1, 2, 3}}, {{0.5, 0, 0}}, {}, {}}));
        placing->execute();
        EXPECT_NEAR(transform->shear().vector[0], 0.5, 1e-12);
        placing->undo();
        EXPECT_EQ(transform->translation(), Vector3d({1, 2, 3}));
        turn->undo();
        EXPECT_EQ(transform->rotation(), Vector3d());
        EXPECT_FALSE(transform->setMatrixCmd(Matrix4d()));
        EXPECT_FALSE(transform->translateCmd(NAN, 0, 0));
        EXPECT_FALSE(transform->rotatePivotCmd(1, 0, 0));
        Transform3d::removeObserver(child, observer);
    }
}

TEST_F(KitAttributes, ItemsHaveAttributesOfTheirOwn)
{
    const auto own = std::make_shared<AttributeTable>();
    own->add({"size", Attribute::kInt, [](const Path&) { return 7; }, {}});
    own->addItemValues(
        {[this](const Path& path) {
             const auto* found = tree->find(path);
             return found ? std::vector<std::pair<std::string, AttributeVariant>>(
                                found->values.begin(), found->values.end())
                          : std::vector<std::pair<std::string, AttributeVariant>>();
         },
         [this](const Path& path, const std::string& name, const AttributeVariant& value) {
             tree->existing(path)->values[name] = value;
         }});
    RunTimeMgr::instance().setAttributesHandler(id, kit::attributesHandler(own));
    box("Int").values = {
        {"mass", 1.5}, {"note", std::string("heavy")}, {"size", 3}, {"tags", std::monostate()}};

    const auto attributes =
        std::dynamic_pointer_cast<Attributes_v4_2>(Attributes::attributes(item("/top/Int")));
    EXPECT_EQ(attributes->attributeNames(),
              (std::vector<std::string>{"size", "mass", "note", "tags"}));
    EXPECT_EQ(value(*attributes->attribute("size")), AttributeVariant(7));
    EXPECT_EQ(attributes->attributeType("tags"), Attribute::kGeneric);
    EXPECT_EQ(attributes->attributeDef("size")->type(), Attribute::kInt);
    EXPECT_FALSE(attributes->attributeDef("mass"));
    EXPECT_FALSE(Attributes::attributes(item("/top/Bool"))->hasAttribute("mass"));

    const auto mass = attributes->attribute("mass");
    const auto command = setValueCmd(*mass, 2.5);
    command->execute();
    EXPECT_EQ(value(*mass), AttributeVariant(2.5));
    command->undo();
    EXPECT_EQ(value(*mass), AttributeVariant(1.5));
    EXPECT_EQ(changes, std::vector<std::string>(2, "mass"));

    box("Int").values["mass"] = std::string("light");
    EXPECT_THROW(command->redo(), std::invalid_argument);
    box("Int").values.clear();
    EXPECT_FALSE(mass->hasValue());
    EXPECT_THROW(command->redo(), std::invalid_argument);
}

TEST_F(Kit, CamerasAndLightsOfValuesAreEditedOneValueAtATime)
{
    auto& manager = RunTimeMgr::instance();
    const auto eye = made("/top", "eye");
    auto& box = *tree->find(eye->path());
    manager.setCameraHandler(
        id, kit::cameraHandler({[this](const Path& path) {
                                    const auto* found = tree->find(path);
                                    return found && found->name == "eye"
                                               ? std::optional(found->camera)
                                               : std::nullopt;
                                },
                                [this](const Path& path, const kit::CameraValues& values) {
                                    tree->existing(path)->camera = values;
                                }}));
    manager.setLightHandler(
        id, kit::lightHandler({[this](const Path& path) {
                                   const auto* found = tree->find(path);
                                   return found ? std::optional(found->light) : std::nullopt;
                               },
                               [this](const Path& path, const kit::LightValues& values) {
                                   tree->existing(path)->light = values;
                               }}));
    auto cameraChanges = 0;
    const auto observer = test::Callback::make([&](const Notification&) { ++cameraChanges; });
    Camera::addObserver(eye, observer);
    EXPECT_EQ(CameraHandler::findAll(tree->root()).size(), 1);
    EXPECT_FALSE(Camera::camera(item("/top")));

    const auto camera = Camera::camera(eye);
    const auto zoom = camera->focalLengthCmd(85);
    EXPECT_EQ(zoom->commandString(), "Set focal length of eye");
    EXPECT_EQ(box.camera.focalLength, 50);
    zoom->execute();
    EXPECT_TRUE(std::dynamic_pointer_cast<SetFloatUndoableCommand>(zoom)->set(135));
    EXPECT_FALSE(std::dynamic_pointer_cast<SetFloatUndoableCommand>(zoom)->set(NAN));
    camera->fStop(4);
    zoom->undo();
    EXPECT_EQ(camera->focalLength(), 50);
    EXPECT_EQ(camera->fStop(), 4);
    EXPECT_EQ(cameraChanges, 4);
    EXPECT_FALSE(camera->nearClipPlaneCmd(INFINITY));
    EXPECT_FALSE(camera->projectionCmd(static_cast<Camera::Projection>(2)));

    box.light.type = Light::Spot;
    const auto light = Light::light(eye);
    light->coneInterface()->coneProps(30, 5, 1);
    EXPECT_EQ(box.light.cone, (Light::ConeProps{30, 5, 1}));
    EXPECT_FALSE(light->directionalInterface());
    EXPECT_FALSE(light->colorCmd(1, NAN, 0));

    SceneItemOps::sceneItemOps(eye)->deleteItem();
    EXPECT_EQ(camera->focalLength(), 50);
    EXPECT_FALSE(camera->focalLengthCmd(20));
    EXPECT_FALSE(std::dynamic_pointer_cast<SetFloatUndoableCommand>(zoom)->set(20));
    EXPECT_THROW(zoom->redo(), std::runtime_error);
    Camera::removeObserver(eye, observer);
}

} // namespace
