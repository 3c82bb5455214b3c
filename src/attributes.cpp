#include "kiv/attributes.h"

#include "kiv/attributeNotification.h"

#include "detail/dispatch.h"
#include "detail/executeIfAny.h"
#include "detail/itemObserverRegistry.h"
#include "detail/noDestructor.h"

namespace Kiv_v4 {

namespace {

using ObservedItems = detail::ItemObserverRegistry<AttributeChanged, detail::UnkeptItemSubject>;

/// The subject for the observers of all attributes of all items.
struct AllAttributes : Subject
{};

Subject& allAttributes()
{
    static detail::NoDestructor<AllAttributes> subject;
    return *subject;
}

/// Executes a command and returns its attribute; null if there is no command.
Attribute::Ptr executedAttribute(const AttributeResultUndoableCommand::Ptr& command)
{
    return detail::executeIfAny(command) ? command->attribute() : nullptr;
}

} // namespace

Attributes::Attributes() = default;

Attributes::~Attributes() = default;

Attributes::Ptr Attributes::attributes(const SceneItem::Ptr& item)
{
    return detail::dispatch("attributes", "src/attributes", item, &RunTimeMgr::attributesHandler,
                            [&](auto& handler) { return handler.attributes(item); });
}

Attribute::Ptr Attributes::addAttribute(const std::string& type, const std::string& name)
{
    return executedAttribute(addAttributeCmd(type, name));
}

bool Attributes::removeAttribute(const std::string& name)
{
    return detail::executeIfAny(removeAttributeCmd(name));
}

Attribute::Ptr Attributes::renameAttribute(const std::string& name, const std::string& newName)
{
    return executedAttribute(renameAttributeCmd(name, newName));
}

bool Attributes::addObserver(const Observer::Ptr& observer)
{
    return allAttributes().addObserver(observer);
}

bool Attributes::removeObserver(const Observer::Ptr& observer)
{
    return allAttributes().removeObserver(observer);
}

bool Attributes::hasObserver(const Observer::Ptr& observer)
{
    return allAttributes().hasObserver(observer);
}

std::size_t Attributes::nbObservers()
{
    return allAttributes().nbObservers();
}

bool Attributes::addObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().add(item, observer);
}

bool Attributes::removeObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().remove(item, observer);
}

std::size_t Attributes::nbObservers(const SceneItem::Ptr& item)
{
    return ObservedItems::instance().count(item);
}

bool Attributes::hasObserver(const SceneItem::Ptr& item, const Observer::Ptr& observer)
{
    return ObservedItems::instance().has(item, observer);
}

bool Attributes::hasObservers(const Path& path)
{
    return ObservedItems::instance().hasAny(path);
}

bool Attributes::hasObservers(Rtid runTimeId)
{
    return ObservedItems::instance().hasAny(runTimeId);
}

void Attributes::notify(const AttributeChanged& notification)
{
    allAttributes().notify(notification);
    if (const auto subject = ObservedItems::instance().find(notification.path())) {
        subject->notify(notification);
    }
}

Attributes_v4_2::~Attributes_v4_2() = default;

AttributesHandler::AttributesHandler() = default;

AttributesHandler::~AttributesHandler() = default;

} // namespace Kiv_v4
