#pragma once

#include <string>
#include <vector>

#include "kiv/contextOps.h"
#include "kiv/export.h"
#include "kiv/nodeDef.h"
#include "kiv/sceneSegmentHandler.h"
#include "kiv/selection.h"
#include "kiv/uiInfoHandler.h"

namespace Kiv_v4::kit {

// Base classes, as in `bases.h`, for handlers and for interfaces beyond those of one item.

/// Gateways for a run-time that implements `target`. The other functions walk through the
/// run-time's hierarchy, neither behind gateways nor into other run-times.
class KIV_EXPORT SceneSegmentHandlerBase : public SceneSegmentHandler
{
public:
    SceneSegmentHandlerBase();
    ~SceneSegmentHandlerBase() override;

    /// The run-time that the item at `path`, a path of this run-time, leads into; 0 if it is not a
    /// gateway or does not exist.
    [[nodiscard]] virtual Rtid target(const Path& path) const = 0;

    [[nodiscard]] bool isGatewayItem(const Path& path) override;
    [[nodiscard]] Selection gatewayItems(const Path& path) override;
    [[nodiscard]] Selection gatewayItems(const Path& path, Rtid nestedRuntimeId) override;
};

/// The host's look, with the registered name of the run-time as its label.
class KIV_EXPORT UIInfoHandlerBase : public UIInfoHandler
{
public:
    explicit UIInfoHandlerBase(Rtid runTimeId);
    ~UIInfoHandlerBase() override;

    [[nodiscard]] CellInfo treeViewCellInfo(const SceneItem::Ptr& item,
                                            const CellInfo& hostLook) const override;

    /// Throws `InvalidRunTimeId` if the run-time is no longer registered.
    [[nodiscard]] std::string runTimeLabel() const override;

private:
    const Rtid _runTimeId;
};

/// A menu without entries.
class KIV_EXPORT ContextOpsBase : public ContextOps
{
public:
    /// `item` must not be null.
    explicit ContextOpsBase(SceneItem::Ptr item);
    ~ContextOpsBase() override;

    [[nodiscard]] SceneItem::Ptr sceneItem() const override { return _item; }
    [[nodiscard]] std::vector<ContextItem> items(const ItemPath& itemPath) const override;
    [[nodiscard]] UndoableCommand::Ptr doOpCmd(const ItemPath& itemPath) override;

private:
    const SceneItem::Ptr _item;
};

/// A node type with the inputs and outputs that the run-time lists, by default none.
/// `createNodeCmd` makes a child of that type through the hierarchy of the parent.
class KIV_EXPORT NodeDefBase : public NodeDef
{
public:
    explicit NodeDefBase(std::string type);
    ~NodeDefBase() override;

    [[nodiscard]] std::string type() const override { return _type; }
    [[nodiscard]] std::string displayName() const override { return _type; }
    [[nodiscard]] std::string description() const override;
    [[nodiscard]] std::vector<std::string> classifications() const override;

    [[nodiscard]] std::vector<AttributeDef::Ptr> inputs() const override;
    [[nodiscard]] std::vector<std::string> inputNames() const override;
    [[nodiscard]] bool hasInput(const std::string& name) const override;
    [[nodiscard]] AttributeDef::Ptr input(const std::string& name) const override;

    [[nodiscard]] std::vector<AttributeDef::Ptr> outputs() const override;
    [[nodiscard]] std::vector<std::string> outputNames() const override;
    [[nodiscard]] bool hasOutput(const std::string& name) const override;
    [[nodiscard]] AttributeDef::Ptr output(const std::string& name) const override;

    [[nodiscard]] Value metadata(const std::string& key) const override;
    [[nodiscard]] bool hasMetadata(const std::string& key) const override;

    [[nodiscard]] SceneItemResultUndoableCommand::Ptr
    createNodeCmd(const SceneItem::Ptr& parent, const PathComponent& name) const override;

private:
    const std::string _type;
};

} // namespace Kiv_v4::kit
