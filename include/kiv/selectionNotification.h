#pragma once

#include <cstddef>
#include <cstdint>
#include <list>

#include "kiv/export.h"
#include "kiv/notification.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

// The notifications of an observable selection. A notification shares its items.

/// A change of a selection.
///
/// Each operation belongs to one class below (`Append` to `SelectionItemAppended`, and so on); only
/// that class has it.
class KIV_EXPORT SelectionChanged : public Notification
{
public:
    /// The operations.
    enum OpType : std::uint32_t {
        Append = 0,
        Remove = 1,
        Insert = 2,
        Clear = 3,
        ReplaceWith = 4,
        Composite = 5
    };

    explicit SelectionChanged(OpType opType);
    ~SelectionChanged() override;

    /// The operation, which names the class of the notification.
    [[nodiscard]] OpType opType() const noexcept { return _opType; }

private:
    OpType _opType;
};

/// `item` was appended.
class KIV_EXPORT SelectionItemAppended : public SelectionChanged
{
public:
    explicit SelectionItemAppended(const SceneItem::Ptr& item);
    ~SelectionItemAppended() override;

    /// The item that was appended.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _item;
};

/// The item with the path of `item` was removed.
class KIV_EXPORT SelectionItemRemoved : public SelectionChanged
{
public:
    explicit SelectionItemRemoved(const SceneItem::Ptr& item);
    ~SelectionItemRemoved() override;

    /// The argument of `remove`, which has the path of the item that was selected.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _item;
};

/// `item` was inserted before `position`.
class KIV_EXPORT SelectionItemInserted : public SelectionChanged
{
public:
    SelectionItemInserted(const SceneItem::Ptr& position, const SceneItem::Ptr& item);
    ~SelectionItemInserted() override;

    /// The item after the new one.
    [[nodiscard]] SceneItem::Ptr position() const { return _position; }
    /// The new item.
    [[nodiscard]] SceneItem::Ptr item() const { return _item; }

private:
    SceneItem::Ptr _position;
    SceneItem::Ptr _item;
};

/// The selection was cleared; it may already have been empty.
class KIV_EXPORT SelectionCleared : public SelectionChanged
{
public:
    SelectionCleared();
    ~SelectionCleared() override;
};

/// The items were replaced, possibly by the same ones; the selection lists them.
class KIV_EXPORT SelectionReplaced : public SelectionChanged
{
public:
    SelectionReplaced();
    ~SelectionReplaced() override;
};

/// The changes gathered under a notification guard, in the order in which they happened; empty if
/// nothing changed under the guard.
class KIV_EXPORT SelectionCompositeNotification : public SelectionChanged
{
public:
    /// One change.
    struct Op
    {
        /// Takes the fields from `change`.
        explicit Op(const SelectionChanged& change);

        explicit Op(OpType type, SceneItem::Ptr changedItem = nullptr,
                    SceneItem::Ptr insertPosition = nullptr);

        OpType opType;       ///< The change's `opType()`.
        SceneItem::Ptr item; ///< Null for a clear and a replacement.
        SceneItem::Ptr pos;  ///< The position of an insertion, null for all else.
    };

    /// Changes in order.
    using Ops = std::list<Op>;
    using iterator = Ops::iterator;
    using const_iterator = Ops::const_iterator;

    SelectionCompositeNotification();
    ~SelectionCompositeNotification() override;

    /// The number of changes.
    [[nodiscard]] std::size_t size() const noexcept { return _ops.size(); }
    /// Whether nothing changed.
    [[nodiscard]] bool empty() const noexcept { return _ops.empty(); }

    /// The changes in the order in which they happened.
    [[nodiscard]] iterator begin() noexcept { return _ops.begin(); }
    [[nodiscard]] iterator end() noexcept { return _ops.end(); }
    [[nodiscard]] const_iterator begin() const noexcept { return _ops.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return _ops.end(); }
    [[nodiscard]] const_iterator cbegin() const noexcept { return _ops.cbegin(); }
    [[nodiscard]] const_iterator cend() const noexcept { return _ops.cend(); }

    /// Adds a change at the end.
    void appendAppendOp(const SceneItem::Ptr& item);
    void appendRemoveOp(const SceneItem::Ptr& item);
    void appendInsertOp(const SceneItem::Ptr& pos, const SceneItem::Ptr& item);
    void appendClearOp();
    void appendReplaceWithOp();

private:
    Ops _ops;
};

} // namespace Kiv_v4
