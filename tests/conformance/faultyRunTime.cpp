#include "faultyRunTime.h"

#include <algorithm>
#include <functional>
#include <list>
#include <map>
#include <stdexcept>

#include "kiv/kiv.h"

using namespace Kiv_v4;

namespace test {

namespace {

struct Node
{
    std::string name;
    int size = 1;
    Vector3d place{{1, 2, 3}};
    std::list<Node> children{};
};

/// Does and undoes by functions.
class Command : public SceneItemResultUndoableCommand
{
public:
    Command(
        std::function<void()> redo, std::function<void()> undo,
        std::function<SceneItem::Ptr()> item = [] { return nullptr; })
        : _redo(std::move(redo)), _undo(std::move(undo)), _item(std::move(item))
    {}

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item(); }
    void redo() override { _redo(); }
    void undo() override { _undo(); }

private:
    const std::function<void()> _redo;
    const std::function<void()> _undo;
    const std::function<SceneItem::Ptr()> _item;
};

class NodeItem : public SceneItem
{
public:
    using SceneItem::SceneItem;

    [[nodiscard]] std::string nodeType() const override { return "node"; }
};

template <class Change, class... Arguments>
void announce(const Arguments&... arguments)
{
    if (Scene::hasInstance()) {
        Scene::instance().notify(Change(arguments...));
    }
}

} // namespace

using NodesPtr = std::shared_ptr<Nodes>;

/// The data, found by path.
class Nodes : public std::enable_shared_from_this<Nodes>
{
public:
    Nodes(Rtid id, Fault wrong) : fault(wrong), root(PathSegment("top", id, '%')) {}

    Node* find(const Path& path)
    {
        if (path.nbSegments() != 1 || !path.startsWith(root) ||
            path.runTimeId() != root.runTimeId()) {
            return nullptr;
        }
        auto* node = &top;
        for (auto name = path.begin() + 1; node && name != path.end(); ++name) {
            const auto child = named(*node, name->string());
            node = child == node->children.end() ? nullptr : &*child;
        }
        return node;
    }

    Node& existing(const Path& path)
    {
        auto* node = find(path);
        return node ? *node : throw std::invalid_argument("no such item");
    }

    static std::list<Node>::iterator named(Node& parent, const std::string& name)
    {
        return std::find_if(parent.children.begin(), parent.children.end(),
                            [&](const Node& child) { return child.name == name; });
    }

    SceneItem::Ptr item(const Path& path)
    {
        const auto old = dangling.find(path);
        return find(path)              ? std::make_shared<NodeItem>(path)
               : old != dangling.end() ? old->second
                                       : nullptr;
    }

    std::string fit(Node& parent, std::string name, const Node* own)
    {
        if (fault != Fault::NameWithSeparator) {
            name.erase(std::remove_if(name.begin(), name.end(),
                                      [](char c) { return c == '%' || c == ','; }),
                       name.end());
        }
        return uniqueName(name.empty() ? "node" : name, [&](const std::string& wanted) {
            return std::any_of(
                parent.children.begin(), parent.children.end(),
                [&](const Node& child) { return child.name == wanted && &child != own; });
        });
    }

    void rename(const Path& from, const Path& to)
    {
        if (from == to) {
            return;
        }
        if (fault == Fault::DanglingItemAfterRename) {
            dangling[from] = item(from);
        }
        existing(from).name = to.back().string();
        if (fault != Fault::NoNotification) {
            announce<ObjectRename>(item(to),
                                   fault == Fault::WrongPathInTheNotification ? to : from);
        }
    }

    void leave(const Path& path, std::list<Node>& out, std::string& next)
    {
        auto& siblings = existing(path.pop()).children;
        const auto old = item(path);
        const auto node = named(existing(path.pop()), path.back().string());
        if (fault == Fault::NotificationBeforeTheChange) {
            announce<ObjectPostDelete>(old);
        }
        const auto after = std::next(node);
        next = after == siblings.end() ? std::string() : after->name;
        out.splice(out.end(), siblings, node);
        if (fault != Fault::NotificationBeforeTheChange) {
            announce<ObjectPostDelete>(old);
        }
    }

    void enter(const Path& path, std::list<Node>& out, const std::string& next)
    {
        auto& parent = existing(path.pop());
        parent.children.splice(
            fault == Fault::UndoLosesTheOrder ? parent.children.end() : named(parent, next), out);
        announce<ObjectAdd>(item(path));
    }

    const Fault fault;
    const Path root;
    Node top{"top", 1, {{1, 2, 3}}, {{"a", 1, {{1, 2, 3}}, {{"x"}, {"y"}, {"z"}}}, {"b"}, {"c"}}};
    std::map<Path, SceneItem::Ptr, bool (*)(const Path&, const Path&)> dangling{
        [](const Path& a, const Path& b) { return a.hash() < b.hash(); }};
    int nbAsked = 0;
};

namespace {

class NodeHierarchy : public Hierarchy
{
public:
    NodeHierarchy(NodesPtr nodes, SceneItem::Ptr item)
        : _nodes(std::move(nodes)), _item(std::move(item))
    {}

    SceneItem::Ptr sceneItem() const override { return _item; }
    bool hasChildren() const override { return !children().empty(); }
    bool hasFilteredChildren(const ChildFilter&) const override { return hasChildren(); }
    SceneItemList filteredChildren(const ChildFilter&) const override { return children(); }
    ChildFilter defaultChildFilter() const override { return {}; }
    SceneItem::Ptr defaultParent() const override { return _item; }

    SceneItemList children() const override
    {
        const auto* node = _nodes->find(_item->path());
        SceneItemList items;
        if (!node && _nodes->fault != Fault::CrashOnStalePath) {
            return items;
        }
        for (const auto& child : node->children) {
            items.push_back(_nodes->item(_item->path() + child.name));
        }
        if (_nodes->fault == Fault::OrderChangesByItself && ++_nodes->nbAsked % 5 == 0) {
            items.reverse();
        }
        return items;
    }

    SceneItem::Ptr parent() const override
    {
        const auto& path = _item->path();
        return path.size() < 2                           ? nullptr
               : _nodes->fault == Fault::ParentIsAnother ? _nodes->item(_nodes->root)
                                                         : _nodes->item(path.pop());
    }

    SceneItemResultUndoableCommand::Ptr createChildCmd(const std::string& type,
                                                       const PathComponent& name) override
    {
        if (type != "node" || !_nodes->find(_item->path())) {
            return nullptr;
        }
        const auto out = std::make_shared<std::list<Node>>(1, Node{"", 1, {}, {}});
        const auto path = std::make_shared<Path>();
        const auto next = std::make_shared<std::string>();
        return std::make_shared<Command>(
            [=, nodes = _nodes, parent = _item->path()] {
                if (path->empty()) {
                    out->front().name = nodes->fit(nodes->existing(parent), name.string(), nullptr);
                    *path = parent + out->front().name;
                }
                nodes->enter(*path, *out, *next);
            },
            [=, nodes = _nodes] { nodes->leave(*path, *out, *next); },
            [=, nodes = _nodes] { return nodes->item(*path); });
    }

    UndoableCommand::Ptr reorderCmd(const SceneItemList& order) override
    {
        auto* node = _nodes->find(_item->path());
        if (!node || order.size() != node->children.size()) {
            return nullptr;
        }
        std::vector<std::string> before;
        for (const auto& child : node->children) {
            before.push_back(child.name);
        }
        std::vector<std::string> after;
        for (const auto& item : order) {
            after.push_back(item->nodeName());
        }
        const auto arrange = [nodes = _nodes, path = _item->path()](const auto& names) {
            auto& parent = nodes->existing(path);
            for (const auto& name : names) {
                parent.children.splice(parent.children.end(), parent.children,
                                       Nodes::named(parent, name));
            }
            announce<SubtreeInvalidate>(nodes->item(path));
        };
        return std::make_shared<Command>([=] { arrange(after); }, [=] { arrange(before); });
    }

    InsertChildCommand::Ptr insertChildCmd(const SceneItem::Ptr&, const SceneItem::Ptr&) override
    {
        return nullptr;
    }

    SceneItemResultUndoableCommand::Ptr createGroupCmd(const SceneItemList&,
                                                       const PathComponent&) override
    {
        return nullptr;
    }

    UndoableCommand::Ptr ungroupCmd() override { return nullptr; }

private:
    const NodesPtr _nodes;
    const SceneItem::Ptr _item;
};

class NodeOps : public SceneItemOps
{
public:
    NodeOps(NodesPtr nodes, SceneItem::Ptr item) : _nodes(std::move(nodes)), _item(std::move(item))
    {}

    void setItem(const SceneItem::Ptr& item) override { _item = item; }
    SceneItem::Ptr sceneItem() const override { return _item; }
    Path path() const override { return _item->path(); }
    SceneItemResultUndoableCommand::Ptr duplicateItemCmd() override { return nullptr; }
    Duplicate duplicateItem() override { return {}; }
    PathComponent validName(const PathComponent& name) const override { return name; }
    bool deleteItem() override { return false; }
    Rename renameItem(const PathComponent&) override { return {}; }

    UndoableCommand::Ptr deleteItemCmd() override
    {
        if (!_nodes->find(path()) || path().size() < 2) {
            return nullptr;
        }
        const auto out = std::make_shared<std::list<Node>>();
        const auto next = std::make_shared<std::string>();
        const auto nbRuns = std::make_shared<int>();
        return std::make_shared<Command>(
            [=, nodes = _nodes, path = path()] {
                if (nodes->fault != Fault::RedoForgets || ++*nbRuns < 2) {
                    nodes->leave(path, *out, *next);
                }
            },
            [=, nodes = _nodes, path = path()] { nodes->enter(path, *out, *next); });
    }

    SceneItemResultUndoableCommand::Ptr renameItemCmd(const PathComponent& name) override
    {
        const auto* node = _nodes->find(path());
        if (!node || path().size() < 2) {
            return nullptr;
        }
        const auto to = std::make_shared<Path>();
        return std::make_shared<Command>(
            [=, nodes = _nodes, from = path()] {
                if (to->empty()) {
                    *to = from.sibling(
                        nodes->fit(nodes->existing(from.pop()), name.string(), nodes->find(from)));
                }
                nodes->rename(from, *to);
            },
            [=, nodes = _nodes, from = path()] {
                if (nodes->fault == Fault::ExceptionFromUndo) {
                    throw std::runtime_error("cannot be undone");
                }
                nodes->rename(*to, from);
            },
            [=, nodes = _nodes] { return nodes->item(*to); });
    }

private:
    const NodesPtr _nodes;
    SceneItem::Ptr _item;
};

class SizeAttribute : public AttributeInt
{
public:
    SizeAttribute(NodesPtr nodes, const SceneItem::Ptr& item)
        : AttributeInt(item), _nodes(std::move(nodes))
    {}

    bool hasValue() const override { return _nodes->find(sceneItem()->path()) != nullptr; }
    std::string name() const override { return "size"; }
    std::string displayName() const override { return "Size"; }
    std::string string() const override
    {
        return !hasValue()                                   ? ""
               : _nodes->fault == Fault::TextDoesNotComeBack ? "1"
                                                             : std::to_string(get());
    }
    int get() const override { return _nodes->existing(sceneItem()->path()).size; }
    void set(const int& value) override
    {
        _nodes->existing(sceneItem()->path()).size = value;
        Attributes::notify(AttributeChanged(sceneItem()->path(), name()));
    }
    Value metadata(const std::string&) const override { return {}; }
    bool hasMetadata(const std::string&) const override { return false; }
    bool setMetadata(const std::string&, const Value&) override { return false; }
    bool clearMetadata(const std::string&) override { return false; }

private:
    const NodesPtr _nodes;
};

class NodeAttributes : public Attributes
{
public:
    NodeAttributes(NodesPtr nodes, SceneItem::Ptr item)
        : _nodes(std::move(nodes)), _item(std::move(item))
    {}

    SceneItem::Ptr sceneItem() const override { return _item; }
    std::string attributeType(const std::string& name) const override
    {
        return hasAttribute(name) ? Attribute::kInt : Attribute::kInvalid;
    }
    Attribute::Ptr attribute(const std::string& name) override
    {
        return hasAttribute(name) ? std::make_shared<SizeAttribute>(_nodes, _item) : nullptr;
    }
    std::vector<std::string> attributeNames() const override { return {"size"}; }
    bool hasAttribute(const std::string& name) const override { return name == "size"; }
    AttributeResultUndoableCommand::Ptr addAttributeCmd(const std::string&,
                                                        const std::string&) override
    {
        return nullptr;
    }
    UndoableCommand::Ptr removeAttributeCmd(const std::string&) override { return nullptr; }
    AttributeResultUndoableCommand::Ptr renameAttributeCmd(const std::string&,
                                                           const std::string&) override
    {
        return nullptr;
    }

private:
    const NodesPtr _nodes;
    const SceneItem::Ptr _item;
};

/// Places and nothing else.
class NodeTransform : public Transform3d
{
public:
    NodeTransform(NodesPtr nodes, SceneItem::Ptr item)
        : _nodes(std::move(nodes)), _item(std::move(item))
    {}

    const Path& path() const override { return _item->path(); }
    SceneItem::Ptr sceneItem() const override { return _item; }
    Matrix4d matrix() const override { return moved(_nodes->existing(path()).place); }
    Matrix4d segmentInclusiveMatrix() const override { return matrix() * segmentExclusiveMatrix(); }
    Matrix4d segmentExclusiveMatrix() const override
    {
        auto result = moved({});
        auto above = path();
        while (above.size() > 1 && _nodes->fault != Fault::MatrixIgnoresTheParent) {
            above = above.pop();
            result = result * moved(_nodes->existing(above).place);
        }
        return result;
    }

    UndoableCommand::Ptr translateCmd(double x, double y, double z) override
    {
        const auto set = [nodes = _nodes, path = path()](const Vector3d& place) {
            nodes->existing(path).place = place;
            Transform3d::notify(path);
        };
        const Vector3d place({x, y, z});
        const auto before = translation();
        if (_nodes->fault == Fault::CommandChangesWhenMade) {
            set(place);
        }
        return std::make_shared<Command>([=] { set(place); }, [=] { set(before); });
    }
    Vector3d translation() const override { return _nodes->existing(path()).place; }

    UndoableCommand::Ptr rotateCmd(double, double, double) override { return nullptr; }
    Vector3d rotation() const override { return {}; }
    UndoableCommand::Ptr scaleCmd(double, double, double) override { return nullptr; }
    Vector3d scale() const override { return {{1, 1, 1}}; }
    UndoableCommand::Ptr rotatePivotCmd(double, double, double) override { return nullptr; }
    Vector3d rotatePivot() const override { return {}; }
    UndoableCommand::Ptr scalePivotCmd(double, double, double) override { return nullptr; }
    Vector3d scalePivot() const override { return {}; }
    UndoableCommand::Ptr setMatrixCmd(const Matrix4d&) override { return nullptr; }

private:
    static Matrix4d moved(const Vector3d& place)
    {
        return {{{{1, 0, 0, 0},
                  {0, 1, 0, 0},
                  {0, 0, 1, 0},
                  {place.vector[0], place.vector[1], place.vector[2], 1}}}};
    }

    const NodesPtr _nodes;
    const SceneItem::Ptr _item;
};

/// Makes the four interfaces.
class Handler : public HierarchyHandler,
                public SceneItemOpsHandler,
                public AttributesHandler,
                public Transform3dHandler
{
public:
    explicit Handler(NodesPtr nodes) : _nodes(std::move(nodes)) {}

    Hierarchy::Ptr hierarchy(const SceneItem::Ptr& item) override
    {
        return std::make_shared<NodeHierarchy>(_nodes, item);
    }
    SceneItem::Ptr createItem(const Path& path) override { return _nodes->item(path); }
    SceneItemList rootItems(const Path& gateway) override
    {
        return gateway.empty() ? SceneItemList{_nodes->item(_nodes->root)} : SceneItemList{};
    }
    SceneItemOps::Ptr sceneItemOps(const SceneItem::Ptr& item) override
    {
        return std::make_shared<NodeOps>(_nodes, item);
    }
    Attributes::Ptr attributes(const SceneItem::Ptr& item) override
    {
        return std::make_shared<NodeAttributes>(_nodes, item);
    }
    Transform3d::Ptr transform3d(const SceneItem::Ptr& item) const override
    {
        return _nodes->find(item->path()) ? std::make_shared<NodeTransform>(_nodes, item) : nullptr;
    }

private:
    const NodesPtr _nodes;
};

} // namespace

FaultyRunTime::FaultyRunTime(Fault fault)
    : _fault(fault), _registration(std::make_unique<RunTimeRegistration>("faulty", '%'))
{
    const auto id = _registration->id();
    const auto handler = std::make_shared<Handler>(std::make_shared<Nodes>(id, fault));
    auto& manager = RunTimeMgr::instance();
    manager.setHierarchyHandler(id, handler);
    manager.setSceneItemOpsHandler(id, handler);
    manager.setAttributesHandler(id, handler);
    manager.setTransform3dHandler(id, handler);
}

FaultyRunTime::~FaultyRunTime()
{
    if (_fault == Fault::ForgottenUnregistering) {
        static_cast<void>(_registration.release());
    }
}

} // namespace test
