#include "lifetimes.h"
#include "observers.h"
#include "overrides.h"

namespace bound {

namespace {

using kiv::ObservableSelection;
using kiv::SceneItem;
using kiv::Selection;

std::vector<SceneItem::Ptr> itemsOf(const Selection& selection)
{
    return {selection.begin(), selection.end()};
}

/// An item of that path whose type nobody knows: what a path stands for in `remove`.
class PathItem : public SceneItem
{
public:
    using SceneItem::SceneItem;
    [[nodiscard]] std::string nodeType() const override { return {}; }
};

SceneItem::Ptr at(const Selection& selection, Py_ssize_t index)
{
    const auto count = static_cast<Py_ssize_t>(selection.size());
    const auto row = index < 0 ? index + count : index;
    if (row < 0 || row >= count) {
        throw nb::index_error("no such item");
    }
    return row < count / 2 ? *std::next(selection.begin(), row)
                           : *std::next(selection.rbegin(), count - 1 - row);
}

std::vector<std::string> textsOf(const Selection& selection)
{
    std::vector<std::string> texts;
    texts.reserve(selection.size());
    for (const auto& item : selection) {
        texts.push_back(kiv::PathString::string(item->path()));
    }
    return texts;
}

/// The items of the texts, made by their run-times; those that name nothing are left out.
std::size_t appendTexts(Selection& selection, const std::vector<std::string>& texts)
{
    std::size_t count = 0;
    for (const auto& text : texts) {
        const auto path = kiv::PathString::path(text);
        if (!selection.contains(path)) {
            const auto item = kiv::Hierarchy::createItem(path);
            count += item && selection.append(item) ? 1 : 0;
        }
    }
    return count;
}

void bindQueries(Class<Selection>& type)
{
    type.def("__len__", &Selection::size);
    type.def("__bool__", [](const Selection& self) { return !self.empty(); });
    type.def("__contains__", [](const Selection& self, const SceneItem& item) {
        return self.contains(item.path());
    });
    type.def("__contains__", &Selection::contains);
    type.def(
        "__iter__", [](const Selection& self) { return nb::iter(nb::cast(itemsOf(self))); },
        "The items as they are now: the selection may be changed meanwhile.");
    type.def("__reversed__", [](const Selection& self) {
        return nb::iter(nb::cast(std::vector<SceneItem::Ptr>(self.rbegin(), self.rend())));
    });
    type.def("__getitem__", &at, "index"_a, "Linear in the distance from the nearer end.");
    type.def(
        "__getitem__",
        [](const Selection& self, const nb::slice& slice) {
            return nb::object(nb::cast(itemsOf(self))[slice]);
        },
        "slice"_a, nb::sig("def __getitem__(self, slice: slice, /) -> list[SceneItem]"));
    type.method("contains", &Selection::contains, "path"_a);
    type.method("containsAncestor", &Selection::containsAncestor, "path"_a);
    type.method("containsAncestorInclusive", &Selection::containsAncestorInclusive, "path"_a);
    type.method("containsDescendant", &Selection::containsDescendant, "path"_a);
    type.method("containsDescendantInclusive", &Selection::containsDescendantInclusive, "path"_a);
    type.method("itemsUnder", &Selection::itemsUnder, "path"_a);
    type.method("closestCommonAncestor", &Selection::closestCommonAncestor);
    type.method("next", &Selection::next, "item"_a);
    type.def_prop_ro(
        "front", [](const Selection& self) { return at(self, 0); }, contract("Selection::front"));
    type.def_prop_ro(
        "back", [](const Selection& self) { return at(self, -1); }, contract("Selection::back"));
    type.def_prop_ro("path_texts", &textsOf, "The texts of all paths, in order, in one call.");
    type.def(
        "__eq__",
        [](const Selection& self, const Selection& other) {
            return std::equal(self.begin(), self.end(), other.begin(), other.end(),
                              [](const auto& a, const auto& b) { return *a == *b; });
        },
        nb::is_operator());
    type.def("__repr__", [](nb::handle self) {
        return nb::str("{}({})").format(self.type().attr("__name__"), self.attr("path_texts"));
    });
}

void bindChanges(Class<Selection>& type)
{
    type.method("append", &Selection::append, "item"_a);
    type.method("remove", &Selection::remove, "item"_a);
    type.method(
        "remove",
        [](Selection& self, const kiv::Path& path) {
            return self.remove(std::make_shared<PathItem>(path));
        },
        "path"_a);
    type.method("insert", &Selection::insert, "position"_a.none(), "item"_a);
    type.method("clear", &Selection::clear);
    type.method("replaceWith", &Selection::replaceWith, "other"_a);
    type.method("doAppend", &Selection::doAppend, "item"_a);
    type.method("doRemove", &Selection::doRemove, "item"_a);
    type.method("doInsert", &Selection::doInsert, "position"_a.none(), "item"_a);
    type.method("doClear", &Selection::doClear);
    type.method("doReplaceWith", &Selection::doReplaceWith, "other"_a);
    type.def(
        "extend",
        [](Selection& self, const std::vector<SceneItem::Ptr>& items) {
            std::size_t count = 0;
            for (const auto& item : items) {
                count += self.append(item) ? 1 : 0;
            }
            return count;
        },
        "items"_a, "Appends each item, as `append`; returns how many were not selected before.");
    type.def("extend_texts", &appendTexts, "texts"_a,
             "Appends the items at the paths of these texts, as `extend`. Texts that name nothing "
             "are left out.");
    const auto without = [](const Selection& self, const Selection& other, bool common) {
        Selection result;
        for (const auto& item : self) {
            if (other.contains(item->path()) == common) {
                result.append(item);
            }
        }
        return result;
    };
    type.def(
        "__or__",
        [](const Selection& self, const Selection& other) {
            Selection result(self);
            for (const auto& item : other) {
                result.append(item);
            }
            return result;
        },
        nb::is_operator(), "The items of both, those of this one first.");
    type.def(
        "__and__",
        [without](const Selection& self, const Selection& other) {
            return without(self, other, true);
        },
        nb::is_operator(), "The items that both have, in the order of this one.");
    type.def(
        "__sub__",
        [without](const Selection& self, const Selection& other) {
            return without(self, other, false);
        },
        nb::is_operator(), "The items of this one that the other has not.");
    type.def("__copy__", [](const Selection& self) { return Selection(self); });
}

void bindSelection(nb::module_& module)
{
    Class<Selection> type(module, "Selection");
    type.def(
        "__init__",
        [](Selection* self, const std::vector<SceneItem::Ptr>& items) {
            makeEmptied(self);
            for (const auto& item : items) {
                self->append(item);
            }
        },
        "items"_a = std::vector<SceneItem::Ptr>());
    bindQueries(type);
    bindChanges(type);

    Class<ObservableSelection, Selection> observable(module, "ObservableSelection");
    observable.def("__init__", [](ObservableSelection* self) { makeEmptied(self); });
    observable.def(
        "__init__",
        [](ObservableSelection* self, const Selection& other) { makeEmptied(self, other); },
        "other"_a);
    bindSubjectMembers<ObservableSelection>(observable);
}

std::set<std::string>& namedSelections()
{
    static std::set<std::string> names;
    return names;
}

void bindPlaces(nb::module_& module)
{
    using kiv::GlobalSelection;
    Class<GlobalSelection> global(module, "GlobalSelection");
    global.function("initializeInstance", &GlobalSelection::initializeInstance,
                    "selection"_a.none());
    global.function("get", &GlobalSelection::get);
    atExit([] { GlobalSelection::initializeInstance(nullptr); });
    using kiv::NamedSelection;
    Class<NamedSelection> named(module, "NamedSelection");
    named.function(
        "get",
        [](const std::string& name) {
            namedSelections().insert(name);
            return NamedSelection::get(name);
        },
        "name"_a);
    named.function("remove", &NamedSelection::remove, "name"_a);
    atExit([] {
        for (const auto& name : std::exchange(namedSelections(), {})) {
            NamedSelection::remove(name);
        }
    });
}

void bindSelectionCommands(nb::module_& module)
{
    using kiv::UndoableCommand;
    const auto bindOfItem = [&]<class T>(T*, const char* name) {
        Class<T, UndoableCommand> type(module, name);
        type.def(nb::init<const ObservableSelection::Ptr&, const SceneItem::Ptr&>(), "selection"_a,
                 "item"_a);
        type.function("createAndExecute", &T::createAndExecute, "selection"_a, "item"_a);
    };
    bindOfItem(static_cast<kiv::SelectionAppendItem*>(nullptr), "SelectionAppendItem");
    bindOfItem(static_cast<kiv::SelectionRemoveItem*>(nullptr), "SelectionRemoveItem");
    Class<kiv::SelectionClear, UndoableCommand> clear(module, "SelectionClear");
    clear.def(nb::init<const ObservableSelection::Ptr&>(), "selection"_a);
    clear.function("createAndExecute", &kiv::SelectionClear::createAndExecute, "selection"_a);
    Class<kiv::SelectionReplaceWith, UndoableCommand> replace(module, "SelectionReplaceWith");
    replace.def(nb::init<const ObservableSelection::Ptr&, const Selection&>(), "selection"_a,
                "replacement"_a);
    replace.function("createAndExecute", &kiv::SelectionReplaceWith::createAndExecute,
                     "selection"_a, "replacement"_a);
}

} // namespace

void bindSelections(nb::module_& module)
{
    bindSelection(module);
    bindPlaces(module);
}

void bindSelectionSteps(nb::module_& module)
{
    bindSelectionCommands(module);
}

} // namespace bound
