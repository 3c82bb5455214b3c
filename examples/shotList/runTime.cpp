#include "runTime.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "kiv/kit/announce.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/kit/handlers.h"
#include "kiv/kit/nodeTree.h"

namespace kit = Kiv::kit;

constexpr char kSeparator = '|';

/// The show as the library browses and edits it.
class ShotTree : public kit::NodeTree<Entry*>
{
public:
    ShotTree(Kiv::Rtid id, Entry show)
        : NodeTree(Kiv::PathSegment(Kiv::PathSegment::Components{show.name}, id, kSeparator)),
          _show(std::move(show))
    {}

    // The edits.

    [[nodiscard]] bool accepts(const Kiv::Path& parent, const std::string& nodeType) const override
    {
        const auto taken = childType(existing(parent)->type);
        return !taken.empty() && (nodeType.empty() || nodeType == taken);
    }

    [[nodiscard]] Part make(const std::string& nodeType) override
    {
        const auto part = std::make_shared<Entry>();
        part->type = nodeType;
        return part;
    }

    [[nodiscard]] Part copy(const Kiv::Path& path) override
    {
        return std::make_shared<Entry>(*existing(path));
    }

    [[nodiscard]] Part take(const Kiv::Path& path) override
    {
        auto* entry = existing(path);
        const auto part = std::make_shared<Entry>(std::move(*entry));
        existing(path.pop())->children.remove_if([&](Entry& other) { return &other == entry; });
        return part;
    }

    void put(const Kiv::Path& path, const Part& part, std::size_t row) override
    {
        auto& siblings = existing(path.pop())->children;
        const auto place = std::next(siblings.begin(),
                                     static_cast<std::ptrdiff_t>(std::min(row, siblings.size())));
        const auto entry = siblings.insert(place, *std::static_pointer_cast<Entry>(part));
        entry->name = path.back().string();
    }

protected:
    [[nodiscard]] Entry* rootNode() const override { return &_show; }

    [[nodiscard]] std::vector<Entry*> childNodes(Entry* entry) const override
    {
        std::vector<Entry*> children;
        for (auto& child : entry->children) {
            children.push_back(&child);
        }
        return children;
    }

    [[nodiscard]] Child described(Entry* entry) const override
    {
        return {entry->name, entry->type};
    }

private:
    mutable Entry _show;
};

namespace {

/// A frame number of a shot.
kit::AttributeTable::Row frame(const std::shared_ptr<ShotTree>& tree, const std::string& name,
                               const std::string& displayName, int Entry::*field)
{
    const auto get = [tree, field](const Kiv::Path& path) {
        const auto* shot = tree->find(path);
        return shot ? Kiv::AttributeVariant(shot->*field) : Kiv::AttributeVariant();
    };
    const auto set = [tree, field](const Kiv::Path& path, const Kiv::AttributeVariant& value) {
        tree->existing(path)->*field = std::get<int>(value);
    };
    return {name, Kiv::Attribute::kInt, get, set, displayName, Entry().*field};
}

} // namespace

ShotListRunTime::ShotListRunTime(Entry show)
    : _registration("shotList", kSeparator),
      _tree(std::make_shared<ShotTree>(id(), std::move(show)))
{
    kit::registerTree(id(), _tree);

    const auto table = std::make_shared<kit::AttributeTable>();
    table->add(frame(_tree, "firstFrame", "First frame", &Entry::firstFrame));
    table->add(frame(_tree, "lastFrame", "Last frame", &Entry::lastFrame));
    const auto attributes = [table](const Kiv::SceneItem::Ptr& item) {
        return item->nodeType() == "shot" ? table->attributes(item) : nullptr;
    };
    Kiv::RunTimeMgr::instance().setAttributesHandler(id(), kit::attributesHandler(attributes));
}

Kiv::Path ShotListRunTime::rootPath() const
{
    return _tree->root();
}

void ShotListRunTime::reload(std::list<Entry> sequences)
{
    _tree->existing(rootPath())->children = std::move(sequences);
    kit::announce(Kiv::SubtreeInvalidate(_tree->item(rootPath())));
}
