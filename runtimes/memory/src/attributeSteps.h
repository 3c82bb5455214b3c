#pragma once

#include <memory>
#include <string>

#include "kiv/attributeInfo.h"

#include "steps.h"

namespace Kiv_v4::memory {

// Steps that add, remove, rename and connect attributes. They remember items by path and attributes
// by name, and notify the observers of attributes.

/// Adds an attribute to the item at `item`, after the existing ones.
[[nodiscard]] StepPtr attributeAddition(const std::shared_ptr<Tree>& tree, const Path& item,
                                        AttributeDataPtr attribute);

[[nodiscard]] StepPtr attributeRemoval(const std::shared_ptr<Tree>& tree,
                                       const AttributeInfo& attribute);

[[nodiscard]] StepPtr attributeRenaming(const std::shared_ptr<Tree>& tree,
                                        const AttributeInfo& attribute, const std::string& newName);

[[nodiscard]] StepPtr connection(const std::shared_ptr<Tree>& tree, const AttributeInfo& source,
                                 const AttributeInfo& destination);

[[nodiscard]] StepPtr disconnection(const std::shared_ptr<Tree>& tree, const AttributeInfo& source,
                                    const AttributeInfo& destination);

/// The attribute; null if there is none of that name or no such item.
[[nodiscard]] AttributeData* find(Tree& tree, const AttributeInfo& attribute);
[[nodiscard]] AttributeData* find(Tree& tree, const SceneItem& item, const std::string& name);

/// The attribute; throws `std::invalid_argument` with path and name if there is none.
[[nodiscard]] AttributeData& existing(Tree& tree, const AttributeInfo& attribute);

/// `name`, made valid for an attribute and free on the item; the name `allowed` counts as free.
[[nodiscard]] std::string freeAttributeName(const Node& item, const std::string& name,
                                            const std::string& allowed = {});

} // namespace Kiv_v4::memory
