// Holds the model against Qt's own tester while the scene is edited at random, among 100 000
// siblings too. KIV_TEST_SEED repeats a run.
#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <exception>
#include <iostream>

#include "kiv/host/hostScene.h"

#include "outlinerModel.h"
#include "require.h"
#include "structureEditor.h"

namespace {

/// Opens as a user does: everything, and all the way down.
void fetchAll(OutlinerModel& model, const QModelIndex& top = {})
{
    for (std::vector<QPersistentModelIndex> open{top}; !open.empty();) {
        const QModelIndex index = open.back();
        open.pop_back();
        while (model.canFetchMore(index)) {
            model.fetchMore(index);
        }
        for (auto row = 0; row < model.rowCount(index); ++row) {
            open.emplace_back(model.index(row, 0, index));
        }
    }
}

void compareWithScene(OutlinerModel& model, const test::StructureEditor& editor)
{
    for (const auto& item : editor.items()) {
        const auto* node = model.tree().find(item->path());
        test::require(node != nullptr, "every item is a node");
        std::size_t row = 0;
        for (const auto& child : Kiv_v4::Hierarchy::hierarchy(item)->children()) {
            test::require(row < node->nbRows() && node->child(row).path() == child->path(),
                          "rows are the children");
            ++row;
        }
        test::require(row == node->nbRows(), "rows are no more than the children");
    }
}

void editAtRandom(int nbSteps, int nbSiblings)
{
    test::Random random;
    test::StructureEditor editor(random);
    OutlinerModel model;
    for (auto count = nbSiblings; count > 0; --count) {
        editor.model.make(editor.model.root(), "mesh", "sibling" + std::to_string(count));
    }
    fetchAll(model);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (auto step = 0; step < nbSteps; ++step) {
        editor.step();
        if (nbSiblings == 0 && step % 20 == 0) {
            fetchAll(model);
            compareWithScene(model, editor);
        }
    }
    fetchAll(model);
    compareWithScene(model, editor);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Kiv_v4::Scene::initializeInstance(std::make_shared<Kiv_v4::host::HostScene>());
    try {
        editAtRandom(4000, 0);
        editAtRandom(10, 100000);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    Kiv_v4::Scene::initializeInstance(nullptr);
    return 0;
}
