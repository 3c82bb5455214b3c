#include <string>
#include <vector>

#include "kiv/host/itemProperties.h"

#include "report/itemReport.h"
#include "shell/commands/editing.h"
#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"
#include "terminal/diagnostics.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

/// Prints all properties under the names that set them.
void print(const Session& session, Section properties)
{
    properties.title.clear();
    for (auto& property : properties.facts) {
        property.label = property.key;
    }
    writeText({properties}, session.output());
}

/// The property that the user names; fails with those that the item has when it is none.
const host::Property& requireProperty(const host::ItemProperties& properties,
                                      const SceneItem::Ptr& item, const char* group,
                                      const std::string& name)
{
    if (const auto* property = host::findProperty(group, name)) {
        return *property;
    }
    std::vector<std::string> names;
    for (const auto* property : properties.of(group)) {
        names.push_back(property->name);
    }
    fail(item, "has no property '" + name + "'" + alternatives(name, names));
}

/// Sets the property of the group that the arguments name or prints it or, without one, all.
void editOrPrint(Session& session, const Arguments& arguments, const char* group)
{
    const auto item = session.item(arguments[0]);
    const host::ItemProperties properties(item);
    if (properties.of(group).empty()) {
        fail(item, std::string("is no ") + group);
    }
    if (arguments.size() == 1) {
        return print(session, app::properties(item, group));
    }
    const auto& property = requireProperty(properties, item, group, arguments[1]);
    const auto value = properties.value(property);
    if (!value) {
        fail(item, "is no " + property.owner);
    }
    if (arguments.size() == 2) {
        return session.output().line(printable(host::valueText(*value)));
    }
    edit(property.name + " " + item->nodeName(), item,
         properties.setCmd(property, valueLike(*value, arguments.from(2))));
}

void editCamera(Session& session, const Arguments& arguments)
{
    editOrPrint(session, arguments, host::kCamera);
}

void editLight(Session& session, const Arguments& arguments)
{
    editOrPrint(session, arguments, host::kLight);
}

constexpr Command kCamerasAndLights[] = {
    {"camera", "ITEM [PROPERTY] [VALUE...]",
     "Print a camera or one of its properties, or set that.", "camera stage/close focalLength 85",
     editCamera},
    {"light", "ITEM [PROPERTY] [VALUE...]", "Print a light or one of its properties, or set that.",
     "light stage/key intensity 2.5", editLight},
};

} // namespace

CommandKind camerasAndLights()
{
    return {"Cameras and lights", kCamerasAndLights};
}

} // namespace app::shell
