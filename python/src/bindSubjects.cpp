#include "observers.h"
#include "overrides.h"

namespace bound {

namespace {

using kiv::Notification;
using kiv::Scene;
using kiv::SceneItem;
using kiv::Subject;

class PyScene : public Derivable<Scene>
{
public:
    using Derivable::Derivable;
    KIV_METHOD(void, postNotifyObjectAdd, (const kiv::ObjectAdd& change), (change))
    KIV_METHOD(void, postNotifyObjectDelete, (const kiv::ObjectDelete& change), (change))
    KIV_METHOD(void, postNotifyObjectPathChange, (const kiv::ObjectPathChange& change), (change))
    KIV_METHOD(void, postNotifySubtreeInvalidate, (const kiv::SubtreeInvalidate& change), (change))
    KIV_METHOD(void, postNotifySceneCompositeChange,
               (const kiv::SceneCompositeNotification& change), (change))
};

/// A guard for a `with` block; `Make` gives it as a unique pointer.
template <class Guard>
class Block
{
public:
    using Make = std::function<std::unique_ptr<Guard>()>;

    Block(Make make, nb::object kept) : _make(std::move(make)), _kept(std::move(kept)) {}

    void enter() { _guard = _make(); }
    void leave() { _guard.reset(); }

private:
    Make _make;
    nb::object _kept;
    std::unique_ptr<Guard> _guard;
};

void bindGuard(nb::module_& module)
{
    using Guard = Block<kiv::NotificationGuard>;
    nb::class_<Guard> type(module, "NotificationGuard", contract("NotificationGuard"));
    const auto bind = [&]<class T>(T*) {
        type.def(
            "__init__",
            [](Guard* self, T& subject) {
                new (self)
                    Guard([&subject] { return std::make_unique<kiv::NotificationGuard>(subject); },
                          nb::find(subject));
            },
            "subject"_a);
    };
    bind(static_cast<Subject*>(nullptr));
    bind(static_cast<kiv::ObservableSelection*>(nullptr));
    type.def("__enter__", [](nb::object self) {
        nb::inst_ptr<Guard>(self)->enter();
        return self;
    });
    type.def("__exit__", [](Guard& self, nb::args) { self.leave(); });
}

void bindSceneSubject(nb::module_& module)
{
    nb::class_<Subject> subject(module, "Subject", contract("Subject"));
    subject.def(nb::init<>());
    bindSubjectMembers<Subject>(subject);

    Class<Scene, Subject, PyScene> scene(module, "Scene");
    scene.def(nb::init<>());
    scene.function("initializeInstance", &Scene::initializeInstance, "scene"_a.none());
    scene.function("hasInstance", &Scene::hasInstance);
    scene.function(
        "instance",
        []() -> Scene& {
            if (!Scene::hasInstance()) {
                throw std::runtime_error("no scene is installed");
            }
            return Scene::instance();
        },
        nb::rv_policy::reference);
    atExit([] { Scene::initializeInstance(nullptr); });

    using PathSubject = kiv::Transform3dPathSubject;
    nb::class_<PathSubject, Subject> transforms(module, "Transform3dPathSubject",
                                                contract("Transform3dPathSubject"));
    transforms.def(nb::init<const kiv::Path&>(), "path"_a);
    transforms.def_prop_ro(
        "path", [](const PathSubject& self) { return self.path(); }, contract("PathSubject::path"));
}

template <class T, class Base>
Class<T, Base> bindOfItem(nb::module_& module, const char* name)
{
    Class<T, Base> type(module, name);
    type.def(nb::init<const SceneItem::Ptr&>(), "item"_a);
    type.property("item", &T::item);
    return type;
}

void bindInterfaceNotifications(nb::module_& module)
{
    bindOfItem<kiv::Transform3dChanged, Notification>(module, "Transform3dChanged");
    bindOfItem<kiv::CameraChanged, Notification>(module, "CameraChanged");
    bindOfItem<kiv::LightChanged, Notification>(module, "LightChanged");
    Class<kiv::VisibilityChanged, Notification> visibility(module, "VisibilityChanged");
    visibility.def(nb::init<const kiv::Path&>(), "path"_a);
    visibility.property("path", &kiv::VisibilityChanged::path);
    using Changed = kiv::AttributeChanged;
    Class<Changed, Notification> changed(module, "AttributeChanged");
    changed.def(nb::init<const kiv::Path&, const std::string&>(), "path"_a, "name"_a);
    changed.property("path", [](const Changed& self) { return self.path(); });
    changed.property("name", &Changed::name);
    using Metadata = kiv::AttributeMetadataChanged;
    Class<Metadata, Changed> metadata(module, "AttributeMetadataChanged");
    metadata.def(nb::init<const kiv::Path&, const std::string&, const std::string&>(), "path"_a,
                 "name"_a, "key"_a);
    metadata.def(nb::init<const kiv::Path&, const std::string&, const Metadata::Keys&>(), "path"_a,
                 "name"_a, "keys"_a);
    metadata.property("keys", &Metadata::keys);
    metadata.method("has", &Metadata::has, "key"_a);
}

void bindDeletes(nb::module_& module)
{
    using kiv::ObjectDelete;
    Class<ObjectDelete, kiv::SceneChanged> type(module, "ObjectDelete");
    enumeration<ObjectDelete::SubOpType>(type, "SubOpType", "ObjectDelete::SubOpType",
                                         {{"PlainDelete", ObjectDelete::PlainDelete},
                                          {"PostDelete", ObjectDelete::PostDelete},
                                          {"PreDelete", ObjectDelete::PreDelete},
                                          {"Destroyed", ObjectDelete::Destroyed}});
    type.def(nb::init<const kiv::Path&>(), "path"_a);
    type.property("path", &ObjectDelete::path);
    bindOfItem<kiv::ObjectPostDelete, ObjectDelete>(module, "ObjectPostDelete");
    bindOfItem<kiv::ObjectPreDelete, ObjectDelete>(module, "ObjectPreDelete");
    Class<kiv::ObjectDestroyed, ObjectDelete> destroyed(module, "ObjectDestroyed");
    destroyed.def(nb::init<const kiv::Path&>(), "path"_a);
}

void bindPathChanges(nb::module_& module)
{
    using kiv::ObjectPathChange;
    Class<ObjectPathChange, kiv::SceneChanged> type(module, "ObjectPathChange");
    enumeration<ObjectPathChange::SubOpType>(type, "SubOpType", "ObjectPathChange::SubOpType",
                                             {{"Unspecified", ObjectPathChange::Unspecified},
                                              {"Renamed", ObjectPathChange::Renamed},
                                              {"Reparented", ObjectPathChange::Reparented},
                                              {"PathAdded", ObjectPathChange::PathAdded},
                                              {"PathRemoved", ObjectPathChange::PathRemoved}});
    type.def(nb::init<>());
    type.def(nb::init<ObjectPathChange::SubOpType>(), "sub_op_type"_a);
    const auto bindMoved = [&]<class T>(T*, const char* name) {
        Class<T, ObjectPathChange> moved(module, name);
        moved.def(nb::init<const SceneItem::Ptr&, const kiv::Path&>(), "item"_a, "previous_path"_a);
        moved.property("item", &T::item);
        moved.property("previousPath", &T::previousPath);
    };
    bindMoved(static_cast<kiv::ObjectRename*>(nullptr), "ObjectRename");
    bindMoved(static_cast<kiv::ObjectReparent*>(nullptr), "ObjectReparent");
    bindOfItem<kiv::ObjectPathAdd, ObjectPathChange>(module, "ObjectPathAdd");
    Class<kiv::ObjectPathRemove, ObjectPathChange> removed(module, "ObjectPathRemove");
    removed.def(nb::init<const kiv::Path&>(), "removed_path"_a);
    removed.property("removedPath", &kiv::ObjectPathRemove::removedPath);
}

template <class T>
std::vector<typename T::Op> opsOf(const T& composite)
{
    return {composite.begin(), composite.end()};
}

void bindSceneNotifications(nb::module_& module)
{
    using kiv::SceneChanged;
    Class<SceneChanged, Notification> type(module, "SceneChanged");
    enumeration<SceneChanged::OpType>(type, "OpType", "SceneChanged::OpType",
                                      {{"Added", SceneChanged::Added},
                                       {"Deleted", SceneChanged::Deleted},
                                       {"PathChanged", SceneChanged::PathChanged},
                                       {"SubtreeInvalidated", SceneChanged::SubtreeInvalidated},
                                       {"Composite", SceneChanged::Composite}});
    type.def(nb::init<SceneChanged::OpType>(), "op_type"_a);
    type.property("opType", &SceneChanged::opType);
    type.property("subOpType", &SceneChanged::subOpType);
    type.property("changedPath", &SceneChanged::changedPath);
    type.def("__repr__", [](nb::handle self) {
        auto* const change = nb::inst_ptr<SceneChanged>(self);
        const auto path =
            change->opType() == SceneChanged::Composite ? kiv::Path() : change->changedPath();
        return nb::str("<{} {!r}>").format(self.type().attr("__name__"), nb::str(nb::cast(path)));
    });
    bindOfItem<kiv::ObjectAdd, SceneChanged>(module, "ObjectAdd");
    bindDeletes(module);
    bindPathChanges(module);
    Class<kiv::SubtreeInvalidate, SceneChanged> subtree(module, "SubtreeInvalidate");
    subtree.def(nb::init<const SceneItem::Ptr&>(), "root"_a);
    subtree.property("root", &kiv::SubtreeInvalidate::root);

    using Composite = kiv::SceneCompositeNotification;
    Class<Composite, SceneChanged> composite(module, "SceneCompositeNotification");
    Class<Composite::Op> op(composite, "Op", "SceneCompositeNotification::Op");
    op.def(nb::init<const SceneChanged&>(), "change"_a);
    op.field("opType", &Composite::Op::opType);
    op.field("subOpType", &Composite::Op::subOpType);
    op.field("item", &Composite::Op::item);
    op.field("path", &Composite::Op::path);
    composite.def(nb::init<>());
    composite.method("appendSceneChanged", &Composite::appendSceneChanged, "change"_a);
    composite.method("appendOp", &Composite::appendOp, "op"_a);
    composite.def("__len__", &Composite::size);
    composite.def("__iter__",
                  [](const Composite& self) { return nb::iter(nb::cast(opsOf(self))); });
    function(
        module, "", "forEachOp",
        [](const Notification& notification) {
            std::vector<Composite::Op> ops;
            kiv::forEachOp(notification,
                           [&](const Composite::Op& single) { ops.push_back(single); });
            return ops;
        },
        "notification"_a);
}

void bindSelectionNotifications(nb::module_& module)
{
    using kiv::SelectionChanged;
    Class<SelectionChanged, Notification> type(module, "SelectionChanged");
    enumeration<SelectionChanged::OpType>(type, "OpType", "SelectionChanged::OpType",
                                          {{"Append", SelectionChanged::Append},
                                           {"Remove", SelectionChanged::Remove},
                                           {"Insert", SelectionChanged::Insert},
                                           {"Clear", SelectionChanged::Clear},
                                           {"ReplaceWith", SelectionChanged::ReplaceWith},
                                           {"Composite", SelectionChanged::Composite}});
    type.def(nb::init<SelectionChanged::OpType>(), "op_type"_a);
    type.property("opType", &SelectionChanged::opType);
    bindOfItem<kiv::SelectionItemAppended, SelectionChanged>(module, "SelectionItemAppended");
    bindOfItem<kiv::SelectionItemRemoved, SelectionChanged>(module, "SelectionItemRemoved");
    using Inserted = kiv::SelectionItemInserted;
    Class<Inserted, SelectionChanged> inserted(module, "SelectionItemInserted");
    inserted.def(nb::init<const SceneItem::Ptr&, const SceneItem::Ptr&>(), "position"_a.none(),
                 "item"_a);
    inserted.property("position", &Inserted::position);
    inserted.property("item", &Inserted::item);
    Class<kiv::SelectionCleared, SelectionChanged>(module, "SelectionCleared").def(nb::init<>());
    Class<kiv::SelectionReplaced, SelectionChanged>(module, "SelectionReplaced").def(nb::init<>());
    using Composite = kiv::SelectionCompositeNotification;
    Class<Composite, SelectionChanged> composite(module, "SelectionCompositeNotification");
    Class<Composite::Op> op(composite, "Op", "SelectionCompositeNotification::Op");
    op.def(nb::init<const SelectionChanged&>(), "change"_a);
    op.field("opType", &Composite::Op::opType);
    op.field("item", &Composite::Op::item);
    op.field("pos", &Composite::Op::pos);
    composite.def(nb::init<>());
    composite.method("appendAppendOp", &Composite::appendAppendOp, "item"_a);
    composite.method("appendRemoveOp", &Composite::appendRemoveOp, "item"_a);
    composite.method("appendInsertOp", &Composite::appendInsertOp, "pos"_a.none(), "item"_a);
    composite.method("appendClearOp", &Composite::appendClearOp);
    composite.method("appendReplaceWithOp", &Composite::appendReplaceWithOp);
    composite.def("__len__", &Composite::size);
    composite.def("__iter__",
                  [](const Composite& self) { return nb::iter(nb::cast(opsOf(self))); });
}

} // namespace

void bindSubjects(nb::module_& module)
{
    Class<Notification>(module, "Notification").def(nb::init<>());
    bindObservation(module);
    bindSceneSubject(module);
    bindInterfaceNotifications(module);
    bindSceneNotifications(module);
    bindSelectionNotifications(module);
}

void bindGuards(nb::module_& module)
{
    bindGuard(module);
}

} // namespace bound
