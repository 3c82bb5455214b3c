#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "kiv/kit/setting.h"
#include "kiv/pathString.h"
#include "kiv/sceneItem.h"

#include "assimpItem.h"

namespace Kiv_v4::assimp {

/// The file's record of a node, which must have one.
template <class Record>
[[nodiscard]] Record recordInFile(const SceneFile& file, NodeIndex index);
template <>
TransformRecord recordInFile(const SceneFile& file, NodeIndex index);
template <>
CameraRecord recordInFile(const SceneFile& file, NodeIndex index);
template <>
LightRecord recordInFile(const SceneFile& file, NodeIndex index);
template <>
VisibilityRecord recordInFile(const SceneFile& file, NodeIndex index);

/// Notifies the observers that the record of the item at `path` changed.
template <class Record>
void announce(const Path& path);
template <>
void announce<TransformRecord>(const Path& path);
template <>
void announce<CameraRecord>(const Path& path);
template <>
void announce<LightRecord>(const Path& path);
template <>
void announce<VisibilityRecord>(const Path& path);

/// A node or material of a mounted file for the interfaces of its item: the edits of the mount,
/// otherwise the data of the file. It follows the mount when its gateway is renamed.
class MountedNode
{
public:
    MountedNode(SceneItem::Ptr item, std::shared_ptr<FileMount> mount, NodeIndex index)
        : _item(std::move(item)), _mount(std::move(mount)), _gateway(_mount->gateway()),
          _index(index)
    {}

    /// The item under the present gateway of the file; while the file is not shown, under the last
    /// one.
    [[nodiscard]] const SceneItem::Ptr& item() const;

    [[nodiscard]] const std::shared_ptr<FileMount>& mount() const noexcept { return _mount; }
    [[nodiscard]] const SceneFile& file() const noexcept { return *_mount->file; }
    [[nodiscard]] const Edits& edits() const noexcept { return _mount->edits; }
    [[nodiscard]] NodeIndex index() const noexcept { return _index; }

    [[nodiscard]] bool isMounted() const noexcept { return _mount->isShown(); }

    /// `std::nullopt` if the node was not edited.
    template <class Record>
    [[nodiscard]] std::optional<Record> edited() const
    {
        const auto* record = edits().find<Record>(_index);
        return record ? std::optional(*record) : std::nullopt;
    }

    template <class Record>
    [[nodiscard]] Record get() const
    {
        const auto* record = edits().find<Record>(_index);
        return record ? *record : recordInFile<Record>(file(), _index);
    }

    template <class Record, class Value>
    [[nodiscard]] Value get(Value Record::*member) const
    {
        return get<Record>().*member;
    }

    /// Sets the record, or makes the node unedited, and notifies the observers. Throws
    /// `std::runtime_error` if the file is no longer mounted.
    template <class Record>
    void put(const std::optional<Record>& record) const
    {
        if (!isMounted()) {
            throw std::runtime_error("The file of '" + PathString::string(_item->path()) +
                                     "' is no longer mounted.");
        }
        _mount->edits.put(_index, record);
        announce<Record>(item()->path());
    }

    /// A command, derived from `Base`, one of the set-value commands, that calls `change(record,
    /// arguments...)`. Null if that refuses by returning false.
    template <class Base, class Record, class... Arguments>
    [[nodiscard]] UndoableCommand::Ptr
    changeCmd(const std::string& verb, bool (*change)(Record&, Arguments...),
              std::type_identity_t<Arguments>... arguments) const;

    /// A command that sets one value of a record; null if `kit::Setting` refuses the arguments.
    template <class Record, class Value, class... Arguments>
    [[nodiscard]] UndoableCommand::Ptr setCmd(const std::string& verb, Value Record::*member,
                                              const Arguments&... arguments) const;

private:
    mutable SceneItem::Ptr _item;
    std::shared_ptr<FileMount> _mount;
    mutable Path _gateway; ///< The gateway above `_item`.
    NodeIndex _index;
};

/// Changes a record by a function of the record and the arguments of the set-value command `Base`.
/// While executed, keeps the previous record for undo.
template <class Record, class Base, class Set = decltype(&Base::set)>
class EditCommand;
template <class Record, class Base, class... Arguments>
class EditCommand<Record, Base, bool (Base::*)(Arguments...)> : public Base
{
public:
    using Change = std::function<bool(Record&, Arguments...)>;

    EditCommand(MountedNode node, const std::string& verb, Change change, Arguments... arguments)
        : Base(node.item()->path()), _node(std::move(node)),
          _name(verb + " " + _node.item()->nodeName()), _change(std::move(change)),
          _arguments(arguments...)
    {}

    [[nodiscard]] std::string commandString() const override { return _name; }

    bool set(Arguments... arguments) override
    {
        auto record = _node.template get<Record>();
        if (!_node.isMounted() || !_change(record, arguments...)) {
            return false;
        }
        _arguments = {arguments...};
        redo();
        return true;
    }

    void undo() override
    {
        if (_before) {
            _node.put(*_before);
            _before.reset();
        }
    }

    void redo() override
    {
        auto record = _node.template get<Record>();
        const auto changed = std::apply(
            [&](const auto&... arguments) { return _change(record, arguments...); }, _arguments);
        if (!changed) {
            throw std::runtime_error("'" + PathString::string(Base::path()) +
                                     "' no longer accepts this edit.");
        }
        auto before = _before ? *_before : _node.template edited<Record>();
        _node.put(std::optional(record));
        _before = std::move(before);
    }

private:
    const MountedNode _node;
    const std::string _name;
    const Change _change;
    std::tuple<std::decay_t<Arguments>...> _arguments;
    std::optional<std::optional<Record>> _before; ///< Set while the command is executed.
};

template <class Base, class Record, class... Arguments>
UndoableCommand::Ptr MountedNode::changeCmd(const std::string& verb,
                                            bool (*change)(Record&, Arguments...),
                                            std::type_identity_t<Arguments>... arguments) const
{
    auto record = get<Record>();
    return isMounted() && change(record, arguments...)
               ? std::make_shared<EditCommand<Record, Base>>(*this, verb, change, arguments...)
               : nullptr;
}

template <class Record, class Value, class... Arguments>
UndoableCommand::Ptr MountedNode::setCmd(const std::string& verb, Value Record::*member,
                                         const Arguments&... arguments) const
{
    using Setting = kit::Setting<Value>;
    const auto change = [member](Record& record, const Arguments&... given) {
        const auto value = Setting::from(given...);
        if (value) {
            record.*member = *value;
        }
        return value.has_value();
    };
    return isMounted() && Setting::from(arguments...)
               ? std::make_shared<EditCommand<Record, typename Setting::Command>>(
                     *this, verb, change, arguments...)
               : nullptr;
}

} // namespace Kiv_v4::assimp
