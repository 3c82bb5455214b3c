#pragma once

#include <memory>
#include <vector>

#include "kiv/export.h"
#include "kiv/sceneItem.h"

namespace Kiv_v4 {

/// The materials of one scene item.
class KIV_EXPORT Material
{
public:
    using Ptr = std::shared_ptr<Material>;

    /// The materials of `item`; null for a null item, an empty path, a run-time without this
    /// interface, and an item without it. Logs and rethrows the run-time's exceptions.
    [[nodiscard]] static Ptr material(const SceneItem::Ptr& item);

    Material();
    Material(const Material&) = delete;
    Material& operator=(const Material&) = delete;
    virtual ~Material();

    /// The items that stand for the materials bound to the item, each once, in the order of its
    /// parts.
    [[nodiscard]] virtual std::vector<SceneItem::Ptr> materials() const = 0;
};

} // namespace Kiv_v4

#include "kiv/materialHandler.h" // for code that knows this header alone
