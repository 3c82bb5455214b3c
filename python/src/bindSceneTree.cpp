#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kiv/host/sceneTree.h"
#include "kiv/log.h"

#include "lifetimes.h"

namespace bound {

namespace {

namespace host = kiv::host;
using kiv::Path;
using Node = host::SceneTree::Node;

class Outliner;

/// A node as Python keeps it, longer than the tree does.
class NodeHandle
{
public:
    using Ptr = std::shared_ptr<NodeHandle>;

    NodeHandle(Outliner& tree, Node& node) : _tree(&tree), _node(&node) {}
    NodeHandle(const NodeHandle&) = delete;
    NodeHandle& operator=(const NodeHandle&) = delete;
    ~NodeHandle();

    [[nodiscard]] bool isValid() const noexcept { return _node != nullptr; }
    void invalidate() noexcept { _node = nullptr; }

    /// Throws when the node is gone.
    [[nodiscard]] Node& node() const
    {
        if (!_node) {
            throw std::logic_error("the node is no longer in a tree");
        }
        return *_node;
    }

    /// The handle of a node of the same tree; null for null.
    [[nodiscard]] Ptr other(const Node* node) const;

private:
    Outliner* const _tree; ///< Good while the node is.
    Node* _node;
};

/// The listeners that Python derives from. C++ calls their methods by name.
struct PythonListener
{};

/// A tree whose listeners and nodes Python may keep.
class Outliner : public Calling, private host::SceneTree::Listener
{
public:
    Outliner() { _tree.addListener(*this); }
    Outliner(const Outliner&) = delete;
    Outliner& operator=(const Outliner&) = delete;
    ~Outliner() override { end(); }

    [[nodiscard]] host::SceneTree& tree() noexcept { return _tree; }
    [[nodiscard]] std::vector<nb::object>& listeners() noexcept { return _listeners; }

    [[nodiscard]] NodeHandle::Ptr handle(const Node* node)
    {
        if (!node) {
            return nullptr;
        }
        auto& known = _handles[node];
        auto handle = known.lock();
        if (!handle) {
            handle = std::make_shared<NodeHandle>(*this, const_cast<Node&>(*node));
            known = handle;
        }
        return handle;
    }

    void forget(const Node* node) { _handles.erase(node); }

    /// Calls nobody any more, and ends all nodes.
    void end()
    {
        _listeners.clear();
        for (const auto& [node, known] : std::exchange(_handles, {})) {
            invalidate(known);
        }
    }

private:
    static void invalidate(const std::weak_ptr<NodeHandle>& known)
    {
        if (const auto handle = known.lock()) {
            handle->invalidate();
        }
    }

    /// The rows must be changed to the end whatever a listener does: what it raises is logged.
    template <class... Arguments>
    void tell(const char* method, const Arguments&... arguments)
    {
        const nb::gil_scoped_acquire held;
        const Call call(*this);
        for (const auto& listener : std::vector(_listeners)) {
            try {
                listener.attr(method)(arguments...);
            } catch (const std::exception& error) {
                kiv::log(method, __FILE__, __LINE__,
                         std::string("caught exception ") + error.what() + '\n');
            }
        }
    }

    void beginInsert(const Node& parent, std::size_t first, std::size_t count) override
    {
        tell("begin_insert", handle(&parent), first, count);
    }
    void endInsert() override { tell("end_insert"); }

    void beginRemove(const Node& parent, std::size_t first, std::size_t count) override
    {
        tell("begin_remove", handle(&parent), first, count);
        std::vector<const Node*> open;
        for (; count > 0; --count) {
            open.push_back(&parent.child(first++));
        }
        while (!open.empty()) {
            const auto* const node = open.back();
            open.pop_back();
            _leaving.push_back(node);
            for (std::size_t row = 0; row < node->nbRows(); ++row) {
                open.push_back(&node->child(row));
            }
        }
    }
    void endRemove() override
    {
        for (const auto* const node : std::exchange(_leaving, {})) {
            const auto known = _handles.find(node);
            if (known != _handles.end()) {
                invalidate(known->second);
                _handles.erase(known);
            }
        }
        tell("end_remove");
    }

    void beginMove(const Node& node, const Node& newParent, std::size_t newRow) override
    {
        tell("begin_move", handle(&node), handle(&newParent), newRow);
    }
    void endMove() override { tell("end_move"); }

    void changed(const Node& node) override { tell("changed", handle(&node)); }

    std::vector<nb::object> _listeners;
    std::unordered_map<const Node*, std::weak_ptr<NodeHandle>> _handles;
    std::vector<const Node*> _leaving; ///< In the removal that is under way.
    host::SceneTree _tree;
};

NodeHandle::~NodeHandle()
{
    if (_node) {
        _tree->forget(_node);
    }
}

NodeHandle::Ptr NodeHandle::other(const Node* node) const
{
    return _tree->handle(node);
}

using Tree = Closable<Outliner>;

int visitTree(PyObject* self, visitproc visit, void* arg)
{
    Py_VISIT(Py_TYPE(self));
    if (nb::inst_ready(self) && nb::inst_ptr<Tree>(self)->isOpen()) {
        for (const auto& listener : (*nb::inst_ptr<Tree>(self))->listeners()) {
            Py_VISIT(listener.ptr());
        }
    }
    return 0;
}

int clearTree(PyObject* self)
{
    if (nb::inst_ready(self)) {
        nb::inst_ptr<Tree>(self)->close();
    }
    return 0;
}

PyType_Slot kTreeSlots[] = {
    {Py_tp_traverse, reinterpret_cast<void*>(&visitTree)},
    {Py_tp_clear, reinterpret_cast<void*>(&clearTree)},
    {0, nullptr},
};

void bindNode(nb::handle scope)
{
    Class<NodeHandle> type(scope, "Node", "host::SceneTree::Node");
    type.property("item", [](const NodeHandle& self) { return self.node().item(); });
    type.property("path", [](const NodeHandle& self) { return self.node().path(); });
    type.property("name", [](const NodeHandle& self) { return self.node().name(); });
    type.property("parent",
                  [](const NodeHandle& self) { return self.other(self.node().parent()); });
    type.property("row", [](const NodeHandle& self) { return self.node().row(); });
    type.property("nbRows", [](const NodeHandle& self) { return self.node().nbRows(); });
    const auto child = [](const NodeHandle& self, std::size_t row) {
        if (row >= self.node().nbRows()) {
            throw nb::index_error("no such row");
        }
        return self.other(&self.node().child(row));
    };
    type.method("child", child, "row"_a);
    type.def(
        "__iter__",
        [child](const NodeHandle& self) {
            nb::list rows;
            for (std::size_t row = 0; row < self.node().nbRows(); ++row) {
                rows.append(child(self, row));
            }
            return nb::iter(rows);
        },
        "The nodes in its rows.");
    type.def_prop_ro("is_valid", &NodeHandle::isValid,
                     "Whether it is still in its tree. Once it is not, using it raises "
                     "`RuntimeError`.");
    type.def("__repr__", [](const NodeHandle& self) {
        return nb::str("<SceneTree.Node {!r}>")
            .format(self.isValid() ? nb::cast(self.node().path()) : nb::none());
    });
}

void bindListener(nb::handle scope)
{
    Class<PythonListener> type(scope, "Listener", "host::SceneTree::Listener");
    type.def(nb::init<>());
    const auto onRows = [](PythonListener&, const NodeHandle::Ptr&, std::size_t, std::size_t) {};
    const auto atEnd = [](PythonListener&) {};
    type.method("beginInsert", onRows, "parent"_a, "first"_a, "count"_a);
    type.method("endInsert", atEnd);
    type.method("beginRemove", onRows, "parent"_a, "first"_a, "count"_a);
    type.method("endRemove", atEnd);
    type.method(
        "beginMove",
        [](PythonListener&, const NodeHandle::Ptr&, const NodeHandle::Ptr&, std::size_t) {},
        "node"_a, "new_parent"_a, "new_row"_a);
    type.method("endMove", atEnd);
    type.method(
        "changed", [](PythonListener&, const NodeHandle::Ptr&) {}, "node"_a);
}

} // namespace

void bindSceneTree(nb::module_& module)
{
    auto type =
        bindClosable<Outliner>(module, "SceneTree", "host::SceneTree", nb::type_slots(kTreeSlots));
    bindNode(type);
    bindListener(type);
    const auto of = [](const char* name) {
        return contract(std::string("host::SceneTree::") + name);
    };
    type.attr("FETCH_ALL") = host::SceneTree::kFetchAll;
    type.def(nb::init<>());
    type.def_prop_ro(
        "root", [](Tree& self) { return self->handle(&self->tree().root()); }, of("root"));
    type.def(
        "find", [](Tree& self, const Path& path) { return self->handle(self->tree().find(path)); },
        "path"_a, of("find"));
    type.def(
        "reveal",
        [](Tree& self, const Path& path) { return self->handle(self->tree().reveal(path)); },
        "path"_a, of("reveal"));
    type.def(
        "can_fetch",
        [](Tree& self, const NodeHandle& node) { return self->tree().canFetch(node.node()); },
        "node"_a, of("canFetch"));
    type.def(
        "fetch",
        [](Tree& self, const NodeHandle& node, std::size_t count) {
            self->tree().fetch(node.node(), count);
        },
        "node"_a, "count"_a = std::size_t{host::SceneTree::kFetchAll}, of("fetch"));
    type.def_prop_rw(
        "filter", [](Tree& self) { return self->tree().filter(); },
        [](Tree& self, const kiv::ChildFilter& filter) { self->tree().setFilter(filter); },
        of("setFilter"));
    type.def(
        "refresh", [](Tree& self) { self->tree().refresh(); }, of("refresh"));
    type.def(
        "add_listener",
        [](Tree& self, nb::handle_t<PythonListener> listener) {
            self->listeners().push_back(nb::borrow(listener));
        },
        "listener"_a,
        "Tells the listener of every change, until `remove_listener` or the end of the tree, which "
        "keeps it. What it raises reaches the error channels.");
    type.def(
        "remove_listener",
        [](Tree& self, nb::handle_t<PythonListener> listener) {
            std::erase_if(self->listeners(),
                          [&](const nb::object& each) { return each.is(listener); });
        },
        "listener"_a, "Tells the listener nothing any more.");
}

} // namespace bound
