#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/typedVectorN.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// The look of a scene item as a node in a node editor. Lengths are in the editor's own unit, x to
/// the right and y downward.
class KIV_EXPORT UINodeGraphNode
{
public:
    using Ptr = std::shared_ptr<UINodeGraphNode>;

    /// The node of `item`; null for a null item, an empty path, a run-time without this interface,
    /// and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr uiNodeGraphNode(const SceneItem::Ptr& item);

    UINodeGraphNode();
    UINodeGraphNode(const UINodeGraphNode&) = delete;
    UINodeGraphNode& operator=(const UINodeGraphNode&) = delete;
    virtual ~UINodeGraphNode();

    /// Whether the node has a position; otherwise the editor lays it out.
    [[nodiscard]] virtual bool hasPosition() const = 0;

    /// The node's top left corner; zero if it has no position.
    [[nodiscard]] virtual TypedVectorN<float, 2> position() const = 0;

    /// Changes nothing yet; returns null if the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr
    setPositionCmd(const TypedVectorN<float, 2>& position) = 0;

    /// Executes `setPositionCmd` and drops it; does nothing if the run-time refuses.
    virtual void setPosition(const TypedVectorN<float, 2>& position);
};

/// The additions to the first interface for node editors that keep sizes.
class KIV_EXPORT UINodeGraphNode_v4_1 : public UINodeGraphNode
{
public:
    using Ptr = std::shared_ptr<UINodeGraphNode_v4_1>;

    /// The same object as `UINodeGraphNode::uiNodeGraphNode`, or null if it does not have this
    /// interface.
    [[nodiscard]] static Ptr uiNodeGraphNode(const SceneItem::Ptr& item);

    ~UINodeGraphNode_v4_1() override;

    /// Whether the node has a size; otherwise the editor chooses it.
    [[nodiscard]] virtual bool hasSize() const = 0;

    /// Width and height; zero if it has no size.
    [[nodiscard]] virtual TypedVectorN<float, 2> size() const = 0;

    /// Changes nothing yet; returns null if the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr setSizeCmd(const TypedVectorN<float, 2>& size) = 0;

    /// Executes `setSizeCmd` and drops it; does nothing if the run-time refuses.
    virtual void setSize(const TypedVectorN<float, 2>& size);
};

} // namespace Kiv_v4

#include "kiv/uiNodeGraphNodeHandler.h" // for code that knows this header alone
