#pragma once

#include <memory>

#include "kiv/export.h"
#include "kiv/sceneItem.h"
#include "kiv/typedVectorN.h"
#include "kiv/undoableCommand.h"

namespace Kiv_v4 {

/// How a scene item is drawn as a node in a node editor. Lengths are in the editor's own unit, x to
/// the right and y downward.
class KIV_EXPORT UINodeGraphNode
{
public:
    using Ptr = std::shared_ptr<UINodeGraphNode>;

    /// The node of `item`; null for a null item, an empty path, a run-time that offers none, and an
    /// item that has none. Exceptions of the run-time are logged and pass through.
    [[nodiscard]] static Ptr uiNodeGraphNode(const SceneItem::Ptr& item);

    UINodeGraphNode();
    UINodeGraphNode(const UINodeGraphNode&) = delete;
    UINodeGraphNode& operator=(const UINodeGraphNode&) = delete;
    virtual ~UINodeGraphNode();

    /// Whether the node was ever placed; otherwise the editor lays it out.
    [[nodiscard]] virtual bool hasPosition() const = 0;

    /// The node's top left corner; zero when it was never placed.
    [[nodiscard]] virtual TypedVectorN<float, 2> position() const = 0;

    /// Changes nothing yet; null when the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr
    setPositionCmd(const TypedVectorN<float, 2>& position) = 0;

    /// Executes `setPositionCmd` and drops it; does nothing when the run-time refuses.
    virtual void setPosition(const TypedVectorN<float, 2>& position);
};

/// What node editors that keep sizes need beyond the first interface.
class KIV_EXPORT UINodeGraphNode_v4_1 : public UINodeGraphNode
{
public:
    using Ptr = std::shared_ptr<UINodeGraphNode_v4_1>;

    /// The same object as `UINodeGraphNode::uiNodeGraphNode`, or null when it does not have this
    /// interface.
    [[nodiscard]] static Ptr uiNodeGraphNode(const SceneItem::Ptr& item);

    ~UINodeGraphNode_v4_1() override;

    /// Whether the node was ever given a size; otherwise the editor chooses it.
    [[nodiscard]] virtual bool hasSize() const = 0;

    /// Width and height; zero when it was never given a size.
    [[nodiscard]] virtual TypedVectorN<float, 2> size() const = 0;

    /// Changes nothing yet; null when the run-time refuses.
    [[nodiscard]] virtual UndoableCommand::Ptr setSizeCmd(const TypedVectorN<float, 2>& size) = 0;

    /// Executes `setSizeCmd` and drops it; does nothing when the run-time refuses.
    virtual void setSize(const TypedVectorN<float, 2>& size);
};

} // namespace Kiv_v4

#include "kiv/uiNodeGraphNodeHandler.h" // for code that knows this header alone
