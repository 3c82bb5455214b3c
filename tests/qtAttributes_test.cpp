// Attributes and context menus in windows.
#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>
#include <gmock/gmock.h>
#include <optional>

#include "kiv/attributes.h"
#include "kiv/camera.h"
#include "kiv/contextOps.h"
#include "kiv/hierarchy.h"
#include "kiv/light.h"
#include "kiv/memory/runTime.h"
#include "kiv/pathString.h"
#include "kiv/qt/attributeModel.h"
#include "kiv/qt/contextMenu.h"
#include "kiv/runTimeMgr.h"
#include "kiv/transform3d.h"

#include "qtApplication.h"
#include "random.h"

using namespace Kiv_v4;
using testing::ElementsAre;
using Tester = QAbstractItemModelTester;

namespace {

/// Attributes of an item of an AttributeModel that follows the global selection.
struct QtAttributes : test::QtApplication
{
    QtAttributes() { model.follow(host.selection); }

    SceneItem::Ptr make(const std::string& type, const std::string& name)
    {
        return scene.make(scene.root(), type, name);
    }

    void select(const std::vector<SceneItem::Ptr>& items)
    {
        Selection selected;
        for (const auto& item : items) {
            selected.append(item);
        }
        host.selection->replaceWith(selected);
        settle();
    }

    /// Changes are shown once the program has nothing else to do.
    static void settle() { QCoreApplication::processEvents(); }

    /// The value of the row with that label; invalid when there is none.
    [[nodiscard]] QModelIndex value(const QString& label) const
    {
        for (auto group = 0; group < model.rowCount(); ++group) {
            const auto above = model.index(group, 0);
            for (auto row = 0; row < model.rowCount(above); ++row) {
                if (model.index(row, 0, above).data() == label) {
                    return model.index(row, qt::AttributeModel::ValueColumn, above);
                }
            }
        }
        return {};
    }

    [[nodiscard]] std::string shown(const QString& label) const
    {
        return value(label).data().toString().toStdString();
    }

    bool set(const QString& label, const QString& text)
    {
        const auto isSet = model.setData(value(label), text, Qt::EditRole);
        settle();
        return isSet;
    }

    test::Host host;
    std::optional<memory::RunTime> runTime{std::in_place};
    memory::DataModel& scene = runTime->model();
    qt::AttributeModel model;
    const Tester tester{&model, Tester::FailureReportingMode::Fatal};
};

TEST_F(QtAttributes, ValuesOfEveryTypeAreReadAndSetAsText)
{
    const auto cube = make("mesh", "cube");
    const auto attributes = Attributes::attributes(cube);
    for (const auto& type : attributeTypes()) {
        attributes->addAttribute(type, "of" + type);
    }
    scene.setEnumValues(cube->path(), "ofEnumString", {"soft", "hard"});
    select({cube});
    const std::vector<std::pair<const char*, const char*>> values{{"Int", "3"},
                                                                  {"Float", "2.5"},
                                                                  {"String", "a b"},
                                                                  {"Filename", "a.png"},
                                                                  {"EnumString", "hard"},
                                                                  {"Int3", "1, 2, 3"},
                                                                  {"ColorFloat3", "1, 0, 0.5"}};
    for (const auto& [type, text] : values) {
        const auto label = QStringLiteral("of") + type;
        EXPECT_TRUE(set(label, text)) << type;
        EXPECT_EQ(shown(label), text);
    }
    EXPECT_FALSE(set("ofInt", "three"));
    EXPECT_FALSE(set("ofInt3", "1, 2"));
    EXPECT_FALSE(set("ofEnumString", "other"));
    EXPECT_FALSE(value("ofGeneric").flags() & Qt::ItemIsEditable);
    EXPECT_TRUE(model.setData(value("ofBool"), Qt::Checked, Qt::CheckStateRole));
    settle();
    EXPECT_EQ(value("ofBool").data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_EQ(value("ofColorFloat3").data(Qt::DecorationRole).value<QColor>().red(), 255);
    for (std::size_t i = 0; i <= values.size(); ++i) {
        host.history->undo();
    }
    settle();
    EXPECT_EQ(shown("ofInt"), "0");
}

TEST_F(QtAttributes, OfSeveralItemsTheSharedOnesAreShownAndSetAsOneStep)
{
    const auto lamp = make("spotLight", "lamp");
    const auto sun = make("directionalLight", "sun");
    Light::light(lamp)->intensity(2);
    select({lamp, sun});
    EXPECT_EQ(shown("intensity"), "mixed");
    EXPECT_FALSE(value("cone angle").isValid());
    EXPECT_EQ(value("casts shadows").data(Qt::CheckStateRole),
              value("casts shadows").isValid() ? QVariant(Qt::Checked) : QVariant());
    EXPECT_TRUE(set("intensity", "5"));
    EXPECT_EQ(shown("intensity"), "5");
    EXPECT_EQ(Light::light(sun)->intensity(), 5);
    host.history->undo();
    settle();
    EXPECT_EQ(shown("intensity"), "mixed");
    EXPECT_EQ(Light::light(lamp)->intensity(), 2);
    EXPECT_FALSE(host.history->canUndo());
    select({lamp});
    EXPECT_TRUE(value("cone angle").isValid());
}

TEST_F(QtAttributes, AreResetToTheirDefinitionInAllItemsAsOneStep)
{
    const auto makeMaterial = [this](const std::string& name, float roughness) {
        const auto item = make("material", name);
        const auto attributes = Attributes::attributes(item);
        const auto add = [&]<class Typed>(const char* type, const char* named, const Typed& to) {
            std::dynamic_pointer_cast<TypedAttribute<Typed>>(attributes->addAttribute(type, named))
                ->set(to);
        };
        add(Attribute::kFloat, "roughness", roughness);
        add(Attribute::kColorFloat3, "baseColor", Color3f({1, 0, 0}));
        return item;
    };
    select({makeMaterial("steel", 0.2F), makeMaterial("oak", 0.5F)});
    EXPECT_EQ(shown("roughness"), "mixed");
    EXPECT_TRUE(model.reset(value("roughness")));
    settle();
    EXPECT_EQ(shown("roughness"), "0.5");
    EXPECT_FALSE(model.canReset(value("roughness")));
    EXPECT_TRUE(model.reset(value("baseColor")));
    settle();
    EXPECT_EQ(shown("baseColor"), "0.8, 0.8, 0.8");
    EXPECT_THAT(host.history->entries(), ElementsAre("Set roughness", "Set baseColor"));
    host.history->undo();
    host.history->undo();
    settle();
    EXPECT_EQ(shown("roughness"), "mixed");
    EXPECT_EQ(shown("baseColor"), "1, 0, 0");
    ASSERT_TRUE(value("matrix").isValid());
    EXPECT_FALSE(model.reset(value("matrix"))) << "which has no definition";
    EXPECT_FALSE(model.reset({}));
}

TEST_F(QtAttributes, ValuesFollowChangesAndItemsThatGo)
{
    const auto group = make("group", "group");
    const auto cube = scene.make(group->path(), "camera", "view");
    select({cube});
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    Camera::camera(cube)->focalLength(85);
    Transform3d::transform3d(cube)->translate(1, 2, 3);
    settle();
    EXPECT_EQ(shown("focal length"), "85");
    EXPECT_EQ(shown("translation"), "1, 2, 3");
    const auto world = shown("world matrix");
    Transform3d::transform3d(group)->translate(5, 0, 0);
    settle();
    EXPECT_NE(shown("world matrix"), world) << "an ancestor was moved";
    EXPECT_EQ(resets.count(), 0) << "what is open stays so";
    scene.rename(group->path(), "other");
    settle();
    EXPECT_EQ(shown("focal length"), "85");
    scene.remove(PathString::path("/world/other"));
    settle();
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(QtAttributes, ManyItemsAreReadInSlices)
{
    std::vector<std::string> names;
    for (auto i = 0; i < 40'000; ++i) {
        names.push_back("m" + std::to_string(i));
    }
    const auto items = scene.makeAll(scene.root(), "mesh", names);
    Transform3d::transform3d(items.back())->translate(0, 1, 0);
    std::vector<Path> paths;
    for (const auto& item : items) {
        paths.push_back(item->path());
    }
    model.follow(nullptr);
    model.setItems(paths);
    EXPECT_TRUE(model.isReading());
    EXPECT_EQ(shown("translation"), "0, 0, 0");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !model.isReading(); }, 60000));
    EXPECT_EQ(shown("translation"), "mixed");
}

TEST_F(QtAttributes, EditorsTypeWhatUsersTypeAndSurviveTheItem)
{
    const auto cube = make("mesh", "cube");
    select({cube});
    QTreeView view;
    view.setModel(&model);
    view.setItemDelegate(new qt::AttributeDelegate(&view));
    view.expandAll();
    view.show();
    view.setCurrentIndex(value("translation"));
    view.edit(value("translation"));
    auto fields = view.viewport()->findChildren<QLineEdit*>();
    ASSERT_EQ(fields.size(), 3);
    fields[1]->setText("7");
    QTest::keyClick(fields[1], Qt::Key_Return);
    settle();
    EXPECT_EQ(shown("translation"), "0, 7, 0");

    view.edit(value("scale"));
    scene.remove(cube->path());
    settle();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(host.history->entries().size(), 1U);
}

TEST_F(QtAttributes, ModelsFollowRandomSelectionsAndEdits)
{
    test::Random random;
    std::vector<SceneItem::Ptr> items;
    for (const auto* type : {"mesh", "camera", "spotLight", "pointLight", "group", "mesh"}) {
        items.push_back(make(type, type + std::to_string(items.size())));
    }
    for (auto step = 0; step < 200; ++step) {
        const auto& item = random.of(items);
        switch (random.below(6)) {
        case 0:
            host.selection->append(item);
            break;
        case 1:
            host.selection->remove(item);
            break;
        case 2:
            Transform3d::transform3d(item)->translate(double(random.below(3)), 0, 0);
            break;
        case 3:
            Attributes::attributes(item)->addAttribute("Int", "count");
            break;
        case 4:
            host.history->undo();
            break;
        default:
            set("translation", "4, 5, 6");
        }
        settle();
    }
    runTime.reset();
    settle();
    EXPECT_EQ(model.rowCount(), 0);
}

/// A menu with an entry of each kind, whose commands tell what was chosen.
struct MenuOfAllKinds : ContextOps
{
    MenuOfAllKinds(SceneItem::Ptr shown, std::vector<std::string>& told)
        : item(std::move(shown)), chosen(told)
    {}
    SceneItem::Ptr sceneItem() const override { return item; }
    std::vector<ContextItem> items(const ItemPath& keys) const override
    {
        if (!keys.empty()) {
            return {{"low", "Low & fast", false, true, false, true, true},
                    {"high", "High", false, true, true, true, true}};
        }
        return {{"quality", "Quality", true, false, false, false, true},
                {ContextItem::SeparatorTag(), "more"},
                {"frame", "Frame", "frame", false, false, false, false, true},
                {"none", "None", false, false, false, false, false}};
    }
    UndoableCommand::Ptr doOpCmd(const ItemPath& keys) override
    {
        chosen.push_back(keys.back());
        return nullptr;
    }

    const SceneItem::Ptr item;
    std::vector<std::string>& chosen;
};

struct MenuHandler : ContextOpsHandler
{
    ContextOps::Ptr contextOps(const SceneItem::Ptr& item) override
    {
        return std::make_shared<MenuOfAllKinds>(item, chosen);
    }
    std::vector<std::string> chosen;
};

TEST_F(QtAttributes, MenusShowStatesAndOutliveTheirItem)
{
    const auto cube = make("mesh", "cube");
    const auto handler = std::make_shared<MenuHandler>();
    RunTimeMgr::instance().setContextOpsHandler(runTime->id(), handler);
    qt::ContextMenu menu(cube->path());
    const auto entries = menu.actions();
    ASSERT_EQ(entries.size(), 4);
    EXPECT_TRUE(entries[1]->isSeparator());
    EXPECT_FALSE(entries[2]->icon().isNull());
    EXPECT_FALSE(entries[3]->isEnabled());

    auto* quality = entries[0]->menu();
    ASSERT_NE(quality, nullptr);
    Q_EMIT quality->aboutToShow();
    ASSERT_EQ(quality->actions().size(), 2);
    EXPECT_EQ(quality->actions()[0]->text(), "Low && fast");
    EXPECT_TRUE(quality->actions()[1]->isChecked());
    EXPECT_EQ(quality->actions()[0]->actionGroup(), quality->actions()[1]->actionGroup());
    quality->actions()[0]->trigger();
    EXPECT_THAT(handler->chosen, ElementsAre("low"));

    scene.remove(cube->path());
    entries[2]->trigger();
    runTime.reset();
    entries[2]->trigger();
    EXPECT_THAT(handler->chosen, ElementsAre("low"));
}

} // namespace
