#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kiv/host/itemCondition.h"
#include "kiv/sceneItem.h"

namespace app {

/// What to look for, as the user says it. An item is found when it meets every criterion.
struct Criteria
{
    bool cameras = false;
    bool lights = false;
    bool hidden = false; ///< Set to be not shown.
    bool ignoresCase = false;
    std::optional<std::string> nodeType;
    std::optional<std::string> name;     ///< A pattern for the whole name.
    std::optional<std::string> material; ///< The same for the name of a bound material.
    std::optional<double> minSize;       ///< Of the longest side of the box in the world.
    std::optional<double> maxSize;
    std::vector<std::string> attributes; ///< As `host::ItemCondition` has them.
    std::vector<std::string> metadata;

    [[nodiscard]] bool any() const;

    /// Whether materials may be found.
    [[nodiscard]] bool mayBeMaterial() const;
};

/// What to say when there is no criterion.
inline constexpr const char* kNoCriterion =
    "one of --cameras, --lights, --type, --name, --material, --attribute, --metadata, --hidden, "
    "--min-size, --max-size is required";

/// Criteria made ready for many items.
class Sieve
{
public:
    /// Throws `std::invalid_argument` with the reason for a condition that is none.
    explicit Sieve(const Criteria& criteria);

    [[nodiscard]] bool holds(const Kiv_v4::SceneItem::Ptr& item) const;

private:
    [[nodiscard]] bool isNamed(const Kiv_v4::SceneItem& item) const;
    [[nodiscard]] bool hasMaterial(const Kiv_v4::SceneItem::Ptr& item) const;
    [[nodiscard]] bool hasSize(const Kiv_v4::SceneItem::Ptr& item) const;

    const Criteria& _criteria;
    std::vector<Kiv_v4::host::ItemCondition> _attributes;
    std::vector<Kiv_v4::host::ItemCondition> _metadata;
};

} // namespace app
