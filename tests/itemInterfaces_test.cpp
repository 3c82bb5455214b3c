#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/material.h"
#include "kiv/nodeDef.h"
#include "kiv/object3d.h"
#include "kiv/object3dNotification.h"
#include "kiv/pathString.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneNotification.h"
#include "kiv/transform3d.h"
#include "kiv/uiInfoHandler.h"
#include "kiv/uiNodeGraphNode.h"

#include "callback.h"
#include "items.h"
#include "memoryScene.h"

using namespace Kiv_v4;
using test::Callback;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Vector2f = TypedVectorN<float, 2>;

BoundingBox3d box(double minX, double minY, double minZ, double maxX, double maxY, double maxZ)
{
    return {{{minX, minY, minZ}}, {{maxX, maxY, maxZ}}};
}

struct MemoryItems : test::MemoryScene
{
    [[nodiscard]] BoundingBox3d boxOf(const SceneItem::Ptr& item) const
    {
        return Object3d::object3d(item)->boundingBox();
    }

    [[nodiscard]] std::vector<std::string> materialsOf(const SceneItem::Ptr& item) const
    {
        return test::pathsOf(Material::material(item)->materials());
    }

    SceneItem::Ptr group = model.make(model.root(), "group", "group");
    SceneItem::Ptr mesh = model.make(group->path(), "mesh", "mesh");
};

} // namespace

TEST_F(MemoryItems, AreShownAndHiddenToTheObserversOfAllObjects)
{
    std::vector<std::string> received;
    const auto observer = Callback::make([&](const Notification& notification) {
        received.push_back(
            PathString::string(dynamic_cast<const VisibilityChanged&>(notification).path()));
    });
    EXPECT_TRUE(Object3d::addObserver(observer) && Object3d::hasObserver(observer));
    EXPECT_FALSE(Object3d::addObserver(observer) || Object3d::nbObservers() != 1);
    const auto object = Object3d::object3d(mesh);
    EXPECT_TRUE(object->visibility());
    const auto hide = object->setVisibilityCmd(false);
    hide->execute();
    EXPECT_FALSE(object->visibility());
    EXPECT_TRUE(Object3d::object3d(group)->visibility());
    hide->undo();
    EXPECT_TRUE(object->visibility());
    EXPECT_TRUE(Object3d::object3d(group)->setVisibility(false));
    EXPECT_THAT(received, ElementsAre("/world/group/mesh", "/world/group/mesh", "/world/group"));
    EXPECT_TRUE(Object3d::removeObserver(observer) && !Object3d::hasObserver(observer));
    model.remove(mesh->path());
    EXPECT_FALSE(object->setVisibility(false));
}

TEST_F(MemoryItems, HaveABoxAroundAllThatIsUnderThem)
{
    EXPECT_TRUE(boxOf(world).empty());
    std::size_t nbInvalidated = 0;
    const auto observer = Callback::make([&](const Notification& notification) {
        nbInvalidated += dynamic_cast<const SubtreeInvalidate*>(&notification) != nullptr;
    });
    Scene::instance().addObserver(observer);
    model.setBoundingBox(mesh->path(), box(0, 0, 0, 1, 2, 3));
    EXPECT_EQ(nbInvalidated, 1U);
    Transform3d::transform3d(mesh)->translate(10, 0, 0);
    EXPECT_EQ(boxOf(mesh), box(0, 0, 0, 1, 2, 3)) << "in the item's own space";
    EXPECT_EQ(boxOf(group), box(10, 0, 0, 11, 2, 3));
    EXPECT_NE(boxOf(mesh), box(-1, 0, 0, 1, 2, 3));
    EXPECT_NE(boxOf(mesh), box(0, 0, 0, 1, 2, 4));
    EXPECT_NE(boxOf(mesh), BoundingBox3d());
    EXPECT_TRUE(box(0, 0, 1, 0, 0, 0) == box(0, 1, 0, 0, 0, 0)) << "both are empty";
    Transform3d::transform3d(group)->rotate(0, 0, 90);
    Transform3d::transform3d(world)->scale(5, 5, 5);
    EXPECT_EQ(boxOf(world), box(-2, 10, 0, 0, 11, 3));

    const auto deep = model.make(mesh->path(), "mesh", "deep");
    model.make(group->path(), "mesh", "empty");
    const auto second = model.make(group->path(), "mesh", "second");
    model.setBoundingBox(deep->path(), box(5, 5, 5, 6, 6, 6));
    model.setBoundingBox(second->path(), box(-1, -1, -1, -1, -1, -1));
    EXPECT_EQ(boxOf(mesh), box(0, 0, 0, 6, 6, 6));
    EXPECT_EQ(boxOf(group), box(-1, -1, -1, 16, 6, 6));
    EXPECT_EQ(boxOf(world), box(-6, -1, -1, 1, 16, 6));

    const auto command = model.setBoundingBoxCmd(mesh->path(), BoundingBox3d());
    command->execute();
    EXPECT_EQ(boxOf(mesh), box(5, 5, 5, 6, 6, 6));
    command->undo();
    EXPECT_EQ(model.boundingBox(mesh->path()), box(0, 0, 0, 1, 2, 3));
    EXPECT_THROW(model.setBoundingBox(mesh->path(), box(0, 0, 0, 1, 1, INFINITY)),
                 std::invalid_argument);
    EXPECT_THROW(model.setBoundingBox(group->path() + "none", {}), std::invalid_argument);
}

TEST_F(MemoryItems, LieAsDeepAsYouLike)
{
    auto top = model.make(model.root(), "mesh", "m");
    Transform3d::transform3d(top)->translate(1, 0, 0);
    model.setBoundingBox(top->path(), box(0, 0, 0, 1, 1, 1));
    auto leaf = top->path();
    for (auto depth = 1; depth < 131072; depth *= 2) {
        const auto copy = SceneItemOps::sceneItemOps(top)->duplicateItem().item;
        const auto below = leaf.reparent(top->path(), copy->path());
        leaf = below.reparent(copy->path(), model.move(copy->path(), leaf)->path());
    }
    EXPECT_EQ(leaf.size(), 131073U);
    EXPECT_EQ(boxOf(top), box(0, 0, 0, 131072, 1, 1));
    const auto transform = Transform3d::transform3d(model.item(leaf));
    EXPECT_EQ(transform->segmentInclusiveMatrix().matrix[3][0], 131072);
}

TEST_F(MemoryItems, StayBoundToMaterialsThatAreRenamedRemovedAndBroughtBack)
{
    const auto shelf = model.make(model.root(), "group", "shelf");
    const auto red = model.make(shelf->path(), "material", "red");
    const auto blue = model.make(shelf->path(), "material", "blue");
    EXPECT_THAT(materialsOf(mesh), IsEmpty());
    const auto bind =
        model.setMaterialsCmd(mesh->path(), {blue->path(), red->path(), blue->path()});
    bind->execute();
    EXPECT_THAT(materialsOf(mesh), ElementsAre("/world/shelf/blue", "/world/shelf/red"));

    model.rename(red->path(), "crimson");
    const auto moved = model.move(shelf->path(), group->path());
    EXPECT_THAT(materialsOf(mesh),
                ElementsAre("/world/group/shelf/blue", "/world/group/shelf/crimson"));
    const auto remove = SceneItemOps::sceneItemOps(moved)->deleteItemCmd();
    remove->execute();
    EXPECT_THAT(materialsOf(mesh), IsEmpty());
    model.make(model.make(group->path(), "group", "stranger")->path(), "material", "blue");
    model.rename(group->path() + "stranger", "gone");
    remove->undo();
    EXPECT_THAT(materialsOf(mesh),
                ElementsAre("/world/group/shelf/blue", "/world/group/shelf/crimson"));
    bind->undo();
    EXPECT_THAT(materialsOf(mesh), IsEmpty());
    bind->redo();

    const auto copy = SceneItemOps::sceneItemOps(moved)->duplicateItem().item;
    model.setMaterials(group->path(), {copy->path() + "blue"});
    EXPECT_THAT(materialsOf(group), ElementsAre("/world/group/shelf1/blue"));
    model.remove(moved->path());
    EXPECT_THAT(materialsOf(mesh), IsEmpty()) << "a copy of a material is another";
    EXPECT_THROW(model.setMaterials(mesh->path(), {group->path()}), std::invalid_argument);
    EXPECT_THROW(model.setMaterials(mesh->path(), {moved->path()}), std::invalid_argument);
}

TEST_F(MemoryItems, KeepTheirPropertiesThroughUndoneRemovalAndGiveCopiesTheirOwn)
{
    const auto camera = model.make(mesh->path(), "camera", "camera");
    Camera::camera(camera)->focalLength(50);
    Transform3d::transform3d(camera)->translate(1, 2, 3);
    const auto remove = SceneItemOps::sceneItemOps(group)->deleteItemCmd();
    remove->execute();
    EXPECT_EQ(Transform3d::transform3d(group), nullptr);
    remove->undo();
    EXPECT_EQ(Camera::camera(camera)->focalLength(), 50);

    const auto copy = SceneItemOps::sceneItemOps(group)->duplicateItem().item;
    const auto copied = model.item(copy->path() + "mesh" + "camera");
    Camera::camera(camera)->focalLength(20);
    EXPECT_EQ(Camera::camera(copied)->focalLength(), 50);
    EXPECT_EQ(Transform3d::transform3d(copied)->translation(), Vector3d({1, 2, 3}));
}

TEST_F(MemoryItems, AreDescribedByNodeDefinitions)
{
    const auto handler = RunTimeMgr::instance().nodeDefHandler(runTime.id());
    std::vector<std::string> types;
    for (const auto& definition : handler->definitions("")) {
        types.push_back(definition->type());
        EXPECT_THAT(handler->definitions(definition->classifications().front()),
                    testing::Contains(testing::Pointee(
                        testing::Property(&NodeDef::type, testing::Eq(definition->type())))));
        EXPECT_EQ(definition->inputs().size(), definition->inputNames().size());
    }
    EXPECT_THAT(types,
                ElementsAre("group", "transform", "mesh", "camera", "light", "directionalLight",
                            "pointLight", "spotLight", "areaLight", "material"));
    EXPECT_EQ(handler->definition(mesh)->type(), "mesh");
    EXPECT_FALSE(NodeDef::definition(runTime.id(), "nonsense"));

    const auto material = NodeDef::definition(runTime.id(), "material");
    EXPECT_EQ(material->input("baseColor")->defaultValue(), "(0.8, 0.8, 0.8)");
    EXPECT_EQ(material->input("roughness")->defaultValue(), "0.5");
    EXPECT_FALSE(material->input("surface")) << "an output";
    EXPECT_THAT(material->outputNames(), ElementsAre("surface"));

    model.remove(group->path());
    EXPECT_FALSE(material->createNodeCmd(group, std::string("gold")));
    EXPECT_FALSE(material->createNodeCmd(nullptr, std::string("gold")));
}

TEST_F(MemoryItems, MadeByADefinitionHaveItsAttributesUntilThatIsUndone)
{
    const auto definition = NodeDef::definition(runTime.id(), "material");
    const auto create = definition->createNodeCmd(world, std::string("gold"));
    create->execute();
    const auto names = definition->inputNames();
    const auto expectMade = [&] {
        const auto attributes = Attributes::attributes(create->sceneItem());
        EXPECT_THAT(attributes->attributeNames(), testing::SizeIs(names.size() + 1));
        for (const auto& input : definition->inputs()) {
            const auto made = attributes->attribute(input->name());
            EXPECT_EQ(made->type() + made->string(), input->type() + input->defaultValue());
            const auto described =
                dynamic_cast<const Attributes_v4_2&>(*attributes).attributeDef(input->name());
            EXPECT_EQ(described->defaultValue(), input->defaultValue());
            EXPECT_EQ(described->displayName(), input->displayName());
            EXPECT_EQ(described->metadata("description").get<std::string>(),
                      input->metadata("description").get<std::string>());
        }
        EXPECT_TRUE(attributes->hasAttribute("surface"));
    };
    expectMade();
    create->undo();
    EXPECT_FALSE(at("/world/gold"));
    model.make(model.root(), "material", "gold");
    EXPECT_THAT(Attributes::attributes(at("/world/gold"))->attributeNames(), IsEmpty());
    model.remove(at("/world/gold")->path());
    create->redo();
    expectMade();
}

TEST_F(MemoryItems, ArePlacedInANodeEditor)
{
    const auto node = UINodeGraphNode_v4_1::uiNodeGraphNode(mesh);
    ASSERT_TRUE(node);
    EXPECT_FALSE(node->hasPosition());
    EXPECT_EQ(node->position(), Vector2f());
    const auto place = node->setPositionCmd({{3, 4}});
    place->execute();
    node->setSize({{100, 50}});
    EXPECT_EQ(node->position(), Vector2f({3, 4}));
    EXPECT_EQ(node->size(), Vector2f({100, 50}));
    place->undo();
    EXPECT_FALSE(node->hasPosition());
    EXPECT_TRUE(node->hasSize());
    EXPECT_FALSE(node->setPositionCmd({{NAN, 0}}));
}

TEST_F(MemoryItems, SayHowTheyLookInATree)
{
    const auto info = UIInfoHandler::uiInfoHandler(runTime.id());
    EXPECT_EQ(info->treeViewIcon(mesh).base, "mesh");
    EXPECT_EQ(info->treeViewTooltip(mesh), "/world/group/mesh");
    EXPECT_THROW((void)info->treeViewIcon(nullptr), std::invalid_argument);
    EXPECT_THROW((void)info->treeViewTooltip(nullptr), std::invalid_argument);
    const CellInfo host("mesh", 9, true, false, false, {{0, 0, 0}}, {{1, 1, 1}});
    EXPECT_FALSE(info->treeViewCellInfo(mesh, host).fontItalic);
    model.setGateway(mesh->path(), 7);
    const auto look = info->treeViewCellInfo(mesh, host);
    EXPECT_TRUE(look.fontItalic);
    EXPECT_TRUE(look.fontBold);
    EXPECT_EQ(look.textBackground, host.textBackground);
}
