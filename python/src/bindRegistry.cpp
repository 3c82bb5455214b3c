#include <set>

#include "kiv/sceneFileHandler.h"

#include "lifetimes.h"

namespace bound {

namespace {

using kiv::RunTimeMgr;

/// The run-times that Python registered: the interpreter does not end before they do.
std::set<kiv::Rtid>& registered()
{
    static std::set<kiv::Rtid> ids;
    return ids;
}

/// Binds the setter and the getter of a handler of the registry, and the field of the table.
template <class Handler, class Set, class Get, class Field>
void bindHandler(Class<RunTimeMgr>& manager, Class<RunTimeMgr::Handlers>* handlers,
                 const char* setName, const char* getName, Set set, Get get, Field field)
{
    manager.method(
        setName,
        [set](RunTimeMgr& self, kiv::Rtid id, const std::shared_ptr<Handler>& handler) {
            (self.*set)(id, handler);
        },
        "id"_a, "handler"_a.none());
    manager.method(getName, get, "id"_a);
    if constexpr (!std::is_same_v<Field, std::nullptr_t>) {
        handlers->def_prop_rw(
            snakeCase(getName).c_str(),
            [field](const RunTimeMgr::Handlers& self) { return self.*field; },
            [field](RunTimeMgr::Handlers& self, const std::shared_ptr<Handler>& handler) {
                self.*field = handler;
            },
            nb::for_setter(nb::arg("handler").none()),
            contract(std::string("RunTimeMgr::Handlers::") + getName));
    }
}

void bindRunTimeMgr(nb::module_& module)
{
    Class<RunTimeMgr> manager(module, "RunTimeMgr");
    Class<RunTimeMgr::Handlers> handlers(manager, "Handlers", "RunTimeMgr::Handlers");
    handlers.def(
        "__init__",
        [](nb::pointer_and_handle<RunTimeMgr::Handlers> self, const nb::kwargs& given) {
            new (self.p) RunTimeMgr::Handlers();
            nb::inst_mark_ready(self.h);
            for (const auto& [name, handler] : given) {
                if (!nb::hasattr(self.h.type(), name)) {
                    throw nb::type_error(
                        ("no such handler: '" + nb::cast<std::string>(name) + "'").c_str());
                }
                nb::setattr(self.h, name, handler);
            }
        },
        "Takes handlers by their names.");
    manager.function("instance", &RunTimeMgr::instance, nb::rv_policy::reference);
    manager.def(
        "register",
        [](RunTimeMgr& self, const std::string& name, const RunTimeMgr::Handlers& given) {
            const auto id = self.register_(name, given);
            registered().insert(id);
            return id;
        },
        "name"_a, "handlers"_a = RunTimeMgr::Handlers(), contract("RunTimeMgr::register_"));
    manager.method(
        "unregister",
        [](RunTimeMgr& self, kiv::Rtid id) {
            registered().erase(id);
            return self.unregister(id);
        },
        "id"_a);
    manager.method("getName", &RunTimeMgr::getName, "id"_a);
    manager.method("getId", &RunTimeMgr::getId, "name"_a);
    manager.method("hasId", &RunTimeMgr::hasId, "id"_a);
    manager.method("getIds", &RunTimeMgr::getIds);
#define KIV_HANDLER(Type, name, field)                                                             \
    bindHandler<kiv::Type>(manager, &handlers, "set" #Type, #name, &RunTimeMgr::set##Type,         \
                           &RunTimeMgr::name, field)
    KIV_HANDLER(HierarchyHandler, hierarchyHandler, &RunTimeMgr::Handlers::hierarchyHandler);
    KIV_HANDLER(Transform3dHandler, transform3dHandler, &RunTimeMgr::Handlers::transform3dHandler);
    KIV_HANDLER(SceneItemOpsHandler, sceneItemOpsHandler,
                &RunTimeMgr::Handlers::sceneItemOpsHandler);
    KIV_HANDLER(AttributesHandler, attributesHandler, &RunTimeMgr::Handlers::attributesHandler);
    KIV_HANDLER(Object3dHandler, object3dHandler, &RunTimeMgr::Handlers::object3dHandler);
    KIV_HANDLER(MaterialHandler, materialHandler, &RunTimeMgr::Handlers::materialHandler);
    KIV_HANDLER(ContextOpsHandler, contextOpsHandler, &RunTimeMgr::Handlers::contextOpsHandler);
    KIV_HANDLER(UIInfoHandler, uiInfoHandler, &RunTimeMgr::Handlers::uiInfoHandler);
    KIV_HANDLER(CameraHandler, cameraHandler, &RunTimeMgr::Handlers::cameraHandler);
    KIV_HANDLER(LightHandler, lightHandler, &RunTimeMgr::Handlers::lightHandler);
    KIV_HANDLER(PathMappingHandler, pathMappingHandler, &RunTimeMgr::Handlers::pathMappingHandler);
    KIV_HANDLER(NodeDefHandler, nodeDefHandler, &RunTimeMgr::Handlers::nodeDefHandler);
    KIV_HANDLER(SceneSegmentHandler, sceneSegmentHandler,
                &RunTimeMgr::Handlers::sceneSegmentHandler);
    KIV_HANDLER(ConnectionHandler, connectionHandler, &RunTimeMgr::Handlers::connectionHandler);
    KIV_HANDLER(UINodeGraphNodeHandler, uiNodeGraphNodeHandler,
                &RunTimeMgr::Handlers::uiNodeGraphNodeHandler);
    KIV_HANDLER(BatchOpsHandler, batchOpsHandler, &RunTimeMgr::Handlers::batchOpsHandler);
    KIV_HANDLER(CodeWrapperHandler, codeWrapperHandler, nullptr);
    KIV_HANDLER(SceneFileHandler, sceneFileHandler, nullptr);
#undef KIV_HANDLER
    atExit([] {
        for (const auto id : std::exchange(registered(), {})) {
            RunTimeMgr::instance().unregister(id);
        }
    });
}

void bindRegistration(nb::module_& module)
{
    using Registration = Closable<kiv::RunTimeRegistration>;
    auto type = bindClosable<kiv::RunTimeRegistration>(module, "RunTimeRegistration",
                                                       "RunTimeRegistration");
    type.def(nb::init<const std::string&, char, const RunTimeMgr::Handlers&>(), "name"_a,
             "separator"_a, "handlers"_a = RunTimeMgr::Handlers(),
             contract("RunTimeRegistration::RunTimeRegistration"));
    type.def_prop_ro(
        "id", [](const Registration& self) { return self->id(); },
        contract("RunTimeRegistration::id"));
}

void bindEvents(nb::module_& module)
{
    enumeration<kiv::RunTimeEvent>(module, "RunTimeEvent", "RunTimeEvent",
                                   {{"Registered", kiv::RunTimeEvent::Registered},
                                    {"Installed", kiv::RunTimeEvent::Installed},
                                    {"Leaving", kiv::RunTimeEvent::Leaving}});
    function(module, "", "setRunTimeListener", &kiv::setRunTimeListener, "listener"_a.none());
    atExit([] { kiv::setRunTimeListener({}); });
}

void bindVersion(nb::module_& module)
{
    using kiv::VersionInfo;
    Class<VersionInfo> type(module, "VersionInfo");
    type.function("getMajorVersion", &VersionInfo::getMajorVersion);
    type.function("getMinorVersion", &VersionInfo::getMinorVersion);
    type.function("getPatchLevel", &VersionInfo::getPatchLevel);
    type.function("getBuildNumber", &VersionInfo::getBuildNumber);
    type.function("getGitCommit", &VersionInfo::getGitCommit);
    type.function("getGitBranch", &VersionInfo::getGitBranch);
    type.function("getBuildDate", &VersionInfo::getBuildDate);
    module.attr("__version__") =
        nb::str("{}.{}.{}")
            .format(VersionInfo::getMajorVersion(), VersionInfo::getMinorVersion(),
                    VersionInfo::getPatchLevel());
}

} // namespace

void bindRegistry(nb::module_& module)
{
    bindRunTimeMgr(module);
    bindRegistration(module);
    bindEvents(module);
    bindVersion(module);
}

} // namespace bound
