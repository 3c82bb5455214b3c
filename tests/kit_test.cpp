#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <list>
#include <map>
#include <set>

#include "kiv/attributeNotification.h"
#include "kiv/hierarchy.h"
#include "kiv/kit/attributeJson.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/kit/bases.h"
#include "kiv/kit/cameras.h"
#include "kiv/kit/command.h"
#include "kiv/kit/handlerBases.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/lights.h"
#include "kiv/kit/names.h"
#include "kiv/kit/nodeTree.h"
#include "kiv/kit/transforms.h"
#include "kiv/pathString.h"
#include "kiv/runTimeCommand.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/scene.h"
#include "kiv/sceneItemOps.h"
#include "kiv/sceneNotification.h"
#include "kiv/setValueCommands.h"
#include "kiv/transform3d.h"
#include "kiv/uniqueName.h"

#include "callback.h"
#include "items.h"
#include "matrices.h"
#include "random.h"

namespace {

using namespace Kiv_v4;
using kit::AttributeTable;

/// Data to edit: boxes in boxes; a leaf takes no children.
struct Box
{
    std::string name;
    std::string type;
    std::list<Box> children{};
    Matrix4d matrix = kit::identity();
    kit::AffineFactors factors{};
    kit::CameraValues camera{};
    kit::LightValues light{};
    std::map<std::string, AttributeVariant> values{};
    AttributeTable::Metadata metadata{};
};

class BoxTree : public kit::NodeTree<Box*>
{
public:
    explicit BoxTree(Rtid id)
        : NodeTree(PathSegment(PathSegment::Components{std::string("top")}, id, '/'))
    {}

    bool accepts(const Path& parent, const std::string&) const override
    {
        return nodeType(parent) == "box";
    }

    Part make(const std::string& type) override { return std::make_shared<Box>(Box{"", type}); }

    Part copy(const Path& path) override { return std::make_shared<Box>(*find(path)); }

    Part take(const Path& path) override
    {
        auto* box = existing(path);
        const auto part = std::make_shared<Box>(*box);
        existing(path.pop())->children.remove_if([&](Box& other) { return &other == box; });
        return part;
    }

    void put(const Path& path, const Part& part, std::size_t row) override
    {
        auto& siblings = find(path.pop())->children;
        const auto place = std::next(siblings.begin(), long(std::min(row, siblings.size())));
        siblings.insert(place, *std::static_pointer_cast<Box>(part))->name = path.back().string();
    }

protected:
    Box* rootNode() const override { return &_top; }

    std::vector<Box*> childNodes(Box* box) const override
    {
        std::vector<Box*> children;
        for (auto& child : box->children) {
            children.push_back(&child);
        }
        return children;
    }

    Child described(Box* box) const override { return {box->name, box->type}; }

private:
    mutable Box _top{"top", "box"};
};

class Kit : public testing::Test
{
protected:
    Kit()
    {
        Scene::initializeInstance(std::make_shared<Scene>());
        Scene::instance().addObserver(sceneObserver);
        kit::registerTree(id, tree);
    }

    ~Kit() override { Scene::initializeInstance(nullptr); }

    static SceneItem::Ptr item(const std::string& path)
    {
        return Hierarchy::createItem(PathString::path(path));
    }

    SceneItem::Ptr made(const std::string& parent, const std::string& name,
                        const std::string& type = "box")
    {
        const auto command =
            Hierarchy::hierarchy(item(parent))->createChildCmd(type, PathComponent(name));
        command->execute();
        return command->sceneItem();
    }

    std::vector<std::string> state() const { return test::pathsOf(test::allUnder(item("/top"))); }

    const RunTimeRegistration registration{"kit", '/'};
    const Rtid id = registration.id();
    const std::shared_ptr<BoxTree> tree = std::make_shared<BoxTree>(id);
    std::size_t heard = 0;
    std::set<std::string> outline{"/top"}; ///< Kept by the announcements alone.
    const Observer::Ptr sceneObserver = test::Callback::make([this](const Notification& news) {
        ++heard;
        follow(news);
    });

private:
    void drop(const std::string& path)
    {
        for (auto known = outline.begin(); known != outline.end();) {
            const auto isUnder = *known == path || known->rfind(path + "/", 0) == 0;
            known = isUnder ? outline.erase(known) : std::next(known);
        }
    }

    void enter(const SceneItem::Ptr& top)
    {
        for (const auto& path : test::pathsOf(test::allUnder(top))) {
            outline.insert(path);
        }
    }

    void follow(const Notification& news)
    {
        if (const auto* added = dynamic_cast<const ObjectAdd*>(&news)) {
            enter(added->item());
        } else if (const auto* gone = dynamic_cast<const ObjectPostDelete*>(&news)) {
            drop(PathString::string(gone->path()));
        } else if (const auto* renamed = dynamic_cast<const ObjectRename*>(&news)) {
            drop(PathString::string(renamed->previousPath()));
            enter(renamed->item());
        } else if (const auto* moved = dynamic_cast<const ObjectReparent*>(&news)) {
            drop(PathString::string(moved->previousPath()));
            enter(moved->item());
        }
    }
};

TEST(KitNames, AnIndexGivesTheNamesThatCountingUpGives)
{
    test::Random random;
    const std::vector<std::string> stems{"a", "", "a0", "b 7x"};
    kit::NameIndex index;
    std::set<std::string> model;
    const auto someName = [&] {
        const auto number = random.below(4) == 0 ? "" : std::to_string(random.below(30));
        return random.of(stems) + number;
    };
    for (auto i = 0; i < 20000; ++i) {
        const auto name = someName();
        const auto expected =
            uniqueName(name, [&](const auto& tried) { return model.count(tried) != 0; });
        ASSERT_EQ(index.uniqueName(name), expected);
        if (random.below(2) == 0) {
            ASSERT_EQ(index.insert(expected), model.insert(expected).second);
        } else {
            ASSERT_EQ(index.erase(name), model.erase(name) != 0);
        }
        ASSERT_EQ(index.size(), model.size());
    }
    EXPECT_EQ(kit::fitName("a/\nb,c", "/,"), "a_b_c");
    EXPECT_EQ(kit::fitName("", "_"), "-");
}

TEST(KitCommand, RunsItsFunctionsAndAnnouncesWhatDidNotThrow)
{
    auto value = 0;
    auto announced = 0;
    const auto command = kit::command(
        7, "Set", [&] { value = 1; },
        [&] { value = value == 1 ? 0 : throw std::logic_error("lost"); }, [&] { ++announced; });
    EXPECT_EQ(command->commandString(), "Set");
    EXPECT_TRUE(std::dynamic_pointer_cast<RunTimeCommand>(command)->belongsTo(7));
    EXPECT_EQ(value, 0);
    command->execute();
    command->undo();
    command->redo();
    EXPECT_EQ(value, 1);
    EXPECT_EQ(announced, 3);
    value = 2;
    EXPECT_THROW(command->undo(), std::logic_error);
    EXPECT_EQ(announced, 3);
}

TEST_F(Kit, RandomEditsOfATreeAreAnnouncedUndoneAndRedoneExactly)
{
    test::Random random;
    std::vector<UndoableCommand::Ptr> commands;
    std::vector<std::vector<std::string>> states{state()};
    const auto someItem = [&] {
        const auto items = test::allUnder(item("/top"));
        return items[random.below(items.size())];
    };
    const auto someCommand = [&]() -> UndoableCommand::Ptr {
        const auto chosen = someItem();
        const auto hierarchy = Hierarchy::hierarchy(chosen);
        const auto ops = SceneItemOps::sceneItemOps(chosen);
        const PathComponent name(random.below(2) == 0 ? "x" : "y/9");
        switch (random.below(8)) {
        case 0:
            return ops->deleteItemCmd();
        case 1:
            return ops->duplicateItemCmd();
        case 2:
            return ops->renameItemCmd(name);
        case 3: {
            auto children = hierarchy->children();
            children.reverse();
            return hierarchy->reorderCmd(children);
        }
        case 4: {
            const auto children = hierarchy->children();
            return hierarchy->insertChildCmd(someItem(),
                                             children.empty() ? nullptr : children.back());
        }
        case 5:
            return hierarchy->insertChildCmd(someItem(), nullptr);
        default:
            return hierarchy->createChildCmd(random.below(3) == 0 ? "leaf" : "box", name);
        }
    };
    for (auto step = 0; step < 500; ++step) {
        const auto before = heard;
        const auto command = someCommand();
        ASSERT_EQ(state(), states.back()) << "a command changes nothing when it is made";
        if (command && state().size() < 200) {
            command->execute();
            commands.push_back(command);
            states.push_back(state());
            const auto& last = states[states.size() - 2];
            ASSERT_TRUE(heard == before + 1 || (heard == before && states.back() == last))
                << command->commandString();
            ASSERT_EQ(std::vector<std::string>(outline.begin(), outline.end()), [&] {
                auto sorted = states.back();
                std::sort(sorted.begin(), sorted.end());
                return sorted;
            }()) << command->commandString();
        }
    }
    for (auto round = 0; round < 2; ++round) {
        for (auto i = commands.size(); i-- > 0;) {
            commands[i]->undo();
            ASSERT_EQ(state(), states[i]) << commands[i]->commandString();
        }
        for (std::size_t i = 0; i < commands.size(); ++i) {
            commands[i]->redo();
            ASSERT_EQ(state(), states[i + 1]) << commands[i]->commandString();
        }
    }
}

TEST_F(Kit, WhatATreeDoesNotTakeIsRefusedAndStaleItemsAnswer)
{
    const auto leaf = made("/top", "leaf", "leaf");
    const auto box = made("/top", "box");
    const auto inner = made("/top/box", "inner");
    EXPECT_FALSE(Hierarchy::hierarchy(leaf)->createChildCmd("box", PathComponent("x")));
    EXPECT_FALSE(Hierarchy::hierarchy(leaf)->insertChildCmd(box, nullptr));
    EXPECT_FALSE(Hierarchy::hierarchy(inner)->insertChildCmd(box, nullptr)) << "into itself";
    EXPECT_FALSE(Hierarchy::hierarchy(item("/top"))->reorderCmd({box, box}));
    EXPECT_FALSE(SceneItemOps::sceneItemOps(item("/top"))->deleteItemCmd());
    EXPECT_EQ(*Hierarchy::hierarchy(leaf)->defaultParent(), *item("/top"));

    const auto removal = SceneItemOps::sceneItemOps(box)->deleteItemCmd();
    const auto renaming = SceneItemOps::sceneItemOps(inner)->renameItemCmd(PathComponent("z"));
    removal->execute();
    EXPECT_THROW(renaming->execute(), std::invalid_argument);
    EXPECT_FALSE(item("/top/box/inner"));
    EXPECT_TRUE(Hierarchy::hierarchy(inner)->children().empty());
    EXPECT_FALSE(Hierarchy::hierarchy(inner)->defaultParent() &&
                 Hierarchy::hierarchy(inner)->createChildCmd("box", PathComponent("x")));
    EXPECT_FALSE(SceneItemOps::sceneItemOps(inner)->renameItemCmd(PathComponent("z")));
    made("/top", "box");
    EXPECT_THROW(removal->undo(), std::invalid_argument) << "the name is taken";
}

/// Items named "gate" lead into the run-time 99.
class Gates : public kit::SceneSegmentHandlerBase
{
public:
    Rtid target(const Path& path) const override { return path.back().string() == "gate" ? 99 : 0; }
};

TEST_F(Kit, GatewaysAreFoundFromWhereTheyLead)
{
    made("/top", "a");
    made("/top/a", "gate");
    made("/top/a/gate", "gate");
    Gates gates;
    EXPECT_EQ(test::pathsOf(gates.gatewayItems(item("/top")->path())),
              std::vector<std::string>{"/top/a/gate"});
    EXPECT_TRUE(gates.gatewayItems(item("/top")->path(), 98).empty());
    EXPECT_TRUE(gates.isGatewayItem(item("/top/a/gate")->path()));
    EXPECT_EQ(kit::UIInfoHandlerBase(id).runTimeLabel(), "kit");
    EXPECT_TRUE(kit::NodeDefBase("box").createNodeCmd(item("/top/a"), PathComponent("b")));
}

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
    const Observer::Ptr observer = test::Callback::make([this](const Notification& news) {
        changes.push_back(dynamic_cast<const AttributeChanged&>(news).name());
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
    auto heardOfCamera = 0;
    const auto observer = test::Callback::make([&](const Notification&) { ++heardOfCamera; });
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
    EXPECT_EQ(heardOfCamera, 4);
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
