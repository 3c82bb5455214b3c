#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/attributeDef.h"
#include "kiv/export.h"
#include "kiv/pathComponent.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"
#include "kiv/value.h"

namespace Kiv_v4 {

/// Describes a node type of a run-time, for a "create node" menu and a node editor, which need it
/// before there is a node.
class KIV_EXPORT NodeDef
{
public:
    using Ptr = std::shared_ptr<NodeDef>;

    /// The definition of a node type of a run-time; null if it has none or no handler for
    /// definitions. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr definition(const Rtid& runTimeId, const std::string& type);

    NodeDef();
    NodeDef(const NodeDef&) = delete;
    NodeDef& operator=(const NodeDef&) = delete;
    virtual ~NodeDef();

    /// The type's name, as `SceneItem::nodeType` gives it.
    [[nodiscard]] virtual std::string type() const = 0;

    /// The name as a user interface shows it.
    [[nodiscard]] virtual std::string displayName() const = 0;

    /// The purpose of the type, in a sentence; may be empty.
    [[nodiscard]] virtual std::string description() const = 0;

    /// The menu entries that lead to the type, from the most general down.
    [[nodiscard]] virtual std::vector<std::string> classifications() const = 0;

    // The attributes that a new node has: inputs can be set and connected to, outputs only
    // connected from.

    /// All names, in the order in which a user interface lists them.
    [[nodiscard]] virtual std::vector<std::string> inputNames() const = 0;
    /// Whether there is an input of that name.
    [[nodiscard]] virtual bool hasInput(const std::string& name) const = 0;
    /// The definition of that name; null if there is none.
    [[nodiscard]] virtual AttributeDef::Ptr input(const std::string& name) const = 0;
    /// All of them, in the order of the names.
    [[nodiscard]] virtual std::vector<AttributeDef::Ptr> inputs() const = 0;

    /// All names, in the order in which a user interface lists them.
    [[nodiscard]] virtual std::vector<std::string> outputNames() const = 0;
    /// Whether there is an output of that name.
    [[nodiscard]] virtual bool hasOutput(const std::string& name) const = 0;
    /// The definition of that name; null if there is none.
    [[nodiscard]] virtual AttributeDef::Ptr output(const std::string& name) const = 0;
    /// All of them, in the order of the names.
    [[nodiscard]] virtual std::vector<AttributeDef::Ptr> outputs() const = 0;

    /// The metadata under `key`; a value without a type if there is none.
    [[nodiscard]] virtual Value metadata(const std::string& key) const = 0;
    /// Whether there is metadata under `key`.
    [[nodiscard]] virtual bool hasMetadata(const std::string& key) const = 0;

    /// Returns a command that makes a node of this type as the last child of `parent`, with the
    /// attributes of the definition. Changes nothing yet; returns null if the run-time refuses.
    [[nodiscard]] virtual SceneItemResultUndoableCommand::Ptr
    createNodeCmd(const SceneItem::Ptr& parent, const PathComponent& name) const = 0;
};

} // namespace Kiv_v4

#include "kiv/nodeDefHandler.h" // for code that knows this header alone
