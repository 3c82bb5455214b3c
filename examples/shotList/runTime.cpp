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
#include "kiv/kit/tree.h"

namespace kit = Kiv::kit;

namespace {

constexpr char kSeparator = '|';

std::list<Entry>::iterator childNamed(Entry& parent, const std::string& name)
{
    return std::find_if(parent.children.begin(), parent.children.end(),
                        [&](const Entry& child) { return child.name == name; });
}

} // namespace

/// The show as the library browses and edits it.
class ShotTree : public kit::Tree
{
public:
    ShotTree(Kiv::Rtid id, Entry show)
        : Tree(Kiv::PathSegment(Kiv::PathSegment::Components{show.name}, id, kSeparator)),
          _show(std::move(show))
    {}

    /// The entry at `path`; null if there is none.
    [[nodiscard]] Entry* find(const Kiv::Path& path) const
    {
        auto* entry = covers(path) ? &_show : nullptr;
        for (auto name = path.begin() + 1; entry && name != path.end(); ++name) {
            const auto child = childNamed(*entry, name->string());
            entry = child == entry->children.end() ? nullptr : &*child;
        }
        return entry;
    }

    /// The entry at `path`. Throws `std::invalid_argument` if there is none.
    [[nodiscard]] Entry& existing(const Kiv::Path& path) const
    {
        if (auto* entry = find(path)) {
            return *entry;
        }
        throw std::invalid_argument("no such item '" + Kiv::PathString::string(path) + "'");
    }

    // The queries.

    [[nodiscard]] std::string nodeType(const Kiv::Path& path) const override
    {
        const auto* entry = find(path);
        return entry ? entry->type : "";
    }

    [[nodiscard]] std::vector<Child> children(const Kiv::Path& path) const override
    {
        std::vector<Child> children;
        if (const auto* entry = find(path)) {
            for (const auto& child : entry->children) {
                children.push_back({child.name, child.type});
            }
        }
        return children;
    }

    // The edits.

    [[nodiscard]] bool accepts(const Kiv::Path& parent, const std::string& nodeType) const override
    {
        const auto taken = childType(existing(parent).type);
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
        return std::make_shared<Entry>(existing(path));
    }

    [[nodiscard]] Part take(const Kiv::Path& path) override
    {
        auto& parent = existing(path.pop());
        const auto entry = childNamed(parent, path.back().string());
        const auto part = std::make_shared<Entry>(std::move(*entry));
        parent.children.erase(entry);
        return part;
    }

    void put(const Kiv::Path& path, const Part& part, std::size_t row) override
    {
        auto& siblings = existing(path.pop()).children;
        const auto place = std::next(siblings.begin(),
                                     static_cast<std::ptrdiff_t>(std::min(row, siblings.size())));
        const auto entry = siblings.insert(place, *std::static_pointer_cast<Entry>(part));
        entry->name = path.back().string();
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
        tree->existing(path).*field = std::get<int>(value);
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
    _tree->existing(rootPath()).children = std::move(sequences);
    kit::announce(Kiv::SubtreeInvalidate(_tree->item(rootPath())));
}
