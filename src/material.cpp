#include "kiv/material.h"

#include "detail/dispatch.h"

namespace Kiv_v4 {

Material::Material() = default;

Material::~Material() = default;

Material::Ptr Material::material(const SceneItem::Ptr& item)
{
    return detail::dispatch("material", "src/material", item, &RunTimeMgr::materialHandler,
                            [&](auto& handler) { return handler.material(item); });
}

MaterialHandler::MaterialHandler() = default;

MaterialHandler::~MaterialHandler() = default;

} // namespace Kiv_v4
