#pragma once

#include <functional>

#include "kiv/export.h"
#include "kiv/observer.h"
#include "kiv/path.h"
#include "kiv/sceneNotification.h"

namespace Kiv_v4 {

/// Hears of the changes of the scene that are about one subtree, single ones and those of a batch
/// alike: for panels that show a part of a large scene.
///
///     const auto observer = std::make_shared<SubtreeObserver>(props->path(), refresh);
///     Scene::instance().addObserver(observer);
///
/// A change is about the subtree when it is of its top, of an item below that, or of an ancestor,
/// which takes the subtree along, and when it brings an item into the subtree. Segments count as in
/// `Path::isAtOrBelow`.
///
/// The top stays the same path. A panel that follows its items makes another observer when it hears
/// of a rename or a move of the top or of an ancestor.
///
/// **Cost.** A change elsewhere costs a comparison of paths.
class KIV_EXPORT SubtreeObserver : public Observer
{
public:
    /// What is done with a change.
    using Work = std::function<void(const SceneCompositeNotification::Op&)>;

    /// `work`, which is not empty, is called for each change that is about the subtree at `top`.
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
