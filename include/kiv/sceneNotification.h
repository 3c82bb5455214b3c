#pragma once

#include <cstddef>
#include <cstdint>
#include <list>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/path.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

// What a run-time passes to the scene's `notify`. Items are shared with the notification; accessors
// return copies.

/// A change of the scene's structure.
///
/// Each operation belongs to one class below (`Added` to `ObjectAdd`, and so on) and is carried by
/// it and the classes derived from it alone.
class KIV_EXPORT SceneChanged : public Notification
{
public:
    /// What happened.
    enum OpType : std::uint8_t {
        Added = 0,
        Deleted = 1,
        PathChanged = 2,
        SubtreeInvalidated = 3,
        Composite = 4
    };

    explicit SceneChanged(OpType opType);
    ~SceneChanged() override;

    /// The path by which observers knew the changed item, which after a rename or a reparent is no
    /// longer its own (for `ObjectPathAdd` the further path); empty when the notification is not
    /// about one item.
    [[nodiscard]] virtual Path changedPath() const;

    /// For deletes and path changes, which kind: a value of their `SubOpType`. Otherwise 0.
    [[nodiscard]] virtual std::uint8_t subOpType() const;

    /// What happened: the class of the notification.
    [[nodiscard]] OpType opType() const noexcept { return _opType; }

protected:
    SceneChanged(OpType opType, std::uint8_t subOpType);

    /// The second argument of the constructor; 0 without.
    [[nodiscard]] std::uint8_t storedSubOpType() const noexcept { return _subOpType; }

private:
    OpType _opType;
    std::uint8_t _subOpType;
};

/// `item` is new in the scene, with everything under it.
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

/// The object at `path` goes, with everything under it. Run-times send the derived class that says
/// what observers can still do with the object, or this one when they cannot tell.
class KIV_EXPORT ObjectDelete : public SceneChanged
{
public:
    /// What observers can still do with the object: the derived class, or `PlainDelete`.
    enum SubOpType : std::uint8_t { PlainDelete = 0, PostDelete = 1, PreDelete = 2, Destroyed = 3 };

    explicit ObjectDelete(const Path& path);
    ObjectDelete(const Path& path, SubOpType subOpType);
    ~ObjectDelete() override;

    /// Where the object is, or was.
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

    /// The item as it was.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _item;
};

/// The object is about to leave the scene and can still be asked about, unless the notification
/// was gathered under a guard.
class KIV_EXPORT ObjectPreDelete : public ObjectDelete
{
public:
    explicit ObjectPreDelete(const SceneItem::Ptr& item);
    ~ObjectPreDelete() override;

    /// The item as it still is.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _item;
};

/// The object is gone for good, out of reach of undo.
class KIV_EXPORT ObjectDestroyed : public ObjectDelete
{
public:
    explicit ObjectDestroyed(const Path& path);
    ~ObjectDestroyed() override;
};

/// An object is found under another path, with everything under it. Run-times send the derived
/// class that says how.
class KIV_EXPORT ObjectPathChange : public SceneChanged
{
public:
    /// How the path changed: the derived class, or `Unspecified`.
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

/// `item`, which bears the new path, has another name than at `previousPath`.
class KIV_EXPORT ObjectRename : public ObjectPathChange
{
public:
    ObjectRename(const SceneItem::Ptr& item, const Path& previousPath);
    ~ObjectRename() override;

    /// The item under its new name.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }
    /// Where the item was.
    [[nodiscard]] Path previousPath() const { return _previousPath; }

    /// The previous path.
    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
    Path _previousPath;
};

/// `item`, which bears the new path, has another parent than at `previousPath`.
class KIV_EXPORT ObjectReparent : public ObjectPathChange
{
public:
    ObjectReparent(const SceneItem::Ptr& item, const Path& previousPath);
    ~ObjectReparent() override;

    /// The item under its new parent.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }
    /// Where the item was.
    [[nodiscard]] Path previousPath() const { return _previousPath; }

    /// The previous path.
    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
    Path _previousPath;
};

/// An object that has paths already can be reached as `item` too.
class KIV_EXPORT ObjectPathAdd : public ObjectPathChange
{
public:
    explicit ObjectPathAdd(const SceneItem::Ptr& item);
    ~ObjectPathAdd() override;

    /// The item at the further path.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _item;
};

/// An object that keeps other paths is no longer reached by `removedPath`.
class KIV_EXPORT ObjectPathRemove : public ObjectPathChange
{
public:
    explicit ObjectPathRemove(const Path& removedPath);
    ~ObjectPathRemove() override;

    /// The path that leads nowhere now.
    [[nodiscard]] Path removedPath() const { return _removedPath; }

    [[nodiscard]] Path changedPath() const override;

private:
    Path _removedPath;
};

/// Nothing known about `root`, but for its path, and about the items under it holds any more; ask
/// again.
class KIV_EXPORT SubtreeInvalidate : public SceneChanged
{
public:
    explicit SubtreeInvalidate(const SceneItem::Ptr& root);
    ~SubtreeInvalidate() override;

    /// The item that, with all that is under it, is to be asked for anew.
    [[nodiscard]] SceneItem::Ptr root() const { return _root; }

    [[nodiscard]] Path changedPath() const override;

private:
    SceneItem::Ptr _root;
};

/// The changes gathered under a notification guard, in the order in which they happened. Holds none
/// when nothing changed under the guard.
///
/// It arrives when all of them have happened: the item or path of a change may have been renamed or
/// deleted by a later one, so `Hierarchy::createItem` may be null for it.
class KIV_EXPORT SceneCompositeNotification : public SceneChanged
{
public:
    /// One change.
    struct Op
    {
        /// What `change` says. The item is left null when `change` carries none.
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

    /// Adds the change as `Op(change)`. To add those of another composite, append its ops.
    void appendSceneChanged(const SceneChanged& change);

    /// Adds a change as it is.
    void appendOp(const Op& op);

private:
    Ops _ops;
};

/// Calls `visit` with each change that a notification of the scene tells of, a single one and each
/// of a composite alike, in order, as a `SceneCompositeNotification::Op`. Changes whose
/// `changedPath()` is not `wanted` are left out, without a single one being made an `Op`: that
/// makes it cheap to observe a few items of a large scene. Other notifications tell of none.
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

/// Calls `visit` with all of them.
template <class Visit>
void forEachOp(const Notification& notification, Visit&& visit)
{
    forEachOp(
        notification, [](const Path&) { return true; }, visit);
}

} // namespace Kiv_v4
