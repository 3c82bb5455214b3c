#pragma once

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "kiv/hierarchy.h"
#include "kiv/kit/attributeTable.h"
#include "kiv/kit/cameras.h"
#include "kiv/kit/lights.h"
#include "kiv/kit/nodeTree.h"
#include "kiv/kit/transforms.h"
#include "kiv/pathString.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/scene.h"
#include "kiv/sceneNotification.h"

#include "callback.h"
#include "items.h"

namespace test {

using namespace Kiv_v4;
using kit::AttributeTable;

/// Data to edit: boxes in boxes; a leaf takes no children.
struct Box
{
    std::string name;
    std::string type;
    std::list<Box> children{};
    Matrix4d matrix = kit::identity();
    kit::AffineFactors factors{};
    kit::CameraValues camera{};
    kit::LightValues light{};
    std::map<std::string, AttributeVariant> values{};
    AttributeTable::Metadata metadata{};
};

class BoxTree : public kit::NodeTree<Box*>
{
public:
    explicit BoxTree(Rtid id, const std::string& root = "top")
        : NodeTree(PathSegment(root, id, '/'))
    {}

    bool accepts(const Path& parent, const std::string&) const override
    {
        return nodeType(parent) == "box";
    }

    Part make(const std::string& type) override { return std::make_shared<Box>(Box{"", type}); }

    Part copy(const Path& path) override { return std::make_shared<Box>(*find(path)); }

    Part take(const Path& path) override
    {
        auto* box = existing(path);
        const auto part = std::make_shared<Box>(*box);
        existing(path.pop())->children.remove_if([&](Box& other) { return &other == box; });
        return part;
    }

    void put(const Path& path, const Part& part, std::size_t row) override
    {
        auto& siblings = find(path.pop())->children;
        const auto place = std::next(siblings.begin(), long(std::min(row, siblings.size())));
        siblings.insert(place, *std::static_pointer_cast<Box>(part))->name = path.back().string();
    }

protected:
    Box* rootNode() const override { return &_top; }

    std::vector<Box*> childNodes(Box* box) const override
    {
        std::vector<Box*> children;
        for (auto& child : box->children) {
            children.push_back(&child);
        }
        return children;
    }

    Child described(Box* box) const override { return {box->name, box->type}; }

private:
    mutable Box _top{"top", "box"};
};

/// The boxes as a run-time, and an outline that follows the announcements.
class Kit : public testing::Test
{
protected:
    Kit()
    {
        Scene::initializeInstance(std::make_shared<Scene>());
        Scene::instance().addObserver(sceneObserver);
        kit::registerTree(id, tree);
    }

    ~Kit() override { Scene::initializeInstance(nullptr); }

    static SceneItem::Ptr item(const std::string& path)
    {
        return Hierarchy::createItem(PathString::path(path));
    }

    SceneItem::Ptr made(const std::string& parent, const std::string& name,
                        const std::string& type = "box")
    {
        const auto command =
            Hierarchy::hierarchy(item(parent))->createChildCmd(type, PathComponent(name));
        command->execute();
        return command->sceneItem();
    }

    std::vector<std::string> state() const { return pathsOf(allUnder(item("/top"))); }

    const RunTimeRegistration registration{"kit", '/'};
    const Rtid id = registration.id();
    const std::shared_ptr<BoxTree> tree = std::make_shared<BoxTree>(id);
    std::size_t received = 0;
    std::set<std::string> outline{"/top"}; ///< Kept by the announcements alone.
    const Observer::Ptr sceneObserver = Callback::make([this](const Notification& notification) {
        ++received;
        follow(notification);
    });

private:
    void drop(const std::string& path)
    {
        for (auto known = outline.begin(); known != outline.end();) {
            const auto isUnder = *known == path || known->rfind(path + "/", 0) == 0;
            known = isUnder ? outline.erase(known) : std::next(known);
        }
    }

    void enter(const SceneItem::Ptr& top)
    {
        for (const auto& path : pathsOf(allUnder(top))) {
            outline.insert(path);
        }
    }

    void follow(const Notification& notification)
    {
        if (const auto* added = dynamic_cast<const ObjectAdd*>(&notification)) {
            enter(added->item());
        } else if (const auto* gone = dynamic_cast<const ObjectPostDelete*>(&notification)) {
            drop(PathString::string(gone->path()));
        } else if (const auto* renamed = dynamic_cast<const ObjectRename*>(&notification)) {
            drop(PathString::string(renamed->previousPath()));
            enter(renamed->item());
        } else if (const auto* moved = dynamic_cast<const ObjectReparent*>(&notification)) {
            drop(PathString::string(moved->previousPath()));
            enter(moved->item());
        }
    }
};

} // namespace test
