#pragma once

#include <nlohmann/json.hpp>

#include "kiv/sceneItem.h"

#include "output.h"

namespace app {

/// Writes the item's path as one line.
void writePath(const Kiv_v4::SceneItem& item, Output& output);

/// A JSON array of items, written as they come, one a line.
class JsonItems
{
public:
    explicit JsonItems(Output& output) : _output(output) {}

    void add(const Kiv_v4::SceneItem& item);

    /// Closes the array. Not done by the destructor, which could not report.
    void end();

private:
    Output& _output;
    bool _isEmpty = true;
};

} // namespace app
