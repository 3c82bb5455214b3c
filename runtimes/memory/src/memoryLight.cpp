#include "memoryLight.h"

#include <utility>

#include "kiv/kit/handlers.h"
#include "kiv/kit/lights.h"

#include "nodeTypes.h"
#include "propertyCommands.h"

namespace Kiv_v4::memory {

namespace {

struct LightRecord : kit::LightValues
{
    LightRecord() { cone = {40, 5, 0}; }

    static void announce(const Path& path, const Node&) { Light::notify(path); }
};

using LightProperties = RecordProperties<LightRecord>;

/// A light whose kind is that of its item's type.
class MemoryLight : public kit::LightOf<LightProperties>
{
public:
    MemoryLight(LightProperties properties, Type type) : LightOf(std::move(properties)), _type(type)
    {}

    [[nodiscard]] Type type() const override { return _type; }

private:
    const Type _type;
};

} // namespace

LightHandler::Ptr makeLightHandler(const std::shared_ptr<Tree>& tree)
{
    return kit::lightHandler([tree](const SceneItem::Ptr& item) -> Light::Ptr {
        const auto* node = tree->find(*item);
        const auto kind = node ? lightKind(node->type) : std::nullopt;
        return kind ? std::make_shared<MemoryLight>(LightProperties(tree, item), *kind) : nullptr;
    });
}

} // namespace Kiv_v4::memory
