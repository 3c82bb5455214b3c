#include "kiv/memory/dataModel.h"

#include <set>
#include <stdexcept>
#include <unordered_set>
#include <utility>
#include <variant>

#include "announcements.h"
#include "attributeSteps.h"
#include "memoryItem.h"
#include "memoryMaterial.h"
#include "memoryObject3d.h"
#include "memoryTree.h"
#include "steps.h"

namespace Kiv_v4::memory {

namespace {

/// Applies a step that puts the node into the scene or elsewhere in it, and returns its item; null
/// if an observer removed it at once.
SceneItem::Ptr carriedOut(const std::shared_ptr<Tree>& tree, const StepPtr& step, Node& node)
{
    const NodeWatch watch(tree, node);
    step->apply();
    auto* now = watch.get();
    return now ? makeItem(*tree, tree->pathOf(*now), *now) : nullptr;
}

/// The value of an attribute as that alternative.
template <class T>
T& valueAs(Tree& tree, const AttributeInfo& attribute)
{
    auto* value = std::get_if<T>(&existing(tree, attribute).value);
    if (!value) {
        refuse(attribute.path(), "has an attribute '" + attribute.name() + "' of another type.");
    }
    return *value;
}

} // namespace

DataModel::DataModel(std::shared_ptr<Tree> tree) : _tree(std::move(tree)) {}

DataModel::~DataModel() = default;

const Path& DataModel::root() const noexcept
{
    return _tree->rootPath();
}

SceneItem::Ptr DataModel::item(const Path& path) const
{
    auto* node = _tree->find(path);
    return node ? makeItem(*_tree, path, *node) : nullptr;
}

std::size_t DataModel::size() const noexcept
{
    std::size_t size = 0;
    for (auto* node = &_tree->root(); node; node = nextInSubtree(&_tree->root(), node)) {
        ++size;
    }
    return size;
}

SceneItem::Ptr DataModel::make(const Path& parent, const std::string& nodeType,
                               const std::string& name)
{
    const Place place{parent, requireFreeName(*_tree, existing(*_tree, parent), name), {}};
    auto made = _tree->make(nodeType, place.name);
    auto& node = *made.get();
    return carriedOut(_tree, insertion(_tree, std::move(made), place), node);
}

SceneItemList DataModel::makeAll(const Path& parent, const std::string& nodeType,
                                 const std::vector<std::string>& names)
{
    const auto& above = existing(*_tree, parent);
    std::unordered_set<std::string> given;
    for (const auto& name : names) {
        (void)requireFreeName(*_tree, above, name);
        if (!given.insert(name).second) {
            refuse(parent, "cannot have two children '" + name + "'.");
        }
    }
    SceneItemList items;
    const AnnouncementBatch batch(names.size() > 1);
    for (const auto& name : names) {
        items.push_back(make(parent, nodeType, name));
    }
    return items;
}

SceneItem::Ptr DataModel::rename(const Path& item, const std::string& name)
{
    auto to = placeOf(*_tree, item);
    if (to.name.string() != name) {
        to.name = requireFreeName(*_tree, existing(*_tree, to.parent), name);
        return carriedOut(_tree, relocation(_tree, item, to), existing(*_tree, item));
    }
    return this->item(item);
}

SceneItem::Ptr DataModel::move(const Path& item, const Path& parent)
{
    const Place to{parent, placeOf(*_tree, item).name, {}};
    return carriedOut(_tree, relocation(_tree, item, to), existing(*_tree, item));
}

void DataModel::remove(const Path& item)
{
    removal(_tree, item)->apply();
}

std::string DataModel::uniqueName(const Path& parent, const std::string& name) const
{
    return _tree->freeName(existing(*_tree, parent), name).string();
}

void DataModel::setEnumValues(const Path& item, const std::string& attribute,
                              const std::vector<std::string>& values)
{
    auto& enumeration = valueAs<Enumeration>(*_tree, {item, attribute});
    const std::set<std::string> distinct(values.begin(), values.end());
    if (values.empty() || distinct.size() != values.size()) {
        refuse(item, "cannot have an enumeration '" + attribute +
                         "' without strings, or with the same one twice.");
    }
    enumeration.allowed = values;
    if (distinct.count(enumeration.text) == 0) {
        enumeration.text = values.front();
    }
    announceAttribute(item, attribute);
}

void DataModel::setNativeType(const Path& item, const std::string& attribute,
                              const std::string& type)
{
    valueAs<Native>(*_tree, {item, attribute}).typeName = type;
    announceAttribute(item, attribute);
}

std::vector<std::string> DataModel::metadataKeys(const Path& item,
                                                 const std::string& attribute) const
{
    std::vector<std::string> keys;
    for (const auto& entry : existing(*_tree, AttributeInfo(item, attribute)).metadata) {
        keys.push_back(entry.first);
    }
    return keys;
}

void DataModel::setGateway(const Path& item, Rtid nestedRunTimeId)
{
    auto& node = existing(*_tree, item);
    _tree->setGateway(node, nestedRunTimeId);
    announceInvalidate(makeItem(item, node));
}

Rtid DataModel::gateway(const Path& item) const
{
    return existing(*_tree, item).gateway;
}

void DataModel::setBoundingBox(const Path& item, const BoundingBox3d& box)
{
    setBoundingBoxCmd(item, box)->execute();
}

UndoableCommand::Ptr DataModel::setBoundingBoxCmd(const Path& item, const BoundingBox3d& box)
{
    (void)existing(*_tree, item);
    auto command = ownBoxCmd(_tree, item, box);
    if (!command) {
        throw std::invalid_argument("The bounding box contains NaN or infinity.");
    }
    return command;
}

BoundingBox3d DataModel::boundingBox(const Path& item) const
{
    return ownBoxOf(existing(*_tree, item));
}

void DataModel::setMaterials(const Path& item, const std::vector<Path>& materials)
{
    setMaterialsCmd(item, materials)->execute();
}

UndoableCommand::Ptr DataModel::setMaterialsCmd(const Path& item,
                                                const std::vector<Path>& materials)
{
    (void)existing(*_tree, item);
    return materialsCmd(_tree, item, materials);
}

} // namespace Kiv_v4::memory
