#include "managers.h"
#include "overrides.h"

namespace bound {

namespace {

using kiv::UndoableCommand;
using kiv::UndoableCommandMgr;

/// A command written in Python, which may tell the run-time that it belongs to.
template <class Base>
class PyCommand : public Derivable<Base>, public kiv::RunTimeCommand
{
public:
    using Derivable<Base>::Derivable;
    using Bound = Base;
    KIV_NOUN(std::string, commandString)
    KIV_METHOD(void, execute, (), ())
    KIV_PURE_METHOD(void, undo, (), ())
    KIV_PURE_METHOD(void, redo, (), ())

    [[nodiscard]] bool belongsTo(kiv::Rtid runTimeId) const override
    {
        const nb::gil_scoped_acquire held;
        const auto id = nb::getattr(this->_python.self(), "run_time_id", nb::none());
        return !id.is_none() && nb::cast<kiv::Rtid>(id) == runTimeId;
    }
};

class PyItemCommand : public PyCommand<kiv::SceneItemResultUndoableCommand>
{
public:
    using PyCommand::PyCommand;
    KIV_PURE_NOUN(kiv::SceneItem::Ptr, sceneItem)
};

class PyInsertCommand : public PyCommand<kiv::InsertChildCommand>
{
public:
    using PyCommand::PyCommand;
    KIV_PURE_NOUN(kiv::SceneItem::Ptr, insertedChild)
};

class PyAttributeCommand : public PyCommand<kiv::AttributeResultUndoableCommand>
{
public:
    using PyCommand::PyCommand;
    KIV_PURE_NOUN(kiv::Attribute::Ptr, attribute)
};

class PyConnectionCommand : public PyCommand<kiv::ConnectionResultUndoableCommand>
{
public:
    using PyCommand::PyCommand;
    KIV_PURE_NOUN(kiv::Connection::Ptr, connection)
};

class PySelectionCommand : public PyCommand<kiv::SelectionUndoableCommand>
{
public:
    using PyCommand::PyCommand;
    KIV_PURE_CONST_METHOD(kiv::SceneItem::Ptr, targetItem, (const kiv::Path& path), (path))
};

class PyManager : public Derivable<UndoableCommandMgr>
{
public:
    using Derivable::Derivable;
    KIV_CONST_METHOD(void, executeCmd, (const UndoableCommand::Ptr& command), (command))
    KIV_CONST_METHOD(void, registerCmd, (const UndoableCommand::Ptr& command), (command))
};

template <class T, class Trampoline>
Class<T, UndoableCommand, Trampoline> bindResult(nb::module_& module, const char* name)
{
    Class<T, UndoableCommand, Trampoline> type(module, name);
    type.def(nb::init<>());
    return type;
}

void bindCommand(nb::module_& module)
{
    Class<UndoableCommand, PyCommand<UndoableCommand>> type(module, "UndoableCommand");
    type.def(nb::init<>());
    type.property("commandString", &UndoableCommand::commandString);
    type.method("execute", &UndoableCommand::execute);
    type.method("undo", &UndoableCommand::undo);
    type.method("redo", &UndoableCommand::redo);
    type.def(
        "belongs_to",
        [](const UndoableCommand& self, kiv::Rtid id) {
            const auto* const ofRunTime = dynamic_cast<const kiv::RunTimeCommand*>(&self);
            return ofRunTime && ofRunTime->belongsTo(id);
        },
        "run_time_id"_a, contract("RunTimeCommand::belongsTo"));
    type.def("__repr__", [](nb::handle self) {
        return nb::str("<{} {!r}>")
            .format(self.type().attr("__name__"), self.attr("command_string"));
    });

    bindResult<kiv::SceneItemResultUndoableCommand, PyItemCommand>(module,
                                                                   "SceneItemResultUndoableCommand")
        .property("sceneItem", &kiv::SceneItemResultUndoableCommand::sceneItem);
    bindResult<kiv::InsertChildCommand, PyInsertCommand>(module, "InsertChildCommand")
        .property("insertedChild", &kiv::InsertChildCommand::insertedChild);
    bindResult<kiv::AttributeResultUndoableCommand, PyAttributeCommand>(
        module, "AttributeResultUndoableCommand")
        .property("attribute", &kiv::AttributeResultUndoableCommand::attribute);
    bindResult<kiv::ConnectionResultUndoableCommand, PyConnectionCommand>(
        module, "ConnectionResultUndoableCommand")
        .property("connection", &kiv::ConnectionResultUndoableCommand::connection);
    bindResult<kiv::SelectionUndoableCommand, PySelectionCommand>(module,
                                                                  "SelectionUndoableCommand")
        .method("targetItem", &kiv::SelectionUndoableCommand::targetItem, "source_path"_a);
}

void bindComposites(nb::module_& module)
{
    using Composite = kiv::CompositeUndoableCommand;
    Class<Composite, UndoableCommand> type(module, "CompositeUndoableCommand");
    type.def(
        "__init__",
        [](Composite* self, const Composite::Commands& commands) {
            new (self) Composite(commands);
        },
        "commands"_a = Composite::Commands());
    type.method("append", &Composite::append, "command"_a);
    type.property("cmdsList", &Composite::cmdsList);
    type.def("__len__", [](const Composite& self) { return self.cmdsList().size(); });
    type.def("__iter__", [](const Composite& self) { return nb::iter(nb::cast(self.cmdsList())); });
    using Batch = kiv::BatchCompositeCommand;
    Class<Batch, Composite> batch(module, "BatchCompositeCommand");
    batch.def(nb::init<const kiv::Selection&, const std::string&>(), "selection"_a,
              "operation_name"_a);
    batch.constant("execSubOp", Batch::execSubOp);
    batch.constant("undoSubOp", Batch::undoSubOp);
    batch.constant("redoSubOp", Batch::redoSubOp);
}

/// A command whose values can be set again, as a drag does.
template <class T>
void bindSetter(nb::module_& module, const char* name)
{
    Class<T, kiv::BaseUndoableCommand> type(module, name);
    type.def("set", &T::set, contract("SetValueUndoableCommand::set"));
}

void bindSetters(nb::module_& module)
{
    Class<kiv::BaseUndoableCommand, UndoableCommand> type(module, "BaseUndoableCommand");
    type.property("path", [](const kiv::BaseUndoableCommand& self) { return self.path(); });
    bindSetter<kiv::SetBoolUndoableCommand>(module, "SetBoolUndoableCommand");
    bindSetter<kiv::SetIntUndoableCommand>(module, "SetIntUndoableCommand");
    bindSetter<kiv::SetFloatUndoableCommand>(module, "SetFloatUndoableCommand");
    bindSetter<kiv::SetDoubleUndoableCommand>(module, "SetDoubleUndoableCommand");
    bindSetter<kiv::SetColor3fUndoableCommand>(module, "SetColor3fUndoableCommand");
    bindSetter<kiv::SetColor4fUndoableCommand>(module, "SetColor4fUndoableCommand");
    bindSetter<kiv::SetMatrix3dUndoableCommand>(module, "SetMatrix3dUndoableCommand");
    bindSetter<kiv::SetMatrix4dUndoableCommand>(module, "SetMatrix4dUndoableCommand");
    bindSetter<kiv::SetFloat2UndoableCommand>(module, "SetFloat2UndoableCommand");
    bindSetter<kiv::SetFloat3UndoableCommand>(module, "SetFloat3UndoableCommand");
    bindSetter<kiv::SetDouble3UndoableCommand>(module, "SetDouble3UndoableCommand");
    bindSetter<kiv::SetFloat4UndoableCommand>(module, "SetFloat4UndoableCommand");
    bindSetter<kiv::SetConePropsUndoableCommand>(module, "SetConePropsUndoableCommand");
    bindSetter<kiv::SetSpherePropsUndoableCommand>(module, "SetSpherePropsUndoableCommand");
}

/// One undo step for a `with` block; it succeeds unless the block raises.
struct CommandBlock
{
    std::string name;
    std::unique_ptr<kiv::UndoableCommandGuard> guard{};
};

void bindCommandMgr(nb::module_& module)
{
    Class<UndoableCommandMgr, PyManager> type(module, "UndoableCommandMgr");
    type.def(nb::init<>());
    type.function("initializeInstance", &UndoableCommandMgr::initializeInstance,
                  "manager"_a.none());
    type.function(
        "instance",
        []() -> UndoableCommandMgr& {
            requireManager();
            return UndoableCommandMgr::instance();
        },
        nb::rv_policy::reference);
    type.method("executeCmd", &UndoableCommandMgr::executeCmd, "command"_a);
    type.method("registerCmd", &UndoableCommandMgr::registerCmd, "command"_a);
    atExit([] { UndoableCommandMgr::initializeInstance(nullptr); });

    nb::class_<CommandBlock> guard(module, "UndoableCommandGuard",
                                   contract("UndoableCommandGuard"));
    guard.def(
        "__init__",
        [](CommandBlock* self, std::string name) { new (self) CommandBlock{std::move(name)}; },
        "name"_a);
    guard.def("__enter__", [](nb::object self) {
        requireManager();
        auto* const block = nb::inst_ptr<CommandBlock>(self);
        block->guard = std::make_unique<kiv::UndoableCommandGuard>(block->name);
        return self;
    });
    guard.def(
        "__exit__",
        [](CommandBlock& self, nb::handle raised, nb::handle, nb::handle) {
            if (raised.is_none()) {
                kiv::UndoableCommandGuard::setSuccess();
            }
            self.guard.reset();
        },
        "type"_a.none(), "value"_a.none(), "traceback"_a.none());
}

} // namespace

void bindCommands(nb::module_& module)
{
    bindCommand(module);
    bindComposites(module);
    bindSetters(module);
    bindCommandMgr(module);
}

} // namespace bound
