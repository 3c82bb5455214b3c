// A scene in memory, browsed without knowing which data model its items belong to.
#include <iostream>

#include "kiv/kiv.h"
#include "kiv/memory/runTime.h"

int main()
{
    // A data model registers under a name for as long as this object lives.
    Kiv::memory::RunTime runTime;
    auto& model = runTime.model();
    const auto props = model.make(model.root(), "group", "props");
    model.make(props->path(), "mesh", "cube");
    model.make(props->path(), "camera", "closeUp");

    // The rest works with any data model: text becomes a path, a path an item, an item a view.
    const auto item = Kiv::Hierarchy::createItem(Kiv::PathString::path("/world/props"));
    for (const auto& child : Kiv::Hierarchy::hierarchy(item)->children()) {
        std::cout << Kiv::PathString::string(child->path()) << "  " << child->nodeType() << '\n';
    }
}
