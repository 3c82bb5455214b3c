#include "report/missingNames.h"

#include <algorithm>
#include <limits>
#include <set>
#include <unordered_set>
#include <vector>

#include "kiv/attributes.h"
#include "kiv/host/itemLookup.h"
#include "kiv/host/itemPattern.h"
#include "kiv/host/itemProperties.h"
#include "kiv/host/outline.h"
#include "kiv/material.h"

#include "terminal/diagnostics.h"
#include "terminal/progressLine.h"

namespace app {

using namespace Kiv_v4;

namespace {

using Names = std::set<std::string>;

void forEachItem(const SceneItemList& roots,
                 const std::function<void(const SceneItem::Ptr&)>& visit)
{
    ProgressLine progress("searching names");
    for (const auto& root : roots) {
        host::walk(root, std::numeric_limits<std::size_t>::max(),
                   [&](const SceneItem::Ptr& item, std::size_t) {
                       progress.count();
                       visit(item);
                       return true;
                   });
    }
}

/// The names of items, of their materials, and of what they have.
class NamesOfItems
{
public:
    explicit NamesOfItems(const SceneItemList& roots)
    {
        for (const auto& property : host::propertyTable()) {
            properties.insert(property.name);
        }
        forEachItem(roots, [this](const SceneItem::Ptr& item) {
            add(item);
            addMaterials(item);
        });
    }

    Names items;
    Names materials;
    Names properties; ///< With attributes.

private:
    void add(const SceneItem::Ptr& item)
    {
        items.insert(item->nodeName());
        const auto attributes = Attributes::attributes(item);
        for (auto& name : attributes ? attributes->attributeNames() : std::vector<std::string>()) {
            properties.insert(std::move(name));
        }
    }

    void addMaterials(const SceneItem::Ptr& item)
    {
        const auto material = Material::material(item);
        for (const auto& bound : material ? material->materials() : std::vector<SceneItem::Ptr>()) {
            if (_seen.insert(bound->path()).second) {
                materials.insert(bound->nodeName());
                add(bound);
            }
        }
    }

    std::unordered_set<Path> _seen; ///< Materials.
};

/// What to say of a name with which nothing was found: nothing when it is a pattern, when there is
/// such a name, or none near to it.
std::string trouble(const char* what, const std::string& name, const Names& names, bool ignoresCase)
{
    const auto isKnown = [&](const std::string& known) {
        return host::isLike(known, name, ignoresCase);
    };
    if (host::isPattern(name) || std::ranges::any_of(names, isKnown)) {
        return {};
    }
    const auto meant = host::suggestion(name, {names.begin(), names.end()});
    return meant.empty() ? meant : what + (" '" + name + "'") + meant;
}

} // namespace

void complainOfMissingType(const SceneItemList& roots, const std::string& type, Output& output)
{
    if (type.empty()) {
        return;
    }
    Names types;
    forEachItem(roots, [&](const SceneItem::Ptr& item) { types.insert(item->nodeType()); });
    if (!types.contains(type)) {
        output.flush();
        complain("no item is of type '" + type + "'" +
                 alternatives(type, {types.begin(), types.end()}));
    }
}

void complainOfMissingNames(const SceneItemList& roots, const Criteria& criteria, Output& output)
{
    complainOfMissingType(roots, criteria.nodeType.value_or(""), output);
    if (!criteria.name && !criteria.material && criteria.attributes.empty()) {
        return;
    }
    const NamesOfItems names(roots);
    const auto check = [&](const char* what, const std::string& name, const Names& known) {
        if (const auto text = trouble(what, name, known, criteria.ignoresCase); !text.empty()) {
            output.flush();
            complain(text);
        }
    };
    check("no such item", criteria.name.value_or(""), names.items);
    check("no such material", criteria.material.value_or(""), names.materials);
    for (const auto& text : criteria.attributes) {
        check("unknown property", host::ItemCondition(text).name(), names.properties);
    }
}

} // namespace app
