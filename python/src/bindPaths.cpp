#include <algorithm>

#include "bound.h"

namespace bound {

namespace {

kiv::PathComponent componentOf(const std::string& name)
{
    return kiv::PathComponent(name);
}

/// The order of paths in Python: by the names, component by component, so that an item stands
/// before what is below it; then by the run-times and separators of the segments.
int compared(const kiv::Path& left, const kiv::Path& right)
{
    const auto count = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < count; ++index) {
        if (const auto& [a, b] = std::pair(left.begin()[index], right.begin()[index]); a != b) {
            return a.string() < b.string() ? -1 : 1;
        }
    }
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    const auto marks = [](const kiv::Path& path) {
        std::vector<std::tuple<std::size_t, kiv::Rtid, char>> result;
        for (const auto& segment : path.getSegments()) {
            result.emplace_back(segment.size(), segment.runTimeId(), segment.separator());
        }
        return result;
    };
    const auto a = marks(left);
    const auto b = marks(right);
    return a == b ? 0 : a < b ? -1 : 1;
}

std::string text(const kiv::Path& path)
{
    return path.nbSegments() == 0 ? std::string() : kiv::PathString::string(path);
}

std::size_t indexOf(Py_ssize_t index, std::size_t size)
{
    const auto count = static_cast<Py_ssize_t>(size);
    const auto at = index < 0 ? index + count : index;
    if (at < 0 || at >= count) {
        throw nb::index_error("no such component");
    }
    return static_cast<std::size_t>(at);
}

template <class T>
std::vector<std::string> namesOf(const T& components)
{
    std::vector<std::string> names;
    for (const auto& component : components) {
        names.push_back(component.string());
    }
    return names;
}

void bindComponent(nb::module_& module)
{
    using kiv::PathComponent;
    Class<PathComponent> type(module, "PathComponent");
    type.def(nb::init<>());
    type.def(
        "__init__",
        [](PathComponent* self, const std::string& name) {
            new (self) PathComponent(componentOf(name));
        },
        "name"_a);
    type.function("exists", &PathComponent::exists, "name"_a);
    type.function("tableSize", &PathComponent::tableSize);
    type.function("toComponents", &PathComponent::toComponents, "names"_a);
    type.property("id", &PathComponent::id);
    type.property("string", &PathComponent::string);
    type.def("__str__", &PathComponent::string);
    type.def("__repr__", [](const PathComponent& self) {
        return self ? nb::str("PathComponent({!r})").format(self.string())
                    : nb::str("PathComponent()");
    });
    type.def("__bool__", [](const PathComponent& self) { return static_cast<bool>(self); });
    type.def("__hash__", &PathComponent::id);
    type.def(
        "__eq__",
        [](const PathComponent& self, const PathComponent& other) { return self == other; },
        nb::is_operator());
    type.def(
        "__lt__",
        [](const PathComponent& self, const PathComponent& other) {
            return self.string() < other.string();
        },
        nb::is_operator());
    nb::implicitly_convertible<std::string, PathComponent>();
}

void bindSegment(nb::module_& module)
{
    using kiv::PathSegment;
    Class<PathSegment> type(module, "PathSegment");
    type.def(nb::init<const std::string&, kiv::Rtid, char>(), "text"_a, "run_time_id"_a,
             "separator"_a);
    type.def(nb::init<const PathSegment::Components&, kiv::Rtid, char>(), "components"_a,
             "run_time_id"_a, "separator"_a);
    type.property("runTimeId", &PathSegment::runTimeId);
    type.property("separator", &PathSegment::separator);
    type.property("components", [](const PathSegment& self) { return self.components(); });
    type.property("string", &PathSegment::string);
    type.method("pop", &PathSegment::pop);
    type.method("popHead", &PathSegment::popHead);
    type.method("head", &PathSegment::head, "n"_a);
    type.def("__len__", &PathSegment::size);
    type.def("__iter__", [](const PathSegment& self) { return nb::iter(nb::cast(namesOf(self))); });
    type.def("__str__", &PathSegment::string);
    type.def("__repr__", [](const PathSegment& self) {
        return nb::str("PathSegment({!r}, {}, {!r})")
            .format(namesOf(self), self.runTimeId(), std::string(1, self.separator()));
    });
    type.def("__hash__", [](const PathSegment& self) { return kiv::Path(self).hash(); });
    type.def(
        "__eq__", [](const PathSegment& self, const PathSegment& other) { return self == other; },
        nb::is_operator());
}

void bindNames(Class<kiv::Path>& type)
{
    using kiv::Path;
    type.def("__len__", &Path::size);
    type.def("__bool__", [](const Path& self) { return !self.empty(); });
    type.def("__iter__", [](const Path& self) { return nb::iter(nb::cast(namesOf(self))); });
    type.def(
        "__getitem__",
        [](const Path& self, Py_ssize_t index) {
            return self.begin()[indexOf(index, self.size())].string();
        },
        "index"_a);
    type.def_prop_ro("names", &namesOf<Path>, "The names of the components.");
    type.def_prop_ro(
        "name", [](const Path& self) { return self.back().string(); }, "The last name.");
    type.def_prop_ro("components", [](const Path& self) {
        return std::vector<kiv::PathComponent>(self.begin(), self.end());
    });
}

void bindPath(nb::module_& module)
{
    using kiv::Path;
    Class<Path> type(module, "Path");
    type.def(nb::init<>());
    type.def(
        "__init__",
        [](Path* self, const std::string& pathText) {
            new (self) Path(pathText.empty() ? Path() : kiv::PathString::path(pathText));
        },
        "text"_a, "As `PathString.path`; an empty text gives the empty path.");
    type.def(nb::init<const kiv::PathSegment&>(), "segment"_a);
    type.def(nb::init<const Path::Segments&>(), "segments"_a);
    type.property("nbSegments", &Path::nbSegments);
    type.def_prop_ro(
        "segments", [](const Path& self) { return self.getSegments(); },
        contract("Path::getSegments"));
    type.property("runTimeId", &Path::runTimeId);
    type.method("back", &Path::back);
    type.method("pop", &Path::pop);
    type.method("popHead", &Path::popHead);
    type.method("popSegment", &Path::popSegment);
    type.method("head", &Path::head, "n"_a);
    type.method("sibling", &Path::sibling, "component"_a);
    type.method("replaceComponent", &Path::replaceComponent, "index"_a, "component"_a);
    type.method("reparent", &Path::reparent, "old_parent"_a, "new_parent"_a);
    type.method("startsWith", &Path::startsWith, "prefix"_a);
    type.method("isAtOrBelow", &Path::isAtOrBelow, "ancestor"_a);
    type.property("string", &Path::string);
    type.def_prop_ro("parent", &Path::pop, "The path without its last component, as `pop()`.");
    const auto plusComponent = [](const Path& self, const kiv::PathComponent& name) {
        return self + name;
    };
    const auto plusSegment = [](const Path& self, const kiv::PathSegment& segment) {
        return self + segment;
    };
    const auto* const joined = contract("Path::operator+");
    type.def("__truediv__", plusSegment, "segment"_a, joined, nb::is_operator());
    type.def("__truediv__", plusComponent, "name"_a, joined, nb::is_operator());
    type.def("__add__", plusSegment, "segment"_a, joined, nb::is_operator());
    type.def("__add__", plusComponent, "name"_a, joined, nb::is_operator());
    bindNames(type);
    type.def("__str__", &text);
    type.def("__repr__", [](const Path& self) { return nb::str("Path({!r})").format(text(self)); });
    type.def("__hash__", &Path::hash);
    type.def(
        "__eq__", [](const Path& self, const Path& other) { return self == other; },
        nb::is_operator());
    type.def(
        "__ne__", [](const Path& self, const Path& other) { return self != other; },
        nb::is_operator());
    type.def(
        "__lt__", [](const Path& self, const Path& other) { return compared(self, other) < 0; },
        nb::is_operator());
    type.def(
        "__le__", [](const Path& self, const Path& other) { return compared(self, other) <= 0; },
        nb::is_operator());
    type.def(
        "__gt__", [](const Path& self, const Path& other) { return compared(self, other) > 0; },
        nb::is_operator());
    type.def(
        "__ge__", [](const Path& self, const Path& other) { return compared(self, other) >= 0; },
        nb::is_operator());
    type.def("__getnewargs__", [](const Path& self) { return nb::make_tuple(text(self)); });
    type.def("__getstate__", [](const Path& self) { return text(self); });
    type.def("__setstate__", [](Path& self, const std::string& state) {
        new (&self) Path(state.empty() ? Path() : kiv::PathString::path(state));
    });
    nb::implicitly_convertible<std::string, Path>();
}

void bindPathString(nb::module_& module)
{
    using kiv::PathString;
    Class<PathString> type(module, "PathString");
    type.function("path", &PathString::path, "text"_a);
    type.function("string", &PathString::string, "path"_a);
    type.function("registerPathComponentSeparator", &PathString::registerPathComponentSeparator,
                  "run_time_id"_a, "separator"_a);
    type.function("unregisterPathComponentSeparator", &PathString::unregisterPathComponentSeparator,
                  "run_time_id"_a, "separator"_a);
    type.function("pathComponentSeparatorRunTimeIds", &PathString::pathComponentSeparatorRunTimeIds,
                  "separator"_a);
    type.function("pathSegmentSeparator", &PathString::pathSegmentSeparator);
    type.function("setPathSegmentSeparator", &PathString::setPathSegmentSeparator, "separator"_a);
    type.function("createPathFn", &PathString::createPathFn);
    type.function("setCreatePathFn", &PathString::setCreatePathFn, nb::arg("fn").none());
    type.function("createSingleSegmentPathFn", &PathString::createSingleSegmentPathFn,
                  "run_time_id"_a);
    type.function("setCreateSingleSegmentPathFn", &PathString::setCreateSingleSegmentPathFn,
                  "run_time_id"_a, nb::arg("fn").none());
    type.function("stringFn", &PathString::stringFn);
    type.function("setStringFn", &PathString::setStringFn, nb::arg("fn").none());
    static const auto createPath = PathString::createPathFn();
    static const auto string = PathString::stringFn();
    atExit([] {
        PathString::setCreatePathFn(createPath);
        PathString::setStringFn(string);
    });
}

using Trie = kiv::Trie<nb::object>;

int visitTrie(PyObject* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE(self));
    if (!nb::inst_ready(self)) {
        return 0;
    }
    std::vector<Trie::NodePtr> open{nb::inst_ptr<Trie>(self)->root()};
    while (!open.empty()) {
        const auto node = std::move(open.back());
        open.pop_back();
        Py_VISIT(node->data().ptr());
        for (const auto& component : node->childrenComponents()) {
            open.push_back((*node)[component]);
        }
    }
    return 0;
}

int clearTrie(PyObject* self)
{
    if (nb::inst_ready(self)) {
        nb::inst_ptr<Trie>(self)->clear();
    }
    return 0;
}

PyType_Slot kTrieSlots[] = {
    {Py_tp_traverse, reinterpret_cast<void*>(&visitTrie)},
    {Py_tp_clear, reinterpret_cast<void*>(&clearTrie)},
    {0, nullptr},
};

/// The index of paths with any Python object as the data of each.
void bindTrie(nb::module_& module)
{
    Class<Trie> type(module, "Trie", "Trie", nb::type_slots(kTrieSlots));
    type.def(nb::init<>());
    const auto data = [](const Trie::NodePtr& node) { return node ? node->data() : nb::none(); };
    type.method(
        "add", [](Trie& self, const kiv::Path& path, nb::object value) { self.add(path, value); },
        "path"_a, nb::arg("data").none());
    type.method(
        "remove", [](Trie& self, const kiv::Path& path) { return self.remove(path) != nullptr; },
        "path"_a);
    type.method(
        "find", [data](const Trie& self, const kiv::Path& path) { return data(self.find(path)); },
        "path"_a);
    type.method(
        "move",
        [](Trie& self, const kiv::Path& oldPath, const kiv::Path& newPath) {
            return self.move(oldPath, newPath) != nullptr;
        },
        "old_path"_a, "new_path"_a);
    type.method("contains", &Trie::contains, "path"_a);
    type.def("__contains__", &Trie::contains);
    type.method("containsDescendant", &Trie::containsDescendant, "path"_a);
    type.method("containsDescendantInclusive", &Trie::containsDescendantInclusive, "path"_a);
    type.method("containsAncestor", &Trie::containsAncestor, "path"_a);
    type.method("containsAncestorInclusive", &Trie::containsAncestorInclusive, "path"_a);
    type.method("dataUnder", &Trie::dataUnder, "path"_a);
    type.method("closestCommonAncestor", &Trie::closestCommonAncestor);
    type.method("clear", &Trie::clear);
    type.def("__len__", &Trie::size, contract("Trie::size"));
    type.def("__bool__", [](const Trie& self) { return !self.empty(); });
}

void bindPathTexts(nb::module_& module)
{
    function(module, "", "lstrip", &kiv::lstrip, "text"_a, "character"_a);
    function(module, "", "split",
             nb::overload_cast<const std::string&, const std::string&>(&kiv::split), "text"_a,
             "separator"_a);
    function(module, "", "endsWith", &kiv::endsWith, "text"_a, "suffix"_a);
    function(module, "", "uniqueName", &kiv::uniqueName, "name"_a, "is_taken"_a);
}

} // namespace

void bindPaths(nb::module_& module)
{
    bindComponent(module);
    bindSegment(module);
    bindPath(module);
    bindPathString(module);
    bindTrie(module);
    bindPathTexts(module);
}

} // namespace bound
