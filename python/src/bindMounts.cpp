#include "kiv/kit/gateways.h"
#include "kiv/kit/mounts.h"

#include "lifetimes.h"
#include "reading.h"

namespace bound {

namespace {

namespace kit = kiv::kit;
using kiv::Path;

/// A follower of gateways by functions, which follows as long as it is held.
class Following
{
public:
    using OnPath = std::function<void(const Path&)>;
    using OnMove = std::function<void(const Path&, const Path&)>;

    Following(OnPath added, OnPath removed, OnMove moved)
        : _follower(
              std::make_shared<Follower>(std::move(added), std::move(removed), std::move(moved)))
    {
        kit::GatewayFollower::add(_follower);
    }

private:
    struct Follower : kit::GatewayFollower
    {
        Follower(OnPath onAdded, OnPath onRemoved, OnMove onMoved)
            : added(std::move(onAdded)), removed(std::move(onRemoved)), moved(std::move(onMoved))
        {}
        void itemAdded(const Path& path) override { added(path); }
        void itemRemoved(const Path& path) override { removed(path); }
        void itemMoved(const Path& oldPath, const Path& newPath) override
        {
            moved(oldPath, newPath);
        }

        OnPath added;
        OnPath removed;
        OnMove moved;
    };

    std::shared_ptr<Follower> _follower;
};

} // namespace

void bindMounts(nb::module_& module)
{
    using kit::Mount;
    Class<Mount> mount(module, "Mount", "kit::Mount");
    mount.def(nb::init<>());
    mount.property("gateway", [](const Mount& self) { return self.gateway(); });
    mount.property("isShown", &Mount::isShown);
    mount.field("fileName", &Mount::fileName);
    using Mounts = kit::Mounts<Mount>;
    Class<Mounts> type(module, "Mounts", "kit::Mounts");
    type.def(nb::init<kiv::Rtid, char>(), "run_time_id"_a, "separator"_a);
    const auto of = [](const char* name) {
        return contract(std::string("kit::MountTable::") + name);
    };
    type.def("close", &Mounts::close, of("close"));
    type.def_prop_ro("run_time_id", &Mounts::runTimeId, of("runTimeId"));
    type.def(
        "mount",
        [](Mounts& self, const Mount::Ptr& shown, const Path& gateway) {
            self.mount(shown, gateway);
        },
        "mount"_a, "gateway"_a, of("mount"));
    type.def("mount_cmd", &Mounts::mountCmd, "mount"_a, "gateway"_a, "text"_a, of("mountCmd"));
    type.def("unmount", &Mounts::unmount, "gateway"_a, of("unmount"));
    type.def("move", &Mounts::move, "gateway"_a, "new_gateway"_a, of("move"));
    type.def("find", &Mounts::find, "gateway"_a, of("find"));
    type.def("at", &Mounts::at, "path"_a, of("at"));
    type.def_prop_ro(
        "shown",
        [](const Mounts& self) {
            std::vector<Mount::Ptr> all;
            self.forEach([&](Mount& each) { all.push_back(self.find(each.gateway())); });
            return all;
        },
        of("shown"));
    type.def(
        "scene_file_handler",
        [](const std::shared_ptr<Mounts>& self, std::vector<std::string> suffixes,
           std::function<Mount::Ptr(const std::string&)> read) {
            return Mounts::sceneFileHandler(self, std::move(suffixes),
                                            [read = std::move(read)](const std::string& file) {
                                                return reading([&] { return read(file); });
                                            });
        },
        "suffixes"_a, "read"_a, contract("kit::Mounts::sceneFileHandler"));

    auto follower = bindClosable<Following>(module, "GatewayFollower", "kit::GatewayFollower");
    follower.def(nb::init<Following::OnPath, Following::OnPath, Following::OnMove>(),
                 "item_added"_a, "item_removed"_a, "item_moved"_a,
                 contract("kit::GatewayFollower::add"));
    using kit::GatewayOwner;
    Class<GatewayOwner> owner(module, "GatewayOwner", "kit::GatewayOwner");
    owner.def(nb::init<kiv::Rtid, GatewayOwner::Target>(), "run_time_id"_a, "target"_a);
    owner.function("itemAdded", &GatewayOwner::itemAdded, "path"_a);
    owner.function("itemRemoved", &GatewayOwner::itemRemoved, "path"_a);
    owner.function("itemMoved", &GatewayOwner::itemMoved, "old_path"_a, "new_path"_a);
    owner.function("tells", &GatewayOwner::tells, "run_time_id"_a);
    owner.function("target", &GatewayOwner::target, "path"_a);
}

} // namespace bound
