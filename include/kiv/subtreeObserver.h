#pragma once

#include <functional>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4 {

/// Selects the changes of the scene that concern one subtree, single ones and those of a batch
/// alike: for panels that show a part of a large scene.
///
///     const auto observer = std::make_shared<SubtreeObserver>(props->path(), refresh);
///     Scene::instance().addObserver(observer);
///
/// A change concerns the subtree if it changes the top, an item below it, or an ancestor, which
/// takes the subtree along, and if it brings an item into the subtree. Segments count as in
/// `Path::isAtOrBelow`.
///
/// The path of the top never changes. A panel that follows its items must make another observer
/// when the top or an ancestor is renamed or moved.
///
/// **Cost.** A change elsewhere costs a comparison of paths.
class KIV_EXPORT SubtreeObserver : public Observer
{
public:
    /// Called with a change.
    using Work = std::function<void(const SceneCompositeNotification::Op&)>;

    /// Calls `work`, which must not be empty, for each change that concerns the subtree at `top`.
    SubtreeObserver(Path top, Work work);
    ~SubtreeObserver() override;

    /// The path of the subtree's topmost item.
    [[nodiscard]] const Path& top() const noexcept { return _top; }

    void operator()(const Notification& notification) override;

private:
    [[nodiscard]] KIV_HIDDEN bool isAbout(const Path& path) const noexcept;

    const Path _top;
    const Work _work;
};

} // namespace Kiv_v4
