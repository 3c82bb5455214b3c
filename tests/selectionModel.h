#pragma once

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kiv/selection.h"

#include "paths.h"
#include "require.h"

namespace test {

/// A selection beside a vector that is searched for every query, through the same changes.
/// `Numbers` chooses them: `below(bound)` is a number from 0 up to, but not including, `bound`.
template <class Numbers>
class ModelledSelection
{
public:
    explicit ModelledSelection(Numbers& numbers) : _numbers(numbers) {}

    void change()
    {
        const auto item = anyItem();
        const auto known = contains(item->path());
        const auto kind = _numbers.below(100);
        if (kind < 40) {
            require(_selection.append(item) == !known, "append tells whether it changed");
            if (!known) {
                _model.push_back(item);
            }
        } else if (kind < 75) {
            require(_selection.remove(item) == known, "remove tells whether it changed");
            if (known) {
                _model.erase(find(item->path()));
            }
        } else if (kind < 98) {
            insert(item, known);
        } else if (kind == 98) {
            auto other = _numbers.below(2) ? _selection : std::move(_selection);
            _selection.clear();
            _selection = std::move(other);
        } else if (_numbers.below(4) == 0) {
            _selection.clear();
            _model.clear();
        }
    }

    /// Compares the fast queries, with prefix queries or without.
    void compareOne(bool prefixes)
    {
        const auto asked = anyItem()->path();
        require(_selection.contains(asked) == contains(asked), "contains");
        require(_selection.size() == _model.size(), "size");
        if (prefixes) {
            require(_selection.containsAncestor(asked) == related(asked, true), "ancestor");
            require(_selection.containsDescendant(asked) == related(asked, false), "descendant");
            const auto node = _selection.trie().find(asked);
            require((node ? *node->data() : nullptr) == (contains(asked) ? *find(asked) : nullptr),
                    "the trie leads to the item");
            require(_selection.itemsUnder(asked) == itemsUnder(asked), "items at and below");
        }
    }

    /// Compares all items and their order, both ways and by `next`.
    void compareAll()
    {
        require(
            std::equal(_selection.begin(), _selection.end(), _model.begin(), _model.end()) &&
                std::equal(_selection.rbegin(), _selection.rend(), _model.rbegin(), _model.rend()),
            "items and their order");
        for (auto at = _model.begin(); at != _model.end(); ++at) {
            const auto next = std::next(at) == _model.end() ? nullptr : at[1];
            require(_selection.next(*at) == next, "next");
        }
    }

private:
    using Items = std::vector<Kiv_v4::SceneItem::Ptr>;

    /// An item of one of some hundred paths, some of which differ in their segments only.
    Kiv_v4::SceneItem::Ptr anyItem()
    {
        std::string notation = "/" + std::to_string(_numbers.below(30));
        for (auto depth = _numbers.below(3); depth > 0; --depth) {
            notation += _numbers.below(2) == 0 ? "|:" : "/";
            notation += std::to_string(_numbers.below(3));
            if (notation.find('|') != std::string::npos) {
                break;
            }
        }
        return itemAt(notation);
    }

    void insert(const Kiv_v4::SceneItem::Ptr& item, bool known)
    {
        if (_model.empty()) {
            return;
        }
        const auto position = _model[_numbers.below(_model.size())];
        require(_selection.insert(position, item) == !known, "insert tells whether it changed");
        if (!known) {
            _model.insert(find(position->path()), item);
        }
    }

    typename Items::iterator find(const Kiv_v4::Path& path)
    {
        return std::find_if(_model.begin(), _model.end(), [&](const auto& item) {
            return item->path().size() == path.size() && item->path().startsWith(path);
        });
    }

    bool contains(const Kiv_v4::Path& path) { return find(path) != _model.end(); }

    bool related(const Kiv_v4::Path& path, bool above)
    {
        return std::any_of(_model.begin(), _model.end(), [&](const auto& item) {
            const auto& selected = item->path();
            return selected.size() != path.size() &&
                   (above ? path.startsWith(selected) : selected.startsWith(path));
        });
    }

    Items itemsUnder(const Kiv_v4::Path& path)
    {
        Items items;
        std::copy_if(_model.begin(), _model.end(), std::back_inserter(items),
                     [&](const auto& item) { return item->path().startsWith(path); });
        const auto interned = [](const auto& left, const auto& right) {
            return left.id() < right.id();
        };
        std::sort(items.begin(), items.end(), [&](const auto& left, const auto& right) {
            return std::lexicographical_compare(left->path().begin(), left->path().end(),
                                                right->path().begin(), right->path().end(),
                                                interned);
        });
        return items;
    }

    Numbers& _numbers;
    Kiv_v4::Selection _selection;
    Items _model;
};

} // namespace test
