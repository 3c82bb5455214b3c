#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "kiv/kit/announce.h"
#include "kiv/kit/setting.h"
#include "kiv/pathString.h"
#include "kiv/sceneItem.h"

#include "valueCommand.h"

namespace Kiv_v4::kit {

/// All values of an item, such as of its camera, through a pair of functions of its run-time.
/// `Access` has `get` and `set`; `notify` announces a change of the values at a path.
template <class Values, class Access, void (*notify)(const Path&)>
class ValuesAccess
{
public:
    ValuesAccess(std::shared_ptr<const Access> access, SceneItem::Ptr item)
        : _access(std::move(access)), _item(std::move(item))
    {}

    [[nodiscard]] const SceneItem::Ptr& item() const noexcept { return _item; }

    /// The value; for an item without the values, that of new ones.
    template <class Value>
    [[nodiscard]] Value get(Value Values::*member) const
    {
        return _access->get(_item->path()).value_or(Values()).*member;
    }

    template <class Value, class... Arguments>
    [[nodiscard]] UndoableCommand::Ptr setCmd(const std::string& verb, Value Values::*member,
                                              const Arguments&... arguments) const
    {
        auto value = Setting<Value>::from(arguments...);
        return value && _access->set && _access->get(_item->path())
                   ? std::make_shared<Command<Value>>(verb, *this, member, std::move(*value))
                   : nullptr;
    }

private:
    /// Writes one value among the others as they are then.
    template <class Value>
    void put(Value Values::*member, const Value& value) const
    {
        const auto& path = _item->path();
        auto values = _access->get(path);
        if (!values) {
            throw std::runtime_error("'" + PathString::string(path) +
                                     "' no longer accepts this edit.");
        }
        (*values).*member = value;
        _access->set(path, *values);
        announced([&] { notify(path); });
    }

    /// Derived from the set-value command of the type, whose arguments `Set` tells.
    template <class Value, class Set = decltype(&Setting<Value>::Command::set)>
    class Command;
    template <class Value, class Base, class... Arguments>
    class Command<Value, bool (Base::*)(Arguments...)>
        : public ValueCommand<Value, typename Setting<Value>::Command>
    {
    public:
        Command(const std::string& verb, const ValuesAccess& access, Value Values::*member,
                Value value)
            : ValueCommand<Value, typename Setting<Value>::Command>(
                  verb + " " + access.item()->path().back().string(),
                  [access, member] { return access.get(member); },
                  [access, member](const Value& wanted) { access.put(member, wanted); },
                  std::move(value), access.item()->path()),
              _access(access)
        {}

        bool set(Arguments... arguments) override
        {
            auto value = Setting<Value>::from(arguments...);
            const auto isTaken = value && _access._access->get(_access.item()->path());
            if (isTaken) {
                this->change(std::move(*value));
            }
            return isTaken;
        }

    private:
        const ValuesAccess _access;
    };

    std::shared_ptr<const Access> _access;
    SceneItem::Ptr _item;
};

} // namespace Kiv_v4::kit
