// A stranger's program: casts and catches across the borders of the libraries.
#include "kiv/assimp/sceneFile.h"
#include "kiv/host/undoHistory.h"
#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

int main()
{
    Kiv::host::UndoHistory history;
    Kiv::memory::RunTime runTime;
    const auto root = runTime.model().item(runTime.model().root());
    const auto size = std::dynamic_pointer_cast<Kiv::AttributeFloat>(
        Kiv::Attributes::attributes(root)->addAttribute(Kiv::Attribute::kFloat, "size"));
    history.executeCmd(size->setCmd(2.5F));
    try {
        static_cast<void>(Kiv::assimp::read("nowhere.gltf"));
    } catch (const Kiv::assimp::ImportError&) {
        return history.undo() && size->get() == 0.0F ? 0 : 1;
    }
    return 2;
}
