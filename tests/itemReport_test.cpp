// What the host program tells of items that no file brings about.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"

#include "memoryScene.h"
#include "nested.h"
#include "report/itemReport.h"

using namespace Kiv_v4;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct ItemReport : test::MemoryScene
{
    [[nodiscard]] SceneItem::Ptr make(const std::string& type, const std::string& name) const
    {
        return model.make(model.root(), type, name);
    }

    const SceneItem::Ptr item = make("group", "item");
    const Attributes::Ptr attributes = Attributes::attributes(item);
};

TEST_F(ItemReport, AttributesOfEveryTypeHaveAValueOfItsShape)
{
    const std::pair<const char*, const char*> shapes[] = {
        {Attribute::kBool, "false"},
        {Attribute::kInt, "0"},
        {Attribute::kFloat, "0.0"},
        {Attribute::kDouble, "0.0"},
        {Attribute::kString, "\"\""},
        {Attribute::kColorFloat3, "[0.0,0.0,0.0]"},
        {Attribute::kFilename, "\"\""},
        {Attribute::kColorFloat4, "[0.0,0.0,0.0,0.0]"},
        {Attribute::kInt3, "[0,0,0]"},
        {Attribute::kFloat2, "[0.0,0.0]"},
        {Attribute::kFloat3, "[0.0,0.0,0.0]"},
        {Attribute::kFloat4, "[0.0,0.0,0.0,0.0]"},
        {Attribute::kEnumString, "null"},
        {Attribute::kDouble3, "[0.0,0.0,0.0]"},
    };
    for (const auto& [type, shape] : shapes) {
        ASSERT_TRUE(attributes->addAttribute(type, type)) << type;
        const auto record = app::attributes(item).facts.back().value;
        EXPECT_EQ(record["type"], type);
        EXPECT_EQ(record["value"].dump(), shape) << type;
    }
    for (const auto& [type, rows] :
         {std::pair(Attribute::kMatrix3d, 3u), {Attribute::kMatrix4d, 4u}}) {
        attributes->addAttribute(type, type);
        const auto record = app::attributes(item).facts.back().value;
        EXPECT_TRUE(record["value"].size() == rows && record["value"][0].size() == rows) << type;
    }
    EXPECT_TRUE(attributes->addAttribute(Attribute::kGeneric, "generic"));
    EXPECT_TRUE(app::attributes(item).facts.back().value.contains("nativeType"));
}

TEST_F(ItemReport, AttributesTellTheirMetadata)
{
    const auto size = attributes->addAttribute(Attribute::kFloat, "size");
    std::dynamic_pointer_cast<AttributeFloat>(size)->set(0.1F);
    size->setMetadata(Attribute::kLocked, true);
    const auto fact = app::attributes(item).facts.at(0);
    EXPECT_EQ(fact.value["value"], 0.1);
    EXPECT_EQ(fact.value["metadata"], (app::Json{{"Locked", true}}));
    EXPECT_THAT(fact.lines.at(0), testing::EndsWith("Locked: yes)"));
}

TEST_F(ItemReport, AConnectionIsToldAtBothEnds)
{
    const auto other = make("group", "other");
    const auto target = Attributes::attributes(other)->addAttribute(Attribute::kInt, "in");
    const auto source = attributes->addAttribute(Attribute::kInt, "out");
    EXPECT_THAT(app::connections(item).facts, IsEmpty());
    ConnectionHandler::connectionHandler(item->runTimeId())->connect(source, target);

    const auto leaving = app::connections(item).facts.at(0);
    const auto arriving = app::connections(other).facts.at(0);
    EXPECT_EQ(leaving.value, arriving.value);
    EXPECT_EQ(leaving.value["destination"],
              (app::Json{{"path", "/world/other"}, {"attribute", "in"}}));
    EXPECT_EQ(leaving.label, "out");
    EXPECT_THAT(leaving.lines, ElementsAre("to /world/other in"));
    EXPECT_EQ(arriving.label, "in");
    EXPECT_THAT(arriving.lines, ElementsAre("from /world/item out"));
}

TEST_F(ItemReport, BoundMaterialsAreToldAsPathsAndMissingOnesNotAtAll)
{
    const auto keys = [&] {
        std::vector<std::string> result;
        for (const auto& fact : app::object(item).facts) {
            result.push_back(fact.key);
        }
        return result;
    };
    EXPECT_THAT(keys(), ElementsAre("visible", "boundingBox"));
    model.setMaterials(item->path(), {make("material", "oak")->path()});
    EXPECT_THAT(keys(), ElementsAre("visible", "boundingBox", "materials"));
    EXPECT_EQ(app::object(item).facts.back().value, app::Json::array({"/world/oak"}));
}

TEST_F(ItemReport, AnItemBehindAGatewayWithoutTransformHasNoPlaceInTheWorld)
{
    const test::Nested nested;
    const auto gateway = make("gateway", "gateway");
    const auto valueOf = [&](const char* key) {
        for (const auto& fact : app::transform(nested.view(gateway->path())).facts) {
            if (fact.key == key) {
                return fact.value;
            }
        }
        return app::Json("not told");
    };
    EXPECT_EQ(valueOf("worldMatrix").at(3), app::json(std::array{0.0, 2.0, 0.0, 1.0}));
    EXPECT_EQ(valueOf("gatewayWithoutTransform"), "not told");
    EXPECT_EQ(valueOf("shear"), "not told");

    RunTimeMgr::instance().setTransform3dHandler(runTime.id(), nullptr);
    EXPECT_TRUE(valueOf("worldMatrix").is_null());
    EXPECT_EQ(valueOf("gatewayWithoutTransform"), "/world/gateway");
    EXPECT_TRUE(valueOf("matrix").is_array());
    EXPECT_THAT(app::transform(gateway).facts, IsEmpty());
}

TEST(ItemReportText, NumbersAreShortForPeopleAndExactForMachines)
{
    EXPECT_EQ(app::json(0.1F).dump(), "0.1");
    EXPECT_EQ(app::json(1.0 / 3).dump(), "0.3333333333333333");
    EXPECT_EQ(app::textOf(app::json(1.0 / 3)), "0.333333");
    EXPECT_EQ(app::textOf(app::json(std::array{35.0, -0.0, 1e9})), "35, 0, 1e+09");
    EXPECT_EQ(app::textOf(app::json(std::numeric_limits<float>::infinity())), "inf");
    EXPECT_THAT(app::rowsOf(app::json(std::array{std::array{1.0, -0.5}, std::array{10.0, 2.0}})),
                ElementsAre("   1  -0.5", "  10     2"));
}

} // namespace
