#include "kiv/sceneNotification.h"

namespace Kiv_v4 {

namespace {

Path pathOf(const SceneItem::Ptr& item)
{
    return item ? item->path() : Path();
}

/// The item of a notification of class `Kind`. Null for any other class, since the operation alone
/// does not prove the class: a plain `ObjectPathChange` may say that it is a rename.
template <class Kind>
SceneItem::Ptr itemOf(const SceneChanged& change)
{
    const auto* kind = dynamic_cast<const Kind*>(&change);
    return kind ? kind->item() : nullptr;
}

SceneItem::Ptr deletedItem(const SceneChanged& change)
{
    switch (change.subOpType()) {
    case ObjectDelete::PostDelete:
        return itemOf<ObjectPostDelete>(change);
    case ObjectDelete::PreDelete:
        return itemOf<ObjectPreDelete>(change);
    default:
        return nullptr;
    }
}

SceneItem::Ptr movedItem(const SceneChanged& change)
{
    switch (change.subOpType()) {
    case ObjectPathChange::Renamed:
        return itemOf<ObjectRename>(change);
    case ObjectPathChange::Reparented:
        return itemOf<ObjectReparent>(change);
    case ObjectPathChange::PathAdded:
        return itemOf<ObjectPathAdd>(change);
    default:
        return nullptr;
    }
}

SceneItem::Ptr invalidatedRoot(const SceneChanged& change)
{
    const auto* invalidate = dynamic_cast<const SubtreeInvalidate*>(&change);
    return invalidate ? invalidate->root() : nullptr;
}

SceneItem::Ptr changedItem(const SceneChanged& change)
{
    switch (change.opType()) {
    case SceneChanged::Added:
        return itemOf<ObjectAdd>(change);
    case SceneChanged::Deleted:
        return deletedItem(change);
    case SceneChanged::PathChanged:
        return movedItem(change);
    case SceneChanged::SubtreeInvalidated:
        return invalidatedRoot(change);
    case SceneChanged::Composite:
        break;
    }
    return nullptr;
}

} // namespace

SceneChanged::SceneChanged(OpType opType) : SceneChanged(opType, 0) {}

SceneChanged::SceneChanged(OpType opType, std::uint8_t subOpType)
    : _opType(opType), _subOpType(subOpType)
{}

SceneChanged::~SceneChanged() = default;

Path SceneChanged::changedPath() const
{
    return {};
}

std::uint8_t SceneChanged::subOpType() const
{
    return 0;
}

ObjectAdd::ObjectAdd(const SceneItem::Ptr& item) : SceneChanged(Added), _item(item) {}

ObjectAdd::~ObjectAdd() = default;

Path ObjectAdd::changedPath() const
{
    return pathOf(_item);
}

ObjectDelete::ObjectDelete(const Path& path) : ObjectDelete(path, PlainDelete) {}

ObjectDelete::ObjectDelete(const Path& path, SubOpType subOpType)
    : SceneChanged(Deleted, subOpType), _path(path), _subOpType(subOpType)
{}

ObjectDelete::~ObjectDelete() = default;

Path ObjectDelete::changedPath() const
{
    return _path;
}

std::uint8_t ObjectDelete::subOpType() const
{
    return _subOpType;
}

ObjectPostDelete::ObjectPostDelete(const SceneItem::Ptr& item)
    : ObjectDelete(pathOf(item), PostDelete), _item(item)
{}

ObjectPostDelete::~ObjectPostDelete() = default;

ObjectPreDelete::ObjectPreDelete(const SceneItem::Ptr& item)
    : ObjectDelete(pathOf(item), PreDelete), _item(item)
{}

ObjectPreDelete::~ObjectPreDelete() = default;

ObjectDestroyed::ObjectDestroyed(const Path& path) : ObjectDelete(path, Destroyed) {}

ObjectDestroyed::~ObjectDestroyed() = default;

ObjectPathChange::ObjectPathChange() : ObjectPathChange(Unspecified) {}

ObjectPathChange::ObjectPathChange(SubOpType subOpType) : SceneChanged(PathChanged, subOpType) {}

ObjectPathChange::~ObjectPathChange() = default;

std::uint8_t ObjectPathChange::subOpType() const
{
    return storedSubOpType();
}

ObjectRename::ObjectRename(const SceneItem::Ptr& item, const Path& previousPath)
    : ObjectPathChange(Renamed), _item(item), _previousPath(previousPath)
{}

ObjectRename::~ObjectRename() = default;

Path ObjectRename::changedPath() const
{
    return _previousPath;
}

ObjectReparent::ObjectReparent(const SceneItem::Ptr& item, const Path& previousPath)
    : ObjectPathChange(Reparented), _item(item), _previousPath(previousPath)
{}

ObjectReparent::~ObjectReparent() = default;

Path ObjectReparent::changedPath() const
{
    return _previousPath;
}

ObjectPathAdd::ObjectPathAdd(const SceneItem::Ptr& item) : ObjectPathChange(PathAdded), _item(item)
{}

ObjectPathAdd::~ObjectPathAdd() = default;

Path ObjectPathAdd::changedPath() const
{
    return pathOf(_item);
}

ObjectPathRemove::ObjectPathRemove(const Path& removedPath)
    : ObjectPathChange(PathRemoved), _removedPath(removedPath)
{}

ObjectPathRemove::~ObjectPathRemove() = default;

Path ObjectPathRemove::changedPath() const
{
    return _removedPath;
}

SubtreeInvalidate::SubtreeInvalidate(const SceneItem::Ptr& root)
    : SceneChanged(SubtreeInvalidated), _root(root)
{}

SubtreeInvalidate::~SubtreeInvalidate() = default;

Path SubtreeInvalidate::changedPath() const
{
    return pathOf(_root);
}

SceneCompositeNotification::Op::Op(const SceneChanged& change)
    : opType(change.opType()), subOpType(change.subOpType()), item(changedItem(change)),
      path(change.changedPath())
{}

SceneCompositeNotification::SceneCompositeNotification() : SceneChanged(Composite) {}

SceneCompositeNotification::~SceneCompositeNotification() = default;

void SceneCompositeNotification::appendSceneChanged(const SceneChanged& change)
{
    _ops.emplace_back(change);
}

void SceneCompositeNotification::appendOp(const Op& op)
{
    _ops.push_back(op);
}

} // namespace Kiv_v4
