#include "kiv/detail/pathBody.h"

#include <memory>

namespace Kiv_v4::detail {

const PathBody::Segments& PathBody::makeSegments() const
{
    auto all = std::make_unique<Segments>();
    all->reserve(_nbSegments);
    for (std::size_t i = 0; i != _nbSegments; ++i) {
        all->emplace_back(segment(i));
    }
    const Segments* made = nullptr;
    if (_segments.compare_exchange_strong(made, all.get(), std::memory_order_acq_rel)) {
        made = all.release();
    }
    return *made;
}

void PathBody::destroy() const noexcept
{
    delete _segments.load(std::memory_order_acquire);
    std::destroy(begin(), end());
    this->~PathBody();
    ::operator delete(const_cast<PathBody*>(this));
}

} // namespace Kiv_v4::detail
