#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kiv/cameraHandler.h"
#include "kiv/runTimeRegistration.h"
#include "kiv/transform3dHandler.h"

#include "matrices.h"
#include "stubs.h"

namespace test {

/// A transform with only the operations that a run-time must supply: every component of the path's
/// segment moves by one in y, and no edit is possible.
class LeastTransform : public Kiv_v4::Transform3d
{
public:
    using Cmd = Kiv_v4::UndoableCommand::Ptr;
    using Vector = Kiv_v4::Vector3d;

    explicit LeastTransform(Kiv_v4::SceneItem::Ptr item) : _item(std::move(item)) {}

    const Kiv_v4::Path& path() const override { return _item->path(); }
    Kiv_v4::SceneItem::Ptr sceneItem() const override { return _item; }
    Kiv_v4::Matrix4d matrix() const override { return translationOf(0, 1, 0); }
    Kiv_v4::Matrix4d segmentInclusiveMatrix() const override
    {
        return translationOf(0, static_cast<double>(depth()), 0);
    }
    Kiv_v4::Matrix4d segmentExclusiveMatrix() const override
    {
        return translationOf(0, static_cast<double>(depth() - 1), 0);
    }
    Cmd translateCmd(double, double, double) override { return nullptr; }
    Vector translation() const override { return {{0, 1, 0}}; }
    Cmd rotateCmd(double, double, double) override { return nullptr; }
    Vector rotation() const override { return {}; }
    Cmd scaleCmd(double, double, double) override { return nullptr; }
    Vector scale() const override { return {{1, 1, 1}}; }
    Cmd rotatePivotCmd(double, double, double) override { return nullptr; }
    Vector rotatePivot() const override { return {}; }
    Cmd scalePivotCmd(double, double, double) override { return nullptr; }
    Vector scalePivot() const override { return {}; }
    Cmd setMatrixCmd(const Kiv_v4::Matrix4d&) override { return nullptr; }

private:
    [[nodiscard]] std::size_t depth() const
    {
        return path().getSegments().back().components().size();
    }

    const Kiv_v4::SceneItem::Ptr _item;
};

class LeastTransformHandler : public Kiv_v4::Transform3dHandler
{
public:
    Kiv_v4::Transform3d::Ptr transform3d(const Kiv_v4::SceneItem::Ptr& item) const override
    {
        return std::make_shared<LeastTransform>(item);
    }
};

/// A run-time whose scene, `:stage` with a camera `:stage:view`, begins under any gateway.
class Nested
{
    struct Items : HierarchyStub
    {
        Kiv_v4::Rtid id = 0;

        Kiv_v4::SceneItemList rootItems(const Kiv_v4::Path& gateway) override
        {
            return {std::make_shared<Item>(gateway + Kiv_v4::PathSegment("stage", id, ':'))};
        }
    };

    struct Cameras : Kiv_v4::CameraHandler
    {
        Kiv_v4::Camera::Ptr camera(const Kiv_v4::SceneItem::Ptr&) override { return nullptr; }
        Kiv_v4::Selection findCameras(const Kiv_v4::Path& path) override
        {
            Kiv_v4::Selection found;
            found.append(std::make_shared<Item>(path + "view"));
            return found;
        }
    };

public:
    Nested()
    {
        items->id = id();
        items->onCreateItem = [](const auto& path) { return std::make_shared<Item>(path); };
        auto& manager = Kiv_v4::RunTimeMgr::instance();
        manager.setHierarchyHandler(id(), items);
        manager.setTransform3dHandler(id(), std::make_shared<LeastTransformHandler>());
        manager.setCameraHandler(id(), std::make_shared<Cameras>());
    }

    [[nodiscard]] Kiv_v4::Rtid id() const { return registration.id(); }

    /// The item `:stage:view` under a gateway.
    [[nodiscard]] Kiv_v4::SceneItem::Ptr view(const Kiv_v4::Path& gateway) const
    {
        return std::make_shared<Item>(items->rootItems(gateway).front()->path() + "view");
    }

    Kiv_v4::RunTimeRegistration registration{"nested", ':'};
    std::shared_ptr<Items> items = std::make_shared<Items>();
};

} // namespace test
