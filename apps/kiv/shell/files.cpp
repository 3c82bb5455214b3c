#include <stdexcept>
#include <string>

#include "command.h"
#include "editing.h"
#include "terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

void mount(Session& session, const Arguments& arguments)
{
    session.scene().mount(arguments[0]);
}

constexpr Command kCommands[] = {
    {"mount", "FILE [NAME]", "Show a scene file under a new item of the current one.", mount},
};

} // namespace

CommandKind files()
{
    return {"Files", kCommands};
}

} // namespace app::shell
