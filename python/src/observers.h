#pragma once

#include <functional>
#include <memory>

#include "kiv/observer.h"

#include "bound.h"

namespace bound {

/// A notification for Python: a copy, good for as long as Python keeps it; one that Python made is
/// that object.
nb::object told(const kiv::Notification& notification);

/// An observer that calls a Python function.
class FunctionObserver : public kiv::Observer
{
public:
    explicit FunctionObserver(nb::callable function);
    ~FunctionObserver() override;

    void operator()(const kiv::Notification& notification) override;

    [[nodiscard]] const nb::callable& function() const noexcept { return _function; }

private:
    nb::callable _function;
};

/// An observer at its subject. It observes until it is closed or dropped.
class Observation
{
public:
    using Remove = std::function<void(const kiv::Observer::Ptr&)>;

    Observation(std::shared_ptr<FunctionObserver> observer, nb::object subject, Remove remove);
    Observation(Observation&&) = default;
    ~Observation();

    void close();
    [[nodiscard]] bool isOpen() const noexcept { return _observer != nullptr; }
    [[nodiscard]] const std::shared_ptr<FunctionObserver>& observer() const noexcept
    {
        return _observer;
    }
    [[nodiscard]] const nb::object& subject() const noexcept { return _subject; }

private:
    std::shared_ptr<FunctionObserver> _observer; ///< Null when it is closed.
    nb::object _subject; ///< Outlives the observer, as far as it is Python's.
    Remove _remove;
};

void bindObservation(nb::module_& module);

/// Makes an observer of `function` and adds it by `add`.
template <class Add>
Observation observed(nb::callable function, nb::object subject, Add add, Observation::Remove remove)
{
    auto observer = std::make_shared<FunctionObserver>(std::move(function));
    add(observer);
    return {std::move(observer), std::move(subject), std::move(remove)};
}

/// The observers of a subject, for a class that is one, also where Python does not see the base.
template <class T, class Bound>
void bindSubjectMembers(Bound& type)
{
    type.def(
        "add_observer",
        [](nb::object self, nb::callable observer) {
            auto* const subject = nb::inst_ptr<T>(self);
            return observed(
                std::move(observer), self, [&](const auto& made) { subject->addObserver(made); },
                [subject](const auto& made) { subject->removeObserver(made); });
        },
        "observer"_a, contract("Subject::addObserver"));
    type.def(
        "remove_observer",
        [](T&, Observation& observation) {
            const auto wasOpen = observation.isOpen();
            observation.close();
            return wasOpen;
        },
        "observation"_a, contract("Subject::removeObserver"));
    type.def(
        "has_observer",
        [](const T& self, const Observation& observation) {
            return observation.isOpen() && self.hasObserver(observation.observer());
        },
        "observation"_a, contract("Subject::hasObserver"));
    type.def_prop_ro(
        "nb_observers", [](const T& self) { return self.nbObservers(); },
        contract("Subject::nbObservers"));
    type.def_prop_ro(
        "has_observers", [](const T& self) { return self.hasObservers(); },
        contract("Subject::hasObservers"));
    type.def(
        "notify", [](T& self, const kiv::Notification& notification) { self.notify(notification); },
        "notification"_a, contract("Subject::notify"));
    type.def_prop_ro(
        "in_composite_notification", [](const T& self) { return self.inCompositeNotification(); },
        contract("Subject::inCompositeNotification"));
    type.def(
        "begin_notification_guard", [](T& self) { self.beginNotificationGuard(); },
        contract("Subject::beginNotificationGuard"));
    type.def(
        "end_notification_guard", [](T& self) { self.endNotificationGuard(); },
        contract("Subject::endNotificationGuard"));
}

/// The observers that an interface keeps of single items, `Camera::addObserver(item, observer)`.
template <class T, class Bound>
void bindItemObservers(Bound& type)
{
    type.function(
        "addObserver",
        [](const kiv::SceneItem::Ptr& item, nb::callable observer) {
            return observed(
                std::move(observer), nb::none(),
                [&](const auto& made) { T::addObserver(item, made); },
                [item](const auto& made) { T::removeObserver(item, made); });
        },
        "item"_a, "observer"_a);
    type.function(
        "removeObserver",
        [](const kiv::SceneItem::Ptr&, Observation& observation) {
            const auto wasOpen = observation.isOpen();
            observation.close();
            return wasOpen;
        },
        "item"_a, "observation"_a);
    type.function(
        "nbObservers", [](const kiv::SceneItem::Ptr& item) { return T::nbObservers(item); },
        "item"_a);
    type.function(
        "hasObserver",
        [](const kiv::SceneItem::Ptr& item, const Observation& observation) {
            return observation.isOpen() && T::hasObserver(item, observation.observer());
        },
        "item"_a, "observation"_a);
    type.function(
        "hasObservers", [](const kiv::Path& path) { return T::hasObservers(path); }, "path"_a);
    type.function(
        "hasObservers", [](kiv::Rtid id) { return T::hasObservers(id); }, "run_time_id"_a);
}

/// The observers that an interface keeps of all items, `Object3d::addObserver(observer)`.
template <class T, class Bound>
void bindGlobalObservers(Bound& type)
{
    type.function(
        "addObserver",
        [](nb::callable observer) {
            return observed(
                std::move(observer), nb::none(), [](const auto& made) { T::addObserver(made); },
                [](const auto& made) { T::removeObserver(made); });
        },
        "observer"_a);
    type.function(
        "removeObserver",
        [](Observation& observation) {
            const auto wasOpen = observation.isOpen();
            observation.close();
            return wasOpen;
        },
        "observation"_a);
    type.function("nbObservers", [] { return T::nbObservers(); });
    type.function(
        "hasObserver",
        [](const Observation& observation) {
            return observation.isOpen() && T::hasObserver(observation.observer());
        },
        "observation"_a);
}

} // namespace bound
