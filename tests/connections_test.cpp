#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/connections.h"
#include "kiv/pathString.h"
#include "kiv/sceneItemOps.h"

#include "items.h"
#include "memoryScene.h"
#include "random.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

/// A connection as "/world/a.size > /world/b.size".
Texts textsOf(const std::vector<Connection::Ptr>& connections)
{
    const auto text = [](const AttributeInfo& info) {
        return PathString::string(info.path()) + "." + info.name();
    };
    Texts texts;
    for (const auto& connection : connections) {
        texts.push_back(text(connection->src()) + " > " + text(connection->dst()));
    }
    return texts;
}

struct ConnectionsTest : test::MemoryScene
{
    SceneItem::Ptr make(const std::string& name, const SceneItem::Ptr& parent = nullptr) const
    {
        return model.make(parent ? parent->path() : model.root(), "mesh", name);
    }

    static Attribute::Ptr add(const SceneItem::Ptr& item, const std::string& name,
                              const std::string& type = Attribute::kInt)
    {
        return Attributes::attributes(item)->addAttribute(type, name);
    }

    [[nodiscard]] Texts of(const std::string& path) const
    {
        return textsOf(handler->connections(at(path))->allConnections());
    }

    const ConnectionHandler::Ptr handler = ConnectionHandler::connectionHandler(runTime.id());
};

/// Makes one random edit of items, attributes or connections.
class RandomEditor
{
public:
    explicit RandomEditor(memory::DataModel& model) : _model(model) {}

    UndoableCommand::Ptr command()
    {
        const auto items = all();
        const auto item = random.of(items);
        const auto hierarchy = Hierarchy::hierarchy(item);
        const auto ops = SceneItemOps::sceneItemOps(item);
        const auto attributes = Attributes::attributes(item);
        const auto attribute = any(item);
        const auto kind = random.below(16);
        if (kind == 0) {
            return hierarchy->createChildCmd("mesh", name());
        } else if (kind == 1) {
            return hierarchy->insertChildCmd(random.of(items), nullptr);
        } else if (kind == 2) {
            return random.below(items.size()) > 6 ? ops->deleteItemCmd() : nullptr;
        } else if (kind == 3) {
            return items.size() < 12 ? ops->duplicateItemCmd() : nullptr;
        } else if (kind == 4) {
            return ops->renameItemCmd(name());
        } else if (kind < 7 || !attribute) {
            return attributes->addAttributeCmd(Attribute::kInt, name());
        } else if (kind == 7) {
            return random.below(2) ? attributes->removeAttributeCmd(attribute->name()) : nullptr;
        } else if (kind == 8) {
            return attributes->renameAttributeCmd(attribute->name(), name());
        } else if (kind == 9) {
            const auto value = static_cast<int>(random.below(100));
            return dynamic_cast<AttributeInt&>(*attribute).setCmd(value);
        } else if (kind == 10) {
            return attribute->setMetadataCmd("key", Value(name()));
        }
        const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
        const auto destination = any(random.of(items));
        const auto connect = handler->connectCmd(attribute, destination);
        return connect ? connect : handler->disconnectCmd(attribute, destination);
    }

    /// All that an undo has to bring back.
    Texts snapshot()
    {
        Texts texts;
        for (const auto& item : all()) {
            texts.push_back(PathString::string(item->path()));
            const auto attributes = Attributes::attributes(item);
            for (const auto& name : attributes->attributeNames()) {
                const auto attribute = attributes->attribute(name);
                texts.push_back(name + "=" + attribute->string() +
                                attribute->metadata("key").get<std::string>());
            }
            const auto handler = ConnectionHandler::connectionHandler(item->runTimeId());
            const auto connections = textsOf(handler->connections(item)->allConnections());
            nbConnections += connections.size();
            texts.insert(texts.end(), connections.begin(), connections.end());
        }
        return texts;
    }

    test::Random random;
    std::size_t nbConnections = 0;

private:
    [[nodiscard]] std::vector<SceneItem::Ptr> all() const
    {
        return test::allUnder(_model.item(_model.root()));
    }

    Attribute::Ptr any(const SceneItem::Ptr& item)
    {
        const auto attributes = Attributes::attributes(item);
        const auto names = attributes->attributeNames();
        return names.empty() ? nullptr : attributes->attribute(random.of(names));
    }

    std::string name() { return std::string(1, static_cast<char>('a' + random.below(3))); }

    memory::DataModel& _model;
};

} // namespace

TEST_F(ConnectionsTest, JoinAttributesOfOneTypeAndFeedEachByOneAtMost)
{
    const auto a = make("a");
    const auto size = add(a, "size");
    const auto width = add(a, "width");
    const auto label = add(a, "label", Attribute::kString);
    const auto mesh = add(a, "mesh", Attribute::kGeneric);
    const auto first = handler->connect(size, width);
    EXPECT_EQ(first->src(), AttributeInfo(size));
    EXPECT_EQ(first->dst(), AttributeInfo(width));
    EXPECT_NE(handler->connect(AttributeInfo(mesh), AttributeInfo(label)), nullptr);
    EXPECT_NE(handler->connect(width, mesh), nullptr);

    const memory::RunTime other("other");
    const auto foreign = add(other.model().item(other.model().root()), "size");
    EXPECT_EQ(handler->connectCmd(add(a, "free"), foreign), nullptr);
    EXPECT_EQ(handler->connectCmd(size, width), nullptr) << "is there";
    EXPECT_EQ(handler->connectCmd(mesh, width), nullptr) << "is fed";
    EXPECT_EQ(handler->connect(size, size), nullptr);
    EXPECT_EQ(handler->connectCmd(label, size), nullptr);
    EXPECT_EQ(handler->connectCmd(size, nullptr), nullptr);
    EXPECT_EQ(handler->disconnectCmd(width, size), nullptr);
    EXPECT_THAT(of("/world/a"),
                ElementsAre("/world/a.size > /world/a.width", "/world/a.mesh > /world/a.label",
                            "/world/a.width > /world/a.mesh"));
    handler->disconnect(AttributeInfo(size), AttributeInfo(width));
    handler->disconnect(mesh, label);
    handler->disconnect(mesh, label);
    EXPECT_THAT(of("/world/a"), ElementsAre("/world/a.width > /world/a.mesh"));
    const AttributeInfo stale(model.root() + std::string("none"), "size");
    EXPECT_THROW(handler->connect(AttributeInfo(size), stale), std::runtime_error);
    EXPECT_THROW(handler->disconnect(stale, AttributeInfo(size)), std::runtime_error);
    EXPECT_EQ(handler->connections(nullptr), nullptr);
    EXPECT_THAT(of("/world"), IsEmpty());
}

TEST_F(ConnectionsTest, AreListedInOrderAndFoundAtTheEndAskedFor)
{
    const auto source = add(make("a"), "size");
    const auto middle = add(make("b"), "size");
    const auto last = add(make("c"), "size");
    handler->connect(middle, last);
    handler->connect(source, middle);
    const auto connections = handler->connections(at("/world/b"));
    const Texts both = {"/world/a.size > /world/b.size", "/world/b.size > /world/c.size"};
    EXPECT_EQ(textsOf(connections->allConnections()), both);
    const auto at = [&](Connections::AttributeType end) {
        return textsOf(connections->connections(middle, end));
    };
    EXPECT_THAT(at(Connections::Source), ElementsAre(both[1]));
    EXPECT_THAT(at(Connections::Destination), ElementsAre(both[0]));
    EXPECT_EQ(at(Connections::SourceOrDestination), both);
    EXPECT_TRUE(connections->hasConnection(source, Connections::Source));
    EXPECT_FALSE(connections->hasConnection(source, Connections::Destination));
    EXPECT_FALSE(connections->hasConnection(nullptr, Connections::SourceOrDestination));
    EXPECT_THAT(connections->connections(nullptr, Connections::Source), IsEmpty());

    handler->connect(source, add(make("d"), "size"));
    EXPECT_THAT(of("/world/a"), ElementsAre(both[0], "/world/a.size > /world/d.size"));
}

TEST_F(ConnectionsTest, FollowTheirAttributesAndAreOutOfSightWithThem)
{
    const auto group = make("group");
    const auto source = add(make("a", group), "size");
    const auto destination = add(make("b"), "width");
    const auto connect = handler->connectCmd(source, destination);
    connect->execute();
    EXPECT_NE(connect->connection(), nullptr);
    model.rename(group->path(), "g");
    model.move(at("/world/b")->path(), at("/world/g/a")->path());
    Attributes::attributes(at("/world/g/a"))->renameAttribute("size", "height");
    const Texts followed = {"/world/g/a.height > /world/g/a/b.width"};
    EXPECT_EQ(of("/world/g/a"), followed);
    EXPECT_EQ(of("/world/g/a/b"), followed);
    (void)SceneItemOps::sceneItemOps(at("/world/g"))->duplicateItem();
    EXPECT_THAT(of("/world/g1/a/b"), IsEmpty());

    model.move(at("/world/g/a/b")->path(), model.root());
    const auto remove = SceneItemOps::sceneItemOps(at("/world/g"))->deleteItemCmd();
    remove->execute();
    EXPECT_THAT(of("/world/b"), IsEmpty());
    // The place is free; who comes back last has it until the other goes.
    const auto other = add(make("other"), "size");
    handler->connect(other, AttributeInfo(at("/world/b")->path(), "width").attribute());
    EXPECT_THAT(of("/world/b"), ElementsAre("/world/other.size > /world/b.width"));
    remove->undo();
    EXPECT_THAT(of("/world/b"), ElementsAre("/world/other.size > /world/b.width"));
    EXPECT_THAT(of("/world/g/a"), IsEmpty());
    Attributes::attributes(at("/world/other"))->removeAttribute("size");
    EXPECT_THAT(of("/world/b"), ElementsAre("/world/g/a.height > /world/b.width"));
    EXPECT_THROW(connect->undo(), std::invalid_argument) << "of names that are gone";
    EXPECT_THAT(of("/world/b"), ElementsAre("/world/g/a.height > /world/b.width"));
}

TEST_F(ConnectionsTest, AreUndoneAndRedoneWithAllElseStepByStep)
{
    RandomEditor editor(model);
    std::vector<UndoableCommand::Ptr> done;
    std::vector<Texts> states{editor.snapshot()};
    for (auto i = 0; i < 1500; ++i) {
        if (const auto command = editor.command()) {
            command->execute();
            done.push_back(command);
            states.push_back(editor.snapshot());
        }
        // Now and then some way back and forth, so that redone edits are undone again.
        const auto way = std::min<std::size_t>(done.size(), 40);
        const auto back =
            done.size() - (editor.random.below(30) ? 0 : editor.random.below(way + 1));
        const auto forth = back + editor.random.below(done.size() - back + 1);
        for (auto at = done.size(); at > back; --at) {
            done[at - 1]->undo();
            ASSERT_EQ(editor.snapshot(), states[at - 1]);
        }
        for (auto at = back; at < forth; ++at) {
            done[at]->redo();
            ASSERT_EQ(editor.snapshot(), states[at + 1]);
        }
        done.resize(forth);
        states.resize(forth + 1);
    }
    EXPECT_GT(editor.nbConnections, 1000U) << "else the test has tested little";
}
