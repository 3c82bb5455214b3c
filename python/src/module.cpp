#include <cstdlib>

#include "bound.h"

namespace bound {

void bindErrors(nb::module_& module);
void bindValues(nb::module_& module);
void bindPaths(nb::module_& module);
void bindItems(nb::module_& module);
void bindItemShortcuts(nb::module_& module);
void bindSubjects(nb::module_& module);
void bindLogs(nb::module_& module);
void bindSelections(nb::module_& module);
void bindGuards(nb::module_& module);
void bindCommands(nb::module_& module);
void bindSelectionSteps(nb::module_& module);
void bindAttributes(nb::module_& module);
void bindObjects(nb::module_& module);
void bindInterfaces(nb::module_& module);
void bindSceneFiles(nb::module_& module);
void bindObservedItems(nb::module_& module);
void bindRegistry(nb::module_& module);
void bindKit(nb::module_& module);
void bindKitBases(nb::module_& module);
void bindTransforms(nb::module_& module);
void bindMounts(nb::module_& module);
void bindHost(nb::module_& module);
void bindSceneTree(nb::module_& module);
void bindReports(nb::module_& module);
void bindMemory(nb::module_& module);
void bindConformance(nb::module_& module);

} // namespace bound

NB_MODULE(_kiv, module)
{
    bound::nb::set_leak_warnings(std::getenv("KIV_LEAK_WARNINGS") != nullptr);
    // Classes tell the module that users import them from.
    module.attr("__name__") = "kiv";
    for (const auto bind : {
             &bound::bindBookkeeping,
             &bound::bindErrors,
             &bound::bindValues,
             &bound::bindPaths,
             &bound::bindItems,
             &bound::bindSubjects,
             &bound::bindLogs,
             &bound::bindSelections,
             &bound::bindGuards,
             &bound::bindCommands,
             &bound::bindSelectionSteps,
             &bound::bindAttributes,
             &bound::bindObjects,
             &bound::bindInterfaces,
             &bound::bindItemShortcuts,
             &bound::bindSceneFiles,
             &bound::bindObservedItems,
             &bound::bindRegistry,
         }) {
        bind(module);
    }
    module.attr("__name__") = "kiv._kiv";

    const auto submodule = [&](const char* name, auto... binders) {
        auto part = module.def_submodule(name);
        part.attr("__name__") = std::string("kiv.") + name;
        (binders(part), ...);
    };
    submodule("host", &bound::bindHost, &bound::bindSceneTree, &bound::bindReports);
    submodule("kit", &bound::bindKit, &bound::bindTransforms, &bound::bindKitBases,
              &bound::bindMounts);
    submodule("memory", &bound::bindMemory);
    submodule("conformance", &bound::bindConformance);
}
