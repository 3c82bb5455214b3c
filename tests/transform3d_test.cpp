#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <vector>

#include "kiv/host/undoHistory.h"
#include "kiv/setValueCommands.h"
#include "kiv/transform3dNotification.h"
#include "kiv/transform3dPathSubject.h"

#include "callback.h"
#include "matrices.h"
#include "memoryScene.h"
#include "nested.h"
#include "random.h"

using namespace Kiv_v4;
using test::Callback;
using test::error;
using test::translationOf;

namespace {

struct VectorProperty
{
    const char* name;
    UndoableCommand::Ptr (Transform3d::*makeCommand)(double, double, double);
    void (Transform3d::*set)(double, double, double);
    Vector3d (Transform3d::*get)() const;
};

const std::vector<VectorProperty> kProperties = {
#define KIV_TEST_PROPERTY(cmd, set, get)                                                           \
    {                                                                                              \
#get, &Transform3d::cmd, &Transform3d::set, &Transform3d::get                              \
    }
    KIV_TEST_PROPERTY(translateCmd, translate, translation),
    KIV_TEST_PROPERTY(rotateCmd, rotate, rotation),
    KIV_TEST_PROPERTY(scaleCmd, scale, scale),
    KIV_TEST_PROPERTY(rotatePivotCmd, rotatePivot, rotatePivot),
    KIV_TEST_PROPERTY(scalePivotCmd, scalePivot, scalePivot),
    KIV_TEST_PROPERTY(translateRotatePivotCmd, translateRotatePivot, rotatePivotTranslation),
    KIV_TEST_PROPERTY(translateScalePivotCmd, translateScalePivot, scalePivotTranslation),
    KIV_TEST_PROPERTY(rotateAxisCmd, rotateAxis, rotateAxis),
    KIV_TEST_PROPERTY(shearCmd, shear, shear),
#undef KIV_TEST_PROPERTY
};

using Values = std::vector<std::array<double, 3>>;

Values valuesOf(const Transform3d& transform)
{
    Values values;
    for (const auto& property : kProperties) {
        values.push_back((transform.*property.get)().vector);
    }
    return values;
}

struct MemoryTransform : test::MemoryScene
{
    double number() { return static_cast<double>(random.below(2000001)) / 1e6 - 1; }

    test::Random random;
    SceneItem::Ptr group = model.make(model.root(), "group", "group");
    SceneItem::Ptr item = model.make(group->path(), "mesh", "cube");
    Transform3d::Ptr transform = Transform3d::transform3d(item);
};

} // namespace

TEST_F(MemoryTransform, TakesPointsWhereItsPropertiesSay)
{
    enum { T, R, S, Rp, Sp, Rpt, Spt, Ra, Sh }; // the order of kProperties
    struct Case
    {
        const char* what;
        std::map<std::size_t, std::array<double, 3>> set;
        std::array<double, 3> from, to;
    };
    const std::vector<Case> cases = {
        {"nothing", {}, {1, 2, 3}, {1, 2, 3}},
        {"S R T", {{T, {1, 2, 3}}, {R, {0, 0, 90}}, {S, {2, 1, 1}}}, {1, 0, 0}, {1, 4, 3}},
        {"x before y", {{R, {90, 90, 0}}}, {0, 1, 0}, {1, 0, 0}},
        {"y before z", {{R, {0, 90, 90}}}, {0, 0, 1}, {0, 1, 0}},
        {"x before z", {{R, {90, 0, -450}}}, {1, 1, 0}, {0, -1, 1}},
        {"R about Rp", {{R, {0, 0, 90}}, {Rp, {1, 0, 0}}}, {2, 0, 0}, {1, 1, 0}},
        {"S about Sp", {{S, {1, 3, 1}}, {Sp, {0, 1, 0}}, {R, {180, 0, 0}}}, {0, 2, 0}, {0, -4, 0}},
        {"S Sh", {{S, {1, 2, 3}}, {Sh, {10, 100, 1000}}}, {1, 1, 1}, {321, 3002, 3}},
        {"Sh about Sp", {{Sh, {1, 0, 0}}, {Sp, {0, 5, 0}}}, {0, 5, 0}, {0, 5, 0}},
        {"Ra R", {{Ra, {90, 0, 0}}, {R, {0, 90, 0}}}, {0, 1, 0}, {1, 0, 0}},
        {"Ra about Rp", {{Ra, {0, 0, 180}}, {Rp, {1, 0, 0}}}, {0, 0, 0}, {2, 0, 0}},
        {"Spt R Rpt", {{R, {0, 0, 90}}, {Spt, {1, 0, 0}}, {Rpt, {5, 0, 0}}}, {0, 0, 0}, {5, 1, 0}},
    };
    for (const auto& [what, set, from, to] : cases) {
        const auto t = Transform3d::transform3d(
            model.make(model.root(), "transform", model.uniqueName(model.root(), "t")));
        for (const auto& [property, value] : set) {
            ((*t).*kProperties[property].set)(value[0], value[1], value[2]);
        }
        const auto actual = translationOf(from[0], from[1], from[2]) * t->matrix();
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_DOUBLE_EQ(actual.matrix[3][axis], to[axis]) << what;
        }
    }
}

TEST_F(MemoryTransform, PropertiesAreSetUndoneAndRedoneEachByItselfAndAnnouncedOnce)
{
    std::size_t nbReceived = 0;
    const auto observer = Callback::make([&](const Notification& notification) {
        EXPECT_EQ(dynamic_cast<const Transform3dChanged&>(notification).item(), item);
        ++nbReceived;
    });
    Transform3d::addObserver(item, observer);
    const auto deaf = Callback::make([](const auto&) { ADD_FAILURE() << "not about the child"; });
    Transform3d::addObserver(group, deaf);

    host::UndoHistory history;
    std::vector<Values> states{valuesOf(*transform)};
    for (auto i = 0; i < 200; ++i) {
        auto expected = states.back();
        const auto which = random.below(kProperties.size());
        expected[which] = {number(), number(), number()};
        const auto [x, y, z] = expected[which];
        const auto command = ((*transform).*kProperties[which].makeCommand)(x, y, z);
        EXPECT_EQ(valuesOf(*transform), states.back()) << "the maker changes nothing";
        history.executeCmd(command);
        ASSERT_EQ(valuesOf(*transform), expected) << kProperties[which].name;
        states.push_back(expected);
    }
    EXPECT_EQ(nbReceived, 200U);
    for (auto left = states.size() - 1; history.undo(); --left) {
        ASSERT_EQ(valuesOf(*transform), states[left - 1]);
    }
    for (std::size_t step = 1; history.redo(); ++step) {
        ASSERT_EQ(valuesOf(*transform), states[step]);
    }
    EXPECT_EQ(nbReceived, 600U);
    for (const auto& property : kProperties) {
        ((*transform).*property.set)(1, 2, 3);
        EXPECT_EQ(((*transform).*property.get)(), Vector3d({1, 2, 3})) << property.name;
        EXPECT_FALSE(((*transform).*property.makeCommand)(1, NAN, 3)) << property.name;
    }
}

TEST_F(MemoryTransform, ACommandIsSetAgainWhileDraggingAndUndoneAsOne)
{
    transform->translate(1, 1, 1);
    const auto drag =
        std::dynamic_pointer_cast<SetDouble3UndoableCommand>(transform->translateCmd(2, 2, 2));
    ASSERT_TRUE(drag);
    EXPECT_EQ(drag->path(), item->path());
    EXPECT_EQ(drag->commandString(), "Translate cube");
    drag->execute();
    EXPECT_TRUE(drag->set(3, 3, 3));
    EXPECT_FALSE(drag->set(INFINITY, 0, 0));
    EXPECT_TRUE(drag->set(4, 4, 4));
    transform->rotate(0, 0, 5);
    drag->undo();
    EXPECT_EQ(transform->translation(), Vector3d({1, 1, 1}));
    EXPECT_EQ(transform->rotation(), Vector3d({0, 0, 5})) << "of another property";
    drag->undo();
    drag->redo();
    EXPECT_EQ(transform->translation(), Vector3d({4, 4, 4}));

    model.remove(item->path());
    EXPECT_FALSE(drag->set(5, 5, 5));
    EXPECT_THROW(drag->undo(), std::invalid_argument);
    EXPECT_FALSE(transform->translateCmd(0, 0, 0));
    EXPECT_FALSE(Transform3d::transform3d(item));
}

TEST_F(MemoryTransform, AnyAffineMatrixIsSetUnlessItIsSingular)
{
    std::vector<Matrix4d> matrices{translationOf(1, 2, 3)};
    for (auto i = 0; i < 2000; ++i) {
        Matrix4d matrix = translationOf(number(), number(), number());
        for (std::size_t row = 0; row < 3; ++row) {
            const auto size = std::pow(10, 6 * number());
            for (std::size_t column = 0; column < 3; ++column) {
                // Small whole numbers make right angles, parallel rows and reflections likely.
                matrix.matrix[row][column] = size * (i % 2 ? std::round(2 * number()) : number());
            }
        }
        matrices.push_back(matrix);
    }
    std::size_t nbSet = 0;
    for (const auto& matrix : matrices) {
        for (const auto& property : kProperties) {
            ((*transform).*property.set)(number(), number(), number());
        }
        const auto before = valuesOf(*transform);
        const auto command = transform->setMatrixCmd(matrix);
        if (!command) {
            continue;
        }
        ++nbSet;
        command->execute();
        for (std::size_t row = 0; row < 4; ++row) {
            auto actual = Matrix4d();
            auto expected = Matrix4d();
            actual.matrix[row] = transform->matrix().matrix[row];
            expected.matrix[row] = matrix.matrix[row];
            ASSERT_LT(error(actual, expected), 1e-13) << "row " << row;
        }
        ASSERT_EQ(transform->rotatePivot(), Vector3d());
        ASSERT_EQ(transform->rotateAxis(), Vector3d());
        command->undo();
        ASSERT_EQ(valuesOf(*transform), before);
    }
    EXPECT_GT(nbSet, 1400U) << "about half of the whole-numbered ones are singular";

    const auto setMatrix = std::dynamic_pointer_cast<SetMatrix4dUndoableCommand>(
        transform->setMatrixCmd(translationOf(1, 2, 3)));
    ASSERT_TRUE(setMatrix);
    auto mirror = translationOf(0, 0, 0);
    mirror.matrix[0][0] = -1;
    EXPECT_TRUE(setMatrix->set(mirror));
    EXPECT_EQ(transform->scale(), Vector3d({-1, 1, 1}));
    EXPECT_EQ(transform->rotation(), Vector3d());

    auto projective = translationOf(0, 0, 0);
    projective.matrix[1][3] = 0.5;
    auto notANumber = translationOf(0, NAN, 0);
    auto flat = translationOf(0, 0, 0);
    flat.matrix[2] = {0.1, 0.7, 0, 0};
    for (const auto& refused : {Matrix4d(), projective, notANumber, flat}) {
        EXPECT_FALSE(transform->setMatrixCmd(refused));
        EXPECT_FALSE(setMatrix->set(refused));
    }
}

TEST_F(MemoryTransform, MatricesAreComposedUpToTheTopOfTheSceneAndOnAcrossGateways)
{
    const auto top = Transform3d::transform3d(world);
    top->translate(100, 0, 0);
    Transform3d::transform3d(group)->rotate(0, 0, 90);
    transform->translate(1, 0, 0);
    EXPECT_EQ(transform->segmentInclusiveMatrix(),
              transform->matrix() * Transform3d::transform3d(group)->matrix() * top->matrix());
    EXPECT_EQ(transform->segmentExclusiveMatrix(),
              Transform3d::transform3d(group)->matrix() * top->matrix());
    EXPECT_EQ(transform->inclusiveMatrix(), transform->segmentInclusiveMatrix());
    EXPECT_EQ(transform->inclusiveMatrix().matrix[3], (std::array<double, 4>{100, 1, 0, 1}));
    EXPECT_EQ(top->segmentExclusiveMatrix(), translationOf(0, 0, 0));

    const test::Nested nested;
    model.setGateway(item->path(), nested.id());
    const auto view = Transform3dRead::transform3dRead(nested.view(item->path()));
    EXPECT_EQ(view->inclusiveMatrix(), translationOf(0, 2, 0) * transform->inclusiveMatrix());
    EXPECT_EQ(view->exclusiveMatrix(), translationOf(0, 1, 0) * transform->inclusiveMatrix())
        << "the gateway's own transform is one of the ancestors'";
    const auto deeper = nested.view(view->path());
    EXPECT_EQ(Transform3d::transform3d(deeper)->inclusiveMatrix(),
              translationOf(0, 2, 0) * view->inclusiveMatrix());

    const auto refused = "no transform at the gateway '" + item->path().string() + "'";
    testing::internal::CaptureStderr();
    RunTimeMgr::instance().setTransform3dHandler(runTime.id(), nullptr);
    test::expectError<std::runtime_error>([&] { (void)view->inclusiveMatrix(); }, refused);
    model.rename(item->path(), "elsewhere");
    test::expectError<std::runtime_error>([&] { (void)view->exclusiveMatrix(); }, refused);
    testing::internal::GetCapturedStderr();
}

TEST_F(MemoryTransform, OfAnItemThatIsGoneHasNoPlaceInTheScene)
{
    model.remove(item->path());
    const auto names = testing::ThrowsMessage<std::invalid_argument>(
        testing::HasSubstr(PathString::string(item->path())));
    EXPECT_THAT([&] { (void)transform->inclusiveMatrix(); }, names);
    EXPECT_THAT([&] { (void)transform->exclusiveMatrix(); }, names);
}

TEST_F(MemoryTransform, AreFollowedFromBelowAMovedGateway)
{
    const test::Nested nested;
    model.setGateway(item->path(), nested.id());
    Transform3dPathSubject subject(nested.view(item->path())->path());
    std::size_t nbReceived = 0;
    const auto observer = Callback::make([&](const auto&) { ++nbReceived; });
    subject.addObserver(observer);

    transform->translate(1, 2, 3);
    EXPECT_EQ(nbReceived, 1U);
    Transform3d::transform3d(model.item(model.root()))->rotate(0, 1, 0);
    EXPECT_EQ(nbReceived, 2U);
    const auto renamed = model.rename(group->path(), "renamed");
    Transform3d::transform3d(renamed)->scale(2, 2, 2);
    EXPECT_EQ(nbReceived, 3U);
    const auto gateway = model.move(renamed->path() + "cube", model.root());
    EXPECT_EQ(subject.path(), nested.view(gateway->path())->path());
    Transform3d::transform3d(renamed)->scale(3, 3, 3);
    EXPECT_EQ(nbReceived, 3U) << "not an ancestor any more";
    model.remove(gateway->path());
    EXPECT_TRUE(subject.path().empty());
}

TEST_F(MemoryTransform, TellsEverybodyAlsoWhenPathSubjectsLetGoMeanwhile)
{
    const auto many = [](const Callback::Function& function) {
        std::vector<Observer::Ptr> observers(20);
        for (auto& observer : observers) {
            observer = Callback::make(function);
        }
        return observers;
    };
    const auto add = [](const SceneItem::Ptr& seen, const std::vector<Observer::Ptr>& observers) {
        for (const auto& observer : observers) {
            Transform3d::addObserver(seen, observer);
        }
    };
    const std::vector<std::function<void(const Path&)>> edits = {
        [this](const Path& path) { model.rename(path, "renamed"); },
        [this](const Path& path) { model.move(path, group->path()); },
        [this](const Path& path) { model.remove(path); }};
    for (const auto& edit : edits) {
        const auto seen = model.make(model.root(), "mesh", "seen");
        const auto path = seen->path();
        auto nbReceived = 0;
        const auto first = many([&](const auto&) { ++nbReceived; });
        Transform3dPathSubject follower(path);
        Observer::Ptr leaver; // releases itself and a path subject
        leaver = Callback::make([&, own = std::make_shared<Transform3dPathSubject>(path)](
                                    const auto&) { leaver.reset(); });
        const auto last = many([&](const auto&) { ++nbReceived; });
        add(seen, first);
        add(seen, {leaver});
        add(seen, last);
        const auto editor = Callback::make([&](const auto&) { edit(path); });
        follower.addObserver(editor);
        Transform3d::notify(path);
        EXPECT_EQ(nbReceived, 40);
        EXPECT_NE(follower.path(), path);
    }
}

TEST(Transform3d, WithoutTheOptionalPropertiesReadsZeroAndSetsNothing)
{
    const test::Nested nested;
    const auto item = nested.view(Path());
    const auto transform = Transform3d::editTransform3d(item, EditTransform3dHint::Rotate);
    ASSERT_TRUE(transform);
    for (std::size_t i = 5; i < kProperties.size(); ++i) {
        EXPECT_FALSE(((*transform).*kProperties[i].makeCommand)(1, 2, 3)) << kProperties[i].name;
        ((*transform).*kProperties[i].set)(1, 2, 3);
        EXPECT_EQ(((*transform).*kProperties[i].get)(), Vector3d()) << kProperties[i].name;
    }
    transform->translate(1, 2, 3);
    transform->setMatrix(translationOf(1, 2, 3));
    EXPECT_EQ(transform->translation(), Vector3d({0, 1, 0})) << "refused without a word";
}
