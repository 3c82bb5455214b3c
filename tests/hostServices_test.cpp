// What hosts look up, list, read and write without knowing which run-times there are.

#include <gtest/gtest.h>
#include <stdexcept>

#include "kiv/host/childName.h"
#include "kiv/host/comparison.h"
#include "kiv/host/itemCondition.h"
#include "kiv/host/itemLookup.h"
#include "kiv/host/itemPattern.h"
#include "kiv/host/itemProperties.h"
#include "kiv/host/matrix.h"
#include "kiv/host/outline.h"
#include "kiv/light.h"
#include "kiv/transform3d.h"

#include "memoryScene.h"
#include "nested.h"

using namespace Kiv_v4;

namespace {

struct HostServices : test::MemoryScene
{
    [[nodiscard]] SceneItem::Ptr make(const std::string& type, const std::string& name) const
    {
        return model.make(model.root(), type, name);
    }
};

TEST_F(HostServices, LookUpSaysWhichNameWasNearlyMeant)
{
    const auto lamp = make("group", "Lamp");
    model.make(lamp->path(), "mesh", "Bulb");
    EXPECT_EQ(host::requireItem(world, lamp, "../Lamp/Bulb")->nodeName(), "Bulb");
    const std::pair<const char*, const char*> cases[] = {
        {"lamp/Bulb", "no such item 'lamp/Bulb'; did you mean 'Lamp'?"},
        {"/world/Lamp/Blub", "no such item '/world/Lamp/Blub'; did you mean 'Bulb'?"},
        {"Lamp/chair", "no such item 'Lamp/chair'"},
        {"/wrld", "no such item '/wrld'; did you mean 'world'?"},
        {"", "no such item ''"}};
    for (const auto& [text, message] : cases) {
        try {
            (void)host::requireItem(world, world, text);
            ADD_FAILURE() << text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
    EXPECT_TRUE(host::pathOf("no path").empty());
    EXPECT_EQ(host::nearestName("tre", {"show", "tree", "true"}), "tree");
    EXPECT_EQ(host::nearestName("TREE", {"show", "tree"}), "tree");
    EXPECT_EQ(host::nearestName("ab", {"abc", "ac"}), "") << "too short for slips";
}

TEST_F(HostServices, EveryPropertyThatCanBeSetReadsAsItWasSet)
{
    for (const auto* type : {"camera", "directionalLight", "spotLight", "areaLight"}) {
        const host::ItemProperties properties(make(type, type));
        for (const auto& property : host::propertyTable()) {
            const auto before = properties.value(property);
            if (!before || !property.isSettable || property.name == "matrix") {
                continue;
            }
            const auto wanted = std::visit(
                [&]<class T>(const T& value) -> host::PropertyValue {
                    if constexpr (std::is_same_v<T, bool>) {
                        return !value;
                    } else if constexpr (std::is_same_v<T, EnumStringValue>) {
                        return EnumStringValue{property.choices.back()};
                    } else if constexpr (std::is_same_v<T, float>) {
                        return value + 0.5F;
                    } else if constexpr (std::is_same_v<T, Vector3d>) {
                        return Vector3d({0.5, 1.5, 2.5});
                    } else if constexpr (std::is_same_v<T, Color3f>) {
                        return Color3f({0.5F, 0.25F, 0.125F});
                    } else {
                        return value;
                    }
                },
                *before);
            const auto command = properties.setCmd(property, wanted);
            ASSERT_TRUE(command) << property.name;
            command->execute();
            EXPECT_EQ(properties.value(property), wanted) << property.name;
            EXPECT_NE(before, wanted) << property.name;
            command->undo();
            EXPECT_EQ(properties.value(property), before) << property.name;
        }
    }
}

TEST_F(HostServices, PropertiesRefuseWhatTheyCannotBe)
{
    const host::ItemProperties mesh(make("mesh", "mesh"));
    const host::ItemProperties camera(make("camera", "camera"));
    const auto& fStop = *host::findProperty(host::kCamera, "fStop");
    const auto& projection = *host::findProperty(host::kCamera, "projection");
    EXPECT_THROW((void)mesh.setCmd(fStop, 2.0F), std::invalid_argument);
    EXPECT_THROW((void)camera.setCmd(fStop, 2.0), std::invalid_argument) << "another type";
    EXPECT_THROW((void)camera.setCmd(projection, EnumStringValue{"flat"}), std::invalid_argument);
    EXPECT_THROW((void)camera.setCmd(*host::findProperty(host::kTransform, "worldMatrix"),
                                     host::PropertyValue(Matrix4d())),
                 std::invalid_argument);
    EXPECT_FALSE(mesh.value(fStop));
    EXPECT_FALSE(host::findProperty(host::kLight, "fStop"));
    EXPECT_THROW(host::ItemProperties(nullptr), std::invalid_argument);
    EXPECT_EQ(host::valueText(Vector3d({1.0 / 3, -0.0, 1e9})), "0.333333, 0, 1e+09");
}

TEST_F(HostServices, NamesStayFreeOfThoseOfMountedItems)
{
    const test::Nested nested;
    const auto gateway = make("gateway", "gateway");
    model.setGateway(gateway->path(), nested.id());
    EXPECT_EQ(host::freeName(gateway, "stage"), "stage1");
    EXPECT_EQ(host::freeName(gateway, "other"), "other");
    EXPECT_EQ(host::freeName(world, "gateway"), "gateway") << "which the run-time sees to";
}

TEST_F(HostServices, AnItemIsPlacedInTheWorldUnlessSomethingIsFlatAbove)
{
    const auto parent = make("group", "parent");
    const auto child = model.make(parent->path(), "group", "child");
    const auto transform = Transform3d::transform3d(parent);
    transform->translate(1, 2, 3);
    transform->scale(1, 2, 4);
    const Matrix4d wanted({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {7, 8, 9, 1}}});
    Transform3d::transform3d(child)->setMatrix(*host::ownMatrix(child, wanted));
    EXPECT_EQ(*host::worldMatrix(child), wanted);
    const auto boxOf = [](double x, double y, double z, double right, double top, double far) {
        return BoundingBox3d(Vector3d({x, y, z}), Vector3d({right, top, far}));
    };
    model.setBoundingBox(child->path(), boxOf(-1, -2, -3, 1, 2, 5));
    EXPECT_EQ(*host::worldBox(child), boxOf(6, 6, 6, 8, 10, 14));
    transform->rotate(0, 0, 90);
    Transform3d::transform3d(child)->setMatrix(
        {{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}});
    EXPECT_EQ(*host::worldBox(child), boxOf(-3, 1, -9, 5, 3, 23));
    transform->scale(0, 1, 1);
    EXPECT_FALSE(host::ownMatrix(child, wanted));
}

TEST_F(HostServices, OutlineKeepsTheAncestorsOfWhatMatches)
{
    const auto group = make("group", "group");
    model.make(group->path(), "mesh", "mesh");
    (void)make("group", "empty");
    host::OutlineFilter filter;
    filter.nodeType = "mesh";
    const auto rows = host::outline(world, filter);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_FALSE(rows[1].matches);
    EXPECT_TRUE(rows[1].isLast) << "the empty group is not shown";
    EXPECT_EQ(rows[2].name, PathComponent("mesh"));
}

TEST_F(HostServices, LongWorkEndsWithTheExceptionOfItsVisitor)
{
    const auto group = make("group", "group");
    model.make(group->path(), "mesh", "mesh");
    const auto other = make("group", "other");
    model.make(other->path(), "mesh", "moved");
    using Work = std::function<void(const host::OnVisit&)>;
    const Work works[] = {
        [&](const auto& onVisit) { (void)host::outline(world, {}, onVisit); },
        [&](const auto& onVisit) { (void)host::itemsLike(world, world, "**/m*", onVisit); },
        [&](const auto& onVisit) {
            (void)host::compare(group, other, {0, true, nullptr, onVisit});
        }};
    for (const auto& work : works) {
        auto visits = 0;
        work([&] { ++visits; });
        EXPECT_GE(visits, 4);
        for (auto left = visits; left > 0; --left) {
            auto remaining = left;
            EXPECT_THROW(
                work([&] { --remaining == 0 ? throw std::range_error("enough") : void(); }),
                std::range_error);
        }
    }
}

TEST(ItemPatterns, NameItemsByLevels)
{
    memory::RunTime runTime;
    auto& model = runTime.model();
    const auto root = model.item(model.root());
    const auto props = model.make(root->path(), "group", "props");
    const auto lamps = model.make(props->path(), "group", "lamps");
    model.make(lamps->path(), "light", "Key 1");
    model.make(lamps->path(), "light", "Key 2");
    model.make(root->path(), "mesh", "floor");
    const auto named = [&](const std::string& pattern) {
        std::string names;
        for (const auto& item : host::itemsLike(root, props, pattern)) {
            names += (names.empty() ? "" : ",") + item->nodeName();
        }
        return names;
    };
    for (const auto& [pattern, names] :
         std::vector<std::pair<const char*, const char*>>{{"*", "lamps"},
                                                          {"l*/Key?1", "Key 1"},
                                                          {"**", "lamps,Key 1,Key 2"},
                                                          {"**/K*", "Key 1,Key 2"},
                                                          {"../*", "props,floor"},
                                                          {"/world/**/Key [23]", "Key 2"},
                                                          {"/**/lamps", "lamps"},
                                                          {"/w*/f*", "floor"},
                                                          {"/elsewhere/*", ""},
                                                          {"x*", ""}}) {
        EXPECT_EQ(named(pattern), names) << pattern;
    }
    EXPECT_TRUE(host::isLike("Lamp", "l*P", true));
    EXPECT_FALSE(host::isLike("Lamp", "l*P"));
}

TEST(ItemConditions, CompareNumbersAsNumbersAndTextsByPatterns)
{
    using host::ItemCondition;
    const host::PropertyValue length(85.0F);
    for (const auto* text : {"x>50", "x>=85", "x=85", "x=85.0", "x!=50", "x<=85", "x", "x=8*"}) {
        EXPECT_TRUE(ItemCondition(text).holdsFor(length)) << text;
    }
    for (const auto* text : {"x>85", "x<85", "x=8", "x!=85"}) {
        EXPECT_FALSE(ItemCondition(text).holdsFor(length)) << text;
    }
    EXPECT_TRUE(ItemCondition("x=*draft*").holdsFor(std::string("a draft of it")));
    EXPECT_TRUE(ItemCondition("x=yes").holdsFor(true) && ItemCondition("x=true").holdsFor(true));
    EXPECT_FALSE(ItemCondition("x>1").holdsFor(std::string("2"))) << "a text is no number";
    EXPECT_THROW(ItemCondition("x>many"), std::invalid_argument);
    EXPECT_THROW(ItemCondition(">1"), std::invalid_argument);

    memory::RunTime runTime;
    auto& model = runTime.model();
    const auto camera = model.make(model.root(), "camera", "camera");
    EXPECT_TRUE(ItemCondition("focalLength>0").holds(camera)) << "a property";
    EXPECT_FALSE(ItemCondition("intensity>=0").holds(camera)) << "one that it does not have";
}

} // namespace
