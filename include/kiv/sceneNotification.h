#pragma once

#include <cstddef>
#include <cstdint>
#include <list>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

// The notifications that run-times pass to the scene's `notify`. A notification shares its items;
// accessors return copies.

/// A change of the scene's structure.
///
/// Each operation belongs to one class below (`Added` to `ObjectAdd`, and so on); only that class
/// and the classes derived from it have it.
class KIV_EXPORT SceneChanged : public Notification
{
public:
    /// The operations.
    enum OpType : std::uint8_t {
        Added = 0,
        Deleted = 1,
        PathChanged = 2,
        SubtreeInvalidated = 3,
        Composite = 4
    };

    explicit SceneChanged(OpType opType);
    ~SceneChanged() override;

    /// The path by which observers knew the changed item: after a rename or a reparent the former
    /// path, for `ObjectPathAdd` the additional path; empty if the notification is not about one
    /// item.
    [[nodiscard]] virtual Path changedPath() const;

    /// The kind of a delete or a path change, a value of its `SubOpType`; 0 for other
    /// notifications.
    [[nodiscard]] virtual std::uint8_t subOpType() const;

    /// The operation, which names the class of the notification.
    [[nodiscard]] OpType opType() const noexcept { return _opType; }

protected:
    SceneChanged(OpType opType, std::uint8_t subOpType);

    /// The second argument of the constructor; 0 if there was none.
    [[nodiscard]] std::uint8_t storedSubOpType() const noexcept { return _subOpType; }

private:
    OpType _opType;
    std::uint8_t _subOpType;
};

/// `item` was added to the scene, with its descendants.
class KIV_EXPORT ObjectAdd : public SceneChanged
{
public:
    explicit ObjectAdd(const SceneItem::Ptr& item);
    ~ObjectAdd() override;

    /// The new item.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
};

/// The object at `path` is deleted, with its descendants. Run-times send the derived class that
/// says what observers can still do with the object, or this class if they cannot tell.
class KIV_EXPORT ObjectDelete : public SceneChanged
{
public:
    /// The derived class of the notification; `PlainDelete` for this class.
    enum SubOpType : std::uint8_t { PlainDelete = 0, PostDelete = 1, PreDelete = 2, Destroyed = 3 };

    explicit ObjectDelete(const Path& path);
    ObjectDelete(const Path& path, SubOpType subOpType);
    ~ObjectDelete() override;

    /// The path of the object, or its former path.
    [[nodiscard]] Path path() const { return _path; }

    [[nodiscard]] Path changedPath() const override;
    [[nodiscard]] std::uint8_t subOpType() const override;

private:
    Path _path;
    SubOpType _subOpType;
};

/// The object has left the scene; undo may bring it back.
class KIV_EXPORT ObjectPostDelete : public ObjectDelete
{
public:
    explicit ObjectPostDelete(const SceneItem::Ptr& item);
    ~ObjectPostDelete() override;

    /// The item that was deleted.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _item;
};

/// The object is about to leave the scene and can still be queried, unless a guard gathered the
/// notification.
class KIV_EXPORT ObjectPreDelete : public ObjectDelete
{
public:
    explicit ObjectPreDelete(const SceneItem::Ptr& item);
    ~ObjectPreDelete() override;

    /// The item, which still exists.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _item;
};

/// The object was destroyed; undo cannot bring it back.
class KIV_EXPORT ObjectDestroyed : public ObjectDelete
{
public:
    explicit ObjectDestroyed(const Path& path);
    ~ObjectDestroyed() override;
};

/// The path of an object and of its descendants changed. Run-times send the derived class that says
/// how.
class KIV_EXPORT ObjectPathChange : public SceneChanged
{
public:
    /// The derived class of the notification; `Unspecified` for this class.
    enum SubOpType : std::uint8_t {
        Unspecified = 0,
        Renamed = 1,
        Reparented = 2,
        PathAdded = 3,
        PathRemoved = 4
    };

    ObjectPathChange();
    explicit ObjectPathChange(SubOpType subOpType);
    ~ObjectPathChange() override;

    [[nodiscard]] std::uint8_t subOpType() const override;
};

/// The object at `previousPath` was renamed; `item` has the new path.
class KIV_EXPORT ObjectRename : public ObjectPathChange
{
public:
    ObjectRename(const SceneItem::Ptr& item, const Path& previousPath);
    ~ObjectRename() override;

    /// The item under its new name.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }
    /// The former path of the item.
    [[nodiscard]] Path previousPath() const { return _previousPath; }

    /// The previous path.
    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
    Path _previousPath;
};

/// The object at `previousPath` got another parent; `item` has the new path.
class KIV_EXPORT ObjectReparent : public ObjectPathChange
{
public:
    ObjectReparent(const SceneItem::Ptr& item, const Path& previousPath);
    ~ObjectReparent() override;

    /// The item under its new parent.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }
    /// The former path of the item.
    [[nodiscard]] Path previousPath() const { return _previousPath; }

    /// The previous path.
    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
    Path _previousPath;
};

/// An object got an additional path, that of `item`.
class KIV_EXPORT ObjectPathAdd : public ObjectPathChange
{
public:
    explicit ObjectPathAdd(const SceneItem::Ptr& item);
    ~ObjectPathAdd() override;

    /// The item at the additional path.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
};

/// An object lost the path `removedPath` and keeps other paths.
class KIV_EXPORT ObjectPathRemove : public ObjectPathChange
{
public:
    explicit ObjectPathRemove(const Path& removedPath);
    ~ObjectPathRemove() override;

    /// The path that the object lost.
    [[nodiscard]] Path removedPath() const { return _removedPath; }

    [[nodiscard]] Path changedPath() const override;

private:
    Path _removedPath;
};

/// Everything cached about `root`, except its path, and about its descendants is stale; query it
/// again.
class KIV_EXPORT SubtreeInvalidate : public SceneChanged
{
public:
    explicit SubtreeInvalidate(const SceneItem::Ptr& root);
    ~SubtreeInvalidate() override;

    /// The top of the subtree to be queried again.
    [[nodiscard]] SceneItem::Ptr root() const { return _root; }

    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _root;
};

/// The changes gathered under a notification guard, in the order in which they happened; empty if
/// nothing changed under the guard.
///
/// It is delivered after all of them: a later change may have renamed or deleted the item of an
/// earlier one, so `Hierarchy::createItem` may return null for it.
class KIV_EXPORT SceneCompositeNotification : public SceneChanged
{
public:
    /// One change.
    struct Op
    {
        /// Takes the fields from `change`. The item is null if `change` has none.
        explicit Op(const SceneChanged& change);

        OpType opType;          ///< The change's `opType()`.
        std::uint8_t subOpType; ///< Its `subOpType()`.
        SceneItem::Ptr item; ///< The item of the notification (for a subtree, its root), or null.
        Path path;           ///< Its `changedPath()`.
    };

    /// Changes in order.
    using Ops = std::list<Op>;
    using const_iterator = Ops::const_iterator;

    SceneCompositeNotification();
    ~SceneCompositeNotification() override;

    /// The number of changes.
    [[nodiscard]] std::size_t size() const noexcept { return _ops.size(); }
    /// Whether nothing changed.
    [[nodiscard]] bool empty() const noexcept { return _ops.empty(); }

    /// The changes in the order in which they happened.
    [[nodiscard]] const_iterator begin() const noexcept { return _ops.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return _ops.end(); }
    [[nodiscard]] const_iterator cbegin() const noexcept { return _ops.cbegin(); }
    [[nodiscard]] const_iterator cend() const noexcept { return _ops.cend(); }

    /// Adds the change as `Op(change)`. To add the changes of another composite, append its ops.
    void appendSceneChanged(const SceneChanged& change);

    /// Adds a change as it is.
    void appendOp(const Op& op);

private:
    Ops _ops;
};

/// Calls `visit` with each change of a notification of the scene, a single one or each of a
/// composite, in order, as a `SceneCompositeNotification::Op`. Leaves out changes whose
/// `changedPath()` is not `wanted`, and makes no `Op` of a single one that is left out: that makes
/// it cheap to observe a few items of a large scene. Other notifications have no changes.
template <class Wanted, class Visit>
void forEachOp(const Notification& notification, Wanted&& wanted, Visit&& visit)
{
    const auto* change = dynamic_cast<const SceneChanged*>(&notification);
    if (!change) {
        return;
    }
    const auto* all = change->opType() == SceneChanged::Composite
                          ? dynamic_cast<const SceneCompositeNotification*>(change)
                          : nullptr;
    if (!all) {
        if (wanted(change->changedPath())) {
            visit(SceneCompositeNotification::Op(*change));
        }
        return;
    }
    for (const auto& op : *all) {
        if (wanted(op.path)) {
            visit(op);
        }
    }
}

/// Calls `visit` with all changes.
template <class Visit>
void forEachOp(const Notification& notification, Visit&& visit)
{
    forEachOp(
        notification, [](const Path&) { return true; }, visit);
}

} // namespace Kiv_v4
