#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kiv/attributeInfo.h"
#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"
#include "kiv/runTimeRegistration.h"

#include "callback.h"
#include "memoryScene.h"
#include "stubs.h"

using namespace Kiv_v4;
using test::Callback;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

namespace {

using A = Attribute;
using Texts = std::vector<std::string>;

struct AttributesTest : test::MemoryScene
{
    AttributesTest() { Attributes::addObserver(item, observer); }

    /// What the observer of the item received since the last call.
    Texts received() { return std::exchange(_received, {}); }

    template <class Class = A>
    std::shared_ptr<Class> add(const std::string& type, const std::string& name) const
    {
        return std::dynamic_pointer_cast<Class>(attributes->addAttribute(type, name));
    }

    /// Sets, undoes and redoes a new attribute's value and expects one notification of each.
    template <class Class, class T>
    void expectSetting(const std::string& type, const T& value, const std::string& initialText,
                       const std::string& text)
    {
        SCOPED_TRACE(type);
        const auto attribute = add<Class>(type, type);
        ASSERT_NE(attribute, nullptr);
        if (type == A::kEnumString) {
            EXPECT_FALSE(attribute->hasValue());
            model.setEnumValues(item->path(), type, {"low", "high"});
        }
        EXPECT_TRUE(attribute->hasValue());
        EXPECT_EQ(attribute->type(), type);
        EXPECT_EQ(attributes->attributeType(type), type);
        EXPECT_EQ(attribute->string(), initialText);
        const auto def = dynamic_cast<Attributes_v4_2&>(*attributes).attributeDef(type);
        EXPECT_EQ(def->type() + def->defaultValue(), type + initialText);

        const T initial = attribute->get();
        received();
        const auto command = attribute->setCmd(value);
        EXPECT_THAT(received(), IsEmpty());
        const auto expectAfter = [&](void (UndoableCommand::*run)(), const T& expected) {
            ((*command).*run)();
            EXPECT_EQ(attribute->get(), expected);
            EXPECT_THAT(received(), ElementsAre(type));
        };
        expectAfter(&UndoableCommand::execute, value);
        EXPECT_EQ(attribute->string(), text);
        expectAfter(&UndoableCommand::undo, initial);
        expectAfter(&UndoableCommand::redo, value);
    }

    const SceneItem::Ptr item = model.make(model.root(), "mesh", "cube");
    const Attributes::Ptr attributes = Attributes::attributes(item);
    const Observer::Ptr observer = Callback::make([this](const Notification& notification) {
        const auto& change = dynamic_cast<const AttributeChanged&>(notification);
        const auto* of = dynamic_cast<const AttributeMetadataChanged*>(&change);
        _received.push_back(change.name() + (of ? " " + *of->keys().begin() : ""));
    });

private:
    Texts _received;
};

} // namespace

TEST_F(AttributesTest, OfEveryTypeAreSetUndoneAndRedoneAndTellTheirObserversOnceEach)
{
    const std::string name = "/a b,\n";
    expectSetting<AttributeBool>(A::kBool, true, "false", "true");
    expectSetting<AttributeInt>(A::kInt, -7, "0", "-7");
    expectSetting<AttributeFloat>(A::kFloat, 0.1F, "0", "0.1");
    expectSetting<AttributeDouble>(A::kDouble, 1.0 / 3, "0", "0.3333333333333333");
    expectSetting<AttributeString>(A::kString, name, "", name);
    expectSetting<AttributeFilename>(A::kFilename, name, "", name);
    expectSetting<AttributeEnumString>(A::kEnumString, std::string("high"), "low", "high");
    expectSetting<AttributeColorFloat3>(A::kColorFloat3, TypedColorN<float, 3>({1, .5F, 0}),
                                        "(0, 0, 0)", "(1, 0.5, 0)");
    expectSetting<AttributeColorFloat4>(A::kColorFloat4, TypedColorN<float, 4>({1, 2, 3, 4}),
                                        "(0, 0, 0, 0)", "(1, 2, 3, 4)");
    expectSetting<AttributeInt3>(A::kInt3, TypedVectorN<int, 3>({1, -2, 3}), "(0, 0, 0)",
                                 "(1, -2, 3)");
    expectSetting<AttributeFloat2>(A::kFloat2, TypedVectorN<float, 2>({1e30F, 2}), "(0, 0)",
                                   "(1e+30, 2)");
    expectSetting<AttributeFloat3>(A::kFloat3, TypedVectorN<float, 3>({1, 2, 3}), "(0, 0, 0)",
                                   "(1, 2, 3)");
    expectSetting<AttributeFloat4>(A::kFloat4, TypedVectorN<float, 4>({1, 2, 3, 4}), "(0, 0, 0, 0)",
                                   "(1, 2, 3, 4)");
    expectSetting<AttributeDouble3>(A::kDouble3, TypedVectorN<double, 3>({1, 2, 3}), "(0, 0, 0)",
                                    "(1, 2, 3)");
    expectSetting<AttributeMatrix3d>(
        A::kMatrix3d, TypedSquareMatrixN<double, 3>({{{1, 0, 0}, {0, 2.5, 0}, {0, 0, 1}}}),
        "((0, 0, 0), (0, 0, 0), (0, 0, 0))", "((1, 0, 0), (0, 2.5, 0), (0, 0, 1))");
    TypedSquareMatrixN<double, 4> corner;
    corner.matrix[0][3] = 1;
    expectSetting<AttributeMatrix4d>(A::kMatrix4d, corner,
                                     "((0, 0, 0, 0), (0, 0, 0, 0), (0, 0, 0, 0), (0, 0, 0, 0))",
                                     "((0, 0, 0, 1), (0, 0, 0, 0), (0, 0, 0, 0), (0, 0, 0, 0))");

    const auto generic = add<AttributeGeneric>(A::kGeneric, "mesh");
    model.setNativeType(item->path(), "mesh", "halfEdges");
    EXPECT_EQ(generic->nativeType() + generic->string(), "halfEdges");
    EXPECT_FALSE(generic->hasValue());
    EXPECT_EQ(add(A::kInvalid, "x"), nullptr);
    EXPECT_EQ(add(A::kLocked, "x"), nullptr);
}

TEST_F(AttributesTest, OfAnEnumerationTakeNothingButItsStrings)
{
    const auto kind = add<AttributeEnumString>(A::kEnumString, "kind");
    const auto path = item->path();
    model.setEnumValues(path, "kind", {"point", "spot"});
    kind->set("spot");
    EXPECT_THAT([&] { kind->set("area"); },
                ThrowsMessage<std::invalid_argument>(HasSubstr("area")));
    model.setEnumValues(path, "kind", {"area", "spot"});
    EXPECT_EQ(kind->get(), "spot") << "still allowed";
    model.setEnumValues(path, "kind", {"area", "point"});
    EXPECT_THROW(model.setEnumValues(path, "kind", {}), std::invalid_argument);
    EXPECT_THROW(model.setEnumValues(path, "kind", {"a", "a"}), std::invalid_argument);
    EXPECT_EQ(kind->get(), "area");
    EXPECT_THROW(model.setNativeType(path, "kind", "a"), std::invalid_argument);
}

TEST_F(AttributesTest, ComeAndGoByCommandAndComeBackAsTheyWere)
{
    for (const auto* name : {"a", "b9", "c", "b9", "x/y", ""}) {
        add(A::kInt, name);
    }
    EXPECT_THAT(received(), ElementsAre("a", "b9", "c", "b10", "x_y", "Int"));
    const auto names = attributes->attributeNames();
    const auto remove = attributes->removeAttributeCmd("b9");
    remove->execute();
    EXPECT_FALSE(attributes->hasAttribute("b9"));
    remove->undo();
    EXPECT_EQ(attributes->attributeNames(), names);
    EXPECT_THAT(received(), ElementsAre("b9", "b9"));

    const auto rename = attributes->renameAttributeCmd("b9", "c");
    rename->execute();
    EXPECT_EQ(rename->attribute()->name(), "c1");
    EXPECT_THAT(received(), ElementsAre("b9", "c1"));
    rename->undo();
    EXPECT_EQ(rename->attribute(), nullptr);
    EXPECT_EQ(attributes->attributeNames(), names);
    EXPECT_THAT(received(), ElementsAre("c1", "b9"));
    EXPECT_EQ(attributes->renameAttribute("c", "c")->name(), "c");
    EXPECT_THAT(received(), IsEmpty());

    EXPECT_FALSE(attributes->removeAttribute("none"));
    EXPECT_EQ(attributes->renameAttribute("none", "some"), nullptr);
    EXPECT_EQ(attributes->renameAttribute("c", ""), nullptr);
    EXPECT_EQ(attributes->attributeType("none"), A::kInvalid);
}

TEST_F(AttributesTest, KeepMetadataThatAreSetAndClearedByCommand)
{
    const auto size = add(A::kInt, "size");
    received();
    const auto lock = size->setMetadataCmd(A::kLocked, Value(true));
    EXPECT_FALSE(size->hasMetadata(A::kLocked));
    lock->execute();
    const auto unlock = size->setMetadataCmd(A::kLocked, Value(false));
    unlock->execute();
    EXPECT_EQ(size->metadata(A::kLocked).get<std::string>(), "0");
    unlock->undo();
    EXPECT_TRUE(size->metadata(A::kLocked).get<bool>());
    EXPECT_TRUE(size->metadata(A::kLocked).get<bool>()) << "read afresh";
    lock->undo();
    EXPECT_FALSE(size->hasMetadata(A::kLocked) || size->clearMetadata(A::kLocked));
    EXPECT_EQ(size->metadata(A::kLocked).typeName(), "");
    EXPECT_THAT(received(),
                ElementsAre("size Locked", "size Locked", "size Locked", "size Locked"));
}

TEST_F(AttributesTest, AreSetByCommandsThatKeepNeitherThemNorTheirItem)
{
    add(A::kInt, "size");
    auto fresh = model.item(item->path());
    auto size =
        std::dynamic_pointer_cast<AttributeInt>(Attributes::attributes(fresh)->attribute("size"));
    const auto set = size->setCmd(3);
    const auto describe = size->setMetadataCmd("unit", Value(std::string("cm")));
    const std::weak_ptr<SceneItem> keptItem = std::exchange(fresh, nullptr);
    const std::weak_ptr<Attribute> keptAttribute = std::exchange(size, nullptr);
    EXPECT_TRUE(keptItem.expired());
    EXPECT_TRUE(keptAttribute.expired());
    EXPECT_EQ(set->commandString(), "Set size of cube");
    EXPECT_EQ(describe->commandString(), "Set unit of size of cube");
    set->execute();
    describe->execute();
    const auto read = attributes->attribute("size");
    EXPECT_EQ(read->string() + read->metadata("unit").get<std::string>(), "3cm");
    describe->undo();
    EXPECT_FALSE(read->hasMetadata("unit"));
    model.remove(item->path());
    EXPECT_THROW(set->undo(), std::invalid_argument);
}

TEST_F(AttributesTest, ReadWhatACommandSetsAsMetadataAfreshEachTime)
{
    /// Reads the numbers that it is given.
    struct Reader : AttributeGeneric
    {
        using AttributeGeneric::AttributeGeneric;
        bool hasValue() const override { return false; }
        std::string name() const override { return "reader"; }
        std::string displayName() const override { return "Reader"; }
        std::string string() const override { return ""; }
        std::string nativeType() const override { return ""; }
        Value metadata(const std::string&) const override { return 1; }
        bool hasMetadata(const std::string&) const override { return true; }
        bool clearMetadata(const std::string&) override { return false; }
        bool setMetadata(const std::string&, const Value& value) override
        {
            numbers.push_back(value.get<int>());
            return true;
        }
        std::vector<int> numbers;
    };
    const auto reader = std::make_shared<Reader>(item);
    const auto command = reader->setMetadataCmd("key", Value(7));
    command->execute();
    command->undo();
    command->redo();
    command->undo();
    EXPECT_THAT(reader->numbers, ElementsAre(7, 1, 7, 1));
}

TEST_F(AttributesTest, ThatAreGoneSayWhereAndServeAgainWhenTheyAreBack)
{
    const auto size = add<AttributeInt>(A::kInt, "size");
    size->set(3);
    const auto expectGone = [&](const std::string& message) {
        const auto throws = ThrowsMessage<std::invalid_argument>(HasSubstr(message));
        EXPECT_FALSE(size->hasValue() || size->hasMetadata("key"));
        EXPECT_THAT([&] { (void)size->get(); }, throws);
        EXPECT_THAT([&] { (void)size->string(); }, throws);
        EXPECT_THAT([&] { size->set(4); }, throws);
        EXPECT_THAT([&] { size->setMetadata("key", Value(1)); }, throws);
    };
    const auto ball = model.rename(item->path(), "ball");
    expectGone("'/world/cube' names no item");
    EXPECT_THAT(attributes->attributeNames(), IsEmpty());
    EXPECT_EQ(add(A::kInt, "other"), nullptr);
    model.rename(ball->path(), "cube");
    EXPECT_EQ(size->get(), 3);
    EXPECT_NE(*size, *attributes->renameAttribute("size", "width"));
    expectGone("'/world/cube' has no attribute 'size'");
    EXPECT_EQ(*size, *add(A::kFloat, "size")) << "by item and name alone";
    expectGone("'/world/cube' has an attribute 'size' of another type: Float");
}

TEST_F(AttributesTest, AreFoundByTheirHandlesOnWhateverIsThere)
{
    const AttributeInfo info(add(A::kInt, "size"));
    model.remove(item->path());
    EXPECT_THAT([&] { (void)info.attribute(); },
                ThrowsMessage<std::runtime_error>("The path is invalid '/world/cube'."));
    model.make(model.root(), "light", "cube");
    EXPECT_EQ(info.attribute(), nullptr);
    EXPECT_EQ(info, AttributeInfo(add(A::kString, "size")));
    EXPECT_EQ(info.attribute()->type(), A::kString);

    const RunTimeRegistration bare("bare", '/');
    const auto hierarchy = std::make_shared<test::HierarchyStub>();
    hierarchy->onCreateItem = [](const Path& path) { return std::make_shared<test::Item>(path); };
    RunTimeMgr::instance().setHierarchyHandler(bare.id(), hierarchy);
    const AttributeInfo unknown(PathSegment("/a", bare.id(), '/'), "size");
    EXPECT_THAT([&] { (void)unknown.attribute(); },
                ThrowsMessage<std::runtime_error>("The scene item is invalid '/a'."));
}

TEST_F(AttributesTest, TellTheObserversOfAllAndThenThoseOfTheirItem)
{
    Texts order;
    const auto all = Callback::make([&](const Notification&) { order.push_back("all"); });
    const auto one = Callback::make([&](const Notification&) { order.push_back("one"); });
    const auto path = model.make(model.root(), "mesh", "other")->path();
    auto other = model.item(path);
    const std::weak_ptr<SceneItem> watched = other;
    EXPECT_TRUE(Attributes::addObserver(all));
    EXPECT_FALSE(Attributes::addObserver(all) || Attributes::hasObservers(path));
    EXPECT_TRUE(Attributes::hasObserver(all) && Attributes::addObserver(other, one));
    other.reset();
    EXPECT_TRUE(watched.expired()) << "items are not kept by their observers";

    Attributes::notify(AttributeChanged(path, "size"));
    Attributes::notify(AttributeChanged(model.root(), "size"));
    EXPECT_THAT(order, ElementsAre("all", "one", "all"));

    EXPECT_TRUE(Attributes::removeObserver(all) && Attributes::nbObservers() == 0);
    EXPECT_FALSE(Attributes::hasObserver(all) || Attributes::removeObserver(all));
}
