#include "entries.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

/// An item as it was when it was asked for.
class EntryItem : public Kiv::SceneItem
{
public:
    EntryItem(const Kiv::Path& path, const Entry& entry) : SceneItem(path), _type(entry.type) {}

    [[nodiscard]] std::string nodeType() const override { return _type; }

private:
    const std::string _type;
};

} // namespace

Entries::Entries(Kiv::Rtid id, Entry show) : _id(id), _show(std::move(show)) {}

Kiv::Path Entries::rootPath() const
{
    return Kiv::PathSegment(Kiv::PathComponent(_show.name), _id, kSeparator);
}

Entry* Entries::find(const Kiv::Path& path)
{
    if (path.nbSegments() != 1 || path.runTimeId() != _id || !path.startsWith(rootPath())) {
        return nullptr;
    }
    auto* entry = &_show;
    for (auto name = path.begin() + 1; name != path.end(); ++name) {
        const auto child = childNamed(*entry, name->string());
        if (child == entry->children.end()) {
            return nullptr;
        }
        entry = &*child;
    }
    return entry;
}

Entry& Entries::existing(const Kiv::Path& path)
{
    auto* entry = find(path);
    if (!entry) {
        throw std::invalid_argument("There is no " + Kiv::PathString::string(path) + ".");
    }
    return *entry;
}

Kiv::SceneItem::Ptr Entries::item(const Kiv::Path& path)
{
    const auto* entry = find(path);
    return entry ? std::make_shared<EntryItem>(path, *entry) : nullptr;
}

std::list<Entry>::iterator childNamed(Entry& parent, const std::string& name)
{
    return std::find_if(parent.children.begin(), parent.children.end(),
                        [&](const Entry& child) { return child.name == name; });
}

std::string freeName(const Entry& parent, std::string name, const Entry* own)
{
    const auto unfit = Kiv::PathString::pathSegmentSeparator() + Entries::kSeparator;
    name.erase(std::remove_if(name.begin(), name.end(),
                              [&](char c) { return unfit.find(c) != std::string::npos; }),
               name.end());
    const auto isTaken = [&](const std::string& wanted) {
        return std::any_of(parent.children.begin(), parent.children.end(), [&](const Entry& child) {
            return child.name == wanted && &child != own;
        });
    };
    return Kiv::uniqueName(name.empty() ? "unnamed" : name, isTaken);
}
