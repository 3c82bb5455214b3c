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

/// The show as the library browses and edits it. A part is a list of one entry, which can be moved
/// from list to list without memory.
class ShotTree : public kit::NodeTree<Entry*>
{
    using Entries = std::list<Entry>;

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
        Entry entry;
        entry.type = nodeType;
        return part(std::move(entry));
    }

    [[nodiscard]] Part copy(const Kiv::Path& path) override { return part(*existing(path)); }

    [[nodiscard]] Part take(const Kiv::Path& path) override
    {
        auto taken = std::make_shared<Entries>();
        auto& siblings = existing(path.pop())->children;
        taken->splice(taken->end(), siblings, placeOf(siblings, existing(path)));
        return taken;
    }

    void put(const Kiv::Path& path, const Part& part, std::size_t row) override
    {
        auto& entries = *std::static_pointer_cast<Entries>(part);
        auto& siblings = existing(path.pop())->children;
        entries.front().name = path.back().string();
        const auto place = std::next(siblings.begin(),
                                     static_cast<std::ptrdiff_t>(std::min(row, siblings.size())));
        siblings.splice(place, entries);
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
    static Part part(Entry entry) { return std::make_shared<Entries>(Entries{std::move(entry)}); }

    static Entries::iterator placeOf(Entries& siblings, const Entry* entry)
    {
        return std::find_if(siblings.begin(), siblings.end(),
                            [entry](const Entry& each) { return &each == entry; });
    }

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
