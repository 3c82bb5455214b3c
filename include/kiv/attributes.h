#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "kiv/attribute.h"
#include "kiv/attributeDef.h"
#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/resultCommands.h"
#include "kiv/rtid.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

class AttributeChanged;
class Path;

/// The attributes of one scene item, supplied by its run-time.
///
///     if (const auto attributes = Attributes::attributes(item)) {
///         for (const auto& name : attributes->attributeNames()) {
///             std::cout << name << ' ' << attributes->attribute(name)->string() << '\n';
///         }
///     }
///
/// The run-time that makes a change announces it with `notify` to the observers of all attributes
/// and to those of the item. The library holds observers by weak reference; for a null item these
/// functions return false or 0. Observers of a single item must be removed with an item of the path
/// that they were added under.
class KIV_EXPORT Attributes
{
public:
    using Ptr = std::shared_ptr<Attributes>;

    /// The attributes of `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr attributes(const SceneItem::Ptr& item);

    Attributes();
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    virtual ~Attributes();

    /// The item that the attributes belong to.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The type of the attribute; `Attribute::kInvalid` if there is none of that name.
    [[nodiscard]] virtual std::string attributeType(const std::string& name) const = 0;

    /// The attribute; null if there is none of that name.
    [[nodiscard]] virtual Attribute::Ptr attribute(const std::string& name) = 0;

    /// All names, in the order in which a user interface lists them.
    [[nodiscard]] virtual std::vector<std::string> attributeNames() const = 0;

    /// Whether there is an attribute of that name.
    [[nodiscard]] virtual bool hasAttribute(const std::string& name) const = 0;

    /// Executes `addAttributeCmd` and returns the new attribute; null if the run-time refuses.
    virtual Attribute::Ptr addAttribute(const std::string& type, const std::string& name);

    /// Returns a command that adds an attribute of one of the type constants. The run-time changes
    /// the name if that is needed to make it unique or fit its rules.
    [[nodiscard]] virtual AttributeResultUndoableCommand::Ptr
    addAttributeCmd(const std::string& type, const std::string& name) = 0;

    /// Executes `removeAttributeCmd`. Returns false if the run-time refuses.
    virtual bool removeAttribute(const std::string& name);

    /// Returns a command that removes the attribute.
    [[nodiscard]] virtual UndoableCommand::Ptr removeAttributeCmd(const std::string& name) = 0;

    /// Executes `renameAttributeCmd` and returns the attribute under its new name; null if the
    /// run-time refuses.
    virtual Attribute::Ptr renameAttribute(const std::string& name, const std::string& newName);

    /// Returns a command that renames the attribute. The run-time may change the name, as for
    /// `addAttributeCmd`.
    [[nodiscard]] virtual AttributeResultUndoableCommand::Ptr
    renameAttributeCmd(const std::string& name, const std::string& newName) = 0;

    /// Observers of all attributes of all items. These functions work as those of `Subject`.
    static bool addObserver(const Observer::Ptr& observer);
    static bool removeObserver(const Observer::Ptr& observer);
    [[nodiscard]] static bool hasObserver(const Observer::Ptr& observer);
    [[nodiscard]] static std::size_t nbObservers();

    // Observers of one item, found by its path.

    /// Returns false if `observer` already observes the item.
    static bool addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// Returns false if `observer` does not observe the item.
    static bool removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// The number of living observers of the item.
    [[nodiscard]] static std::size_t nbObservers(const SceneItem::Ptr& item);
    /// Whether `observer` observes the item.
    [[nodiscard]] static bool hasObserver(const SceneItem::Ptr& item,
                                          const Observer::Ptr& observer);
    /// Whether the item at `path` has observers. Observers that died without being removed count.
    [[nodiscard]] static bool hasObservers(const Path& path);
    /// Whether an item of the run-time was ever observed; stays true after the last observer was
    /// removed.
    [[nodiscard]] static bool hasObservers(Rtid runTimeId);

    /// Notifies the observers of all attributes, then those of the item.
    static void notify(const AttributeChanged& notification);
};

/// The additions to the first interface that attribute editors need.
class KIV_EXPORT Attributes_v4_2 : public Attributes
{
public:
    using Ptr = std::shared_ptr<Attributes_v4_2>;

    ~Attributes_v4_2() override;

    /// The description by which editors label, reset and restrict the attribute; null if there is
    /// none of that name or the run-time has no description.
    [[nodiscard]] virtual AttributeDef::Ptr attributeDef(const std::string& name) const = 0;
};

} // namespace Kiv_v4

#include "kiv/attributesHandler.h" // for code that knows this header alone
