#include "kiv/transform3dPathSubject.h"

#include "kiv/transform3d.h"

namespace Kiv_v4 {

Transform3dPathSubject::Transform3dPathSubject(const Path& path)
    : PathSubject(
          path,
          [](const SceneItem::Ptr& item, const Observer::Ptr& observer) {
              return Transform3d::addObserver(item, observer);
          },
          [](const Path& from, const Observer::Ptr& observer) {
              return Transform3d::removeObserver(from, observer);
          })
{}

Transform3dPathSubject::~Transform3dPathSubject() = default;

} // namespace Kiv_v4
