#pragma once

#include "kiv/document/workspace.h"
#include "kiv/sceneItem.h"

#include "terminal/output.h"

namespace app {

/// Writes the item's path as one line.
void writePath(const Kiv_v4::SceneItem& item, Output& output);

/// A JSON array of items of a scene, written as they come, one a line.
class JsonItems
{
public:
    JsonItems(const Kiv_v4::document::Workspace& scene, Output& output)
        : _scene(scene), _output(output)
    {}

    void add(const Kiv_v4::SceneItem& item);

    /// Closes the array. Not done by the destructor, which could not report.
    void end();

private:
    const Kiv_v4::document::Workspace& _scene;
    Output& _output;
    bool _isEmpty = true;
};

} // namespace app
