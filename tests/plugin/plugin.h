#pragma once

#include "kiv/kiv.h"

/// The protocol of the test host and its plug-in, beyond the library.
namespace plugin {

class KIV_EXPORT Item : public Kiv_v4::SceneItem
{
public:
    using SceneItem::SceneItem;

    [[nodiscard]] virtual Kiv_v4::Value note() const = 0;
};

/// The observer that the host passes to the plug-in, which notifies it of each item that it makes.
class KIV_EXPORT Listener : public Kiv_v4::Observer
{
public:
    std::function<void(const Kiv_v4::SceneItem&)> made;
};

/// Thrown by the plug-in instead of making the item "refused".
class KIV_EXPORT Refused : public Kiv_v4::InvalidPath
{
public:
    using InvalidPath::InvalidPath;
};

/// The plug-in's one symbol, `load`. The destructor of the object in `plugin` takes everything
/// back.
using Load = void(const Kiv_v4::Observer::Ptr& host, std::shared_ptr<void>& plugin);

} // namespace plugin
