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
/// Changes are announced with `notify` by the run-time that makes them, to the observers of all
/// attributes and to those of the item. Observers are held by weak reference; a null item is
/// answered with false or 0. Observers of single items are removed with an item of the path they
/// were added under.
class KIV_EXPORT Attributes
{
public:
    using Ptr = std::shared_ptr<Attributes>;

    /// The attributes of `item`; null for a null item, an empty path, a run-time that offers
    /// none, and an item that has none. Exceptions of the run-time are logged and pass through.
    [[nodiscard]] static Ptr attributes(const SceneItem::Ptr& item);

    Attributes();
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    virtual ~Attributes();

    /// The item that these are the attributes of.
    [[nodiscard]] virtual SceneItem::Ptr sceneItem() const = 0;

    /// The type of the attribute, `Attribute::kInvalid` when there is none of that name.
    [[nodiscard]] virtual std::string attributeType(const std::string& name) const = 0;

    /// The attribute, or null when there is none of that name.
    [[nodiscard]] virtual Attribute::Ptr attribute(const std::string& name) = 0;

    /// All names, in the order in which a user interface lists them.
    [[nodiscard]] virtual std::vector<std::string> attributeNames() const = 0;

    /// Whether there is an attribute of that name.
    [[nodiscard]] virtual bool hasAttribute(const std::string& name) const = 0;

    /// Executes `addAttributeCmd` and gives the new attribute; null when the run-time refuses.
    virtual Attribute::Ptr addAttribute(const std::string& type, const std::string& name);

    /// Adds an attribute of one of the type constants. The run-time changes the name where it must,
    /// to make it unique or fit its rules.
    [[nodiscard]] virtual AttributeResultUndoableCommand::Ptr
    addAttributeCmd(const std::string& type, const std::string& name) = 0;

    /// Executes `removeAttributeCmd`; false when the run-time refuses.
    virtual bool removeAttribute(const std::string& name);

    /// Removes the attribute.
    [[nodiscard]] virtual UndoableCommand::Ptr removeAttributeCmd(const std::string& name) = 0;

    /// Executes `renameAttributeCmd` and gives the attribute under its new name; null when the
    /// run-time refuses.
    virtual Attribute::Ptr renameAttribute(const std::string& name, const std::string& newName);

    /// Gives the attribute another name, changed where it must be, as `addAttributeCmd` does.
    [[nodiscard]] virtual AttributeResultUndoableCommand::Ptr
    renameAttributeCmd(const std::string& name, const std::string& newName) = 0;

    /// Observers of all attributes of all items, as `Subject` has them.
    static bool addObserver(const Observer::Ptr& observer);
    static bool removeObserver(const Observer::Ptr& observer);
    [[nodiscard]] static bool hasObserver(const Observer::Ptr& observer);
    [[nodiscard]] static std::size_t nbObservers();

    // Observers of one item, found by its path.

    /// False when `observer` observes the item already.
    static bool addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// False when `observer` does not observe the item.
    static bool removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer);
    /// The number of living observers of the item.
    [[nodiscard]] static std::size_t nbObservers(const SceneItem::Ptr& item);
    /// Whether `observer` observes the item.
    [[nodiscard]] static bool hasObserver(const SceneItem::Ptr& item,
                                          const Observer::Ptr& observer);
    /// Whether the item at `path` is observed. Observers that died without being removed count.
    [[nodiscard]] static bool hasObservers(const Path& path);
    /// Whether an item of the run-time was ever observed; stays true when the last observer has
    /// gone.
    [[nodiscard]] static bool hasObservers(Rtid runTimeId);

    /// Tells the observers of all attributes, then those of the item.
    static void notify(const AttributeChanged& notification);
};

/// What attribute editors need beyond the first interface.
class KIV_EXPORT Attributes_v4_2 : public Attributes
{
public:
    using Ptr = std::shared_ptr<Attributes_v4_2>;

    ~Attributes_v4_2() override;

    /// How to label, reset and restrict the attribute; null when there is none of that name or
    /// nothing is known of it.
    [[nodiscard]] virtual AttributeDef::Ptr attributeDef(const std::string& name) const = 0;
};

} // namespace Kiv_v4

#include "kiv/attributesHandler.h" // for code that knows this header alone
