// The notes as a plug-in: kiv --plugin notesPlugIn.so tree work.notes
#include "kiv/plugin.h"

#include "notesRunTime.h"

const Kiv_v4::PluginInfo* kivPlugin()
{
    static constexpr auto info = Kiv_v4::pluginInfo<NotesRunTime>("notes");
    return &info;
}
