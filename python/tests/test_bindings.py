"""Every public name of the C++ headers can be reached from Python, or stands here with the reason why not."""

import importlib
import re

import kiv
from kiv import _kiv

# How Python says what C++ has a name for.
EQUIVALENTS = {
    "size": ("__len__",), "empty": ("__bool__",), "begin": ("__iter__", "__len__"), "end": ("__iter__", "__len__"),
    "string": ("__str__",), "contains": ("__contains__",), "get": ("value",), "set": ("value",),
    "hash": ("__hash__",), "register_": ("register",), "id": ("__hash__",), "hasValue": ("has_value",),
    "color": ("__getitem__",), "vector": ("__getitem__",), "matrix": ("__getitem__",), "getSegments": ("segments",),
    "segment": ("segments",), "row": ("names",), "rows": ("names",), "getRootItem": ("root",), "is": ("is_",),
}

# Each a pattern of names and the reason why Python has none of them.
UNBOUND = {
    r".*::(Ptr|Get|Set|Make|Receive|Release|Work|Target|Progress|File|Part|Keys|Names|Ops|Items|Segments|Components|"
    r"Commands|EnumValues|ItemPath|PathTrie|Node|NodePtr|Observers|Type|Value|MetadataOf|\w+Fn)": "types of C++ alone",
    r".*::(c|r|cr)?(begin|end)|.*::(const_|reverse_|const_reverse_)?iterator|.*::value_type": "iteration is Python's",
    r".*::operator.*": "operators are Python's, and `test_paths` and its siblings test them",
    r"(SceneItemList|ChildFilter|DuplicateOptions|AttributeVariant|Rtid|\w+Listener|\w*Vector3[df]|Matrix4d|Color3f|"
    r"host::PropertyValue|host::OutlineVisitor|host::OnVisit|document::OnMissing|assimp::Progress|"
    r"kit::Maker)": "plain Python values",
    r"(AttributeClass|TypedAttribute|attributeClasses|visitAttribute|visitAttributeClass|typeOf|value|"
    r"setValueCmd|AttributeClass)(::.*)?": "`Attribute.value` and `Attribute.set_cmd` do it",
    r"(TypedColorN|TypedVectorN|TypedSquareMatrixN|SetValue\d?UndoableCommand)(::.*)?":
        "the classes of each type are bound",
    r"(PluginInfo|pluginInfo|PluginEntryPoint|kPluginEntryPoint|kivPlugin)(::.*)?": "a plug-in is a shared object",
    r"(getRawAddress|getSceneItemFromRaw|getAttributesFromRaw|handleAssert)": "addresses and macros are of C++",
    r"(Observer|SubtreeObserver)(::.*)?": "a function observes; `for_each_op` filters",
    r"PathSubject(::.*)?": "`Transform3dPathSubject` is the one that is used",
    r"RunTimeCommand(::.*)?": "`run_time_id` of a command in Python, `UndoableCommand.belongs_to` of any",
    r"(PathSegmentView|PathComponent::Data)(::.*)?|PathComponent::(intern|releaseSharedData)": "how C++ stores names",
    r"TrieNode(::.*)?|Trie::(root|createNode|node)": "the trie is asked as a whole",
    r"(SegmentWalk(::.*)?|Hierarchy_v4_2::segmentWalk)": "`SubtreeWalk` uses it",
    r"CodeWrapperCont(ainer|ext)(::.*)?": "`BatchCompositeCommand` uses it",
    r"Subject::cleanObservers|CompositeUndoableCommand::(take|create)|BatchCompositeCommand::create|"
    r"SceneChanged::storedSubOpType|Selection::trie|RunTimeMgr::hierarchyHandlerRef": "for C++",
    r"(Selection|ObservableSelection)::post\w+": "an observable selection tells of changes",
    r"Attribute(Handle)?::shared_from_this|.*::(what|reason|file|pathText|segmentText)": "the text of the exception",
    r"host::(prefixed|firstCharacter|isUtf8|Utf8Character|numberText|valueText)(::.*)?":
        "for windows in C++, and what Python has",
    r"document::(Json|JsonCursor|losslessJson|losslessElements|shortestJson|parseJson|replaceFile|linkTarget|SourceFile)"
    r"(::.*)?|document::Workspace::(read|gatewayCmd|copyMountsCmds)": "how documents are written",
    r"document::(Isolation(::.*)?|Workspace::setIsolation)": "a forked Python can wait for ever for a lock of a thread",
    r"conformance::(AllocationFaults|failingAllocations|Running|Options::allocationFaults|Candidate::(make|pluginFile))"
    r"(::.*)?": "faults are injected into C++; a candidate is made by a function",
    r"kit::(jsonOf|valueFromJson)": "Python has JSON",
    r"kit::(AttributeTable::(Row|row|takesMetadata|metadata|setMetadata|Metadata)|\w+Access|Tree::(Part|kLast)|MountTable)"
    r"(::.*)?": "keywords of `AttributeTable.add`, arguments of the access, `Mounts`",
    r"kit::\w+Base::path": "`scene_item.path`",
    r"kit::(announced|logUnannounced)": "what Python raises in a notification is logged by its observers",
    r"kit::(NodeTree|CameraOf|LightOf|Setting|finiteValue)(::.*)?": "templates over data in C++",
    r"kit::AttributeTable::(Item(Rows|Values)(::.*)?|addItemRows)": "functions; `add_item_values`",
    r"memory::DataModel::(DataModel|Tree)|memory::Tree.*|assimp::SceneFile.*|assimp::RunTime::kSeparator":
        "made by others",
    r"host::UndoHistory::Merging.*": "`UndoHistory.merging()`",
    r".*Impl|Scene::postNotify\w+|host::HostScene::postDelivery": "defined by classes that are derived, in Python too",
    r"ContextItem::SeparatorTag|.*::empty|host::UndoHistory::setLimit|host::SceneTree::setFilter|"
    r"host::Transaction::runFor|kit::Mounts::forEach|UndoableCommandGuard::setSuccess":
        "`make_separator`, truth, `limit`, `run`, `shown`, the end of a block",
    r"conformance::(text|json|junit)|conformance::Candidate::Running": "of `Report`; of `Candidate`",
    r"kit::GatewayFollower::\w+": "arguments of its constructor, which adds it",
    r"SceneFileHandler::(Progress|Mounting)|host::ComparisonOptions(::.*)?": "functions and keywords",
    r"host::SceneWatch::Tell|host::Recorder::Write": "functions",
    r"(Kiv|detail)": "namespaces",
}


def snake(name, upper=False):
    name = re.sub(r"^k(?=[A-Z])", "", name)
    words = re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name)
    return words.upper() if upper else words.lower()


def candidates(owner, name):
    yield from (name, snake(name), snake(name, upper=True))
    yield from EQUIVALENTS.get(name, ())
    if owner and name.lower() == owner.lower().split("_")[0] or name == "definition":
        yield "of"
    if name == owner:
        yield "__init__"


def is_reachable(key):
    *spaces, name = key.split("::")
    place = kiv
    if spaces and spaces[0] in ("host", "kit", "memory", "assimp", "document", "conformance"):
        place = importlib.import_module(f"kiv.{spaces.pop(0)}")
    for space in spaces:
        place = getattr(place, space, None)
    owner = spaces[-1] if spaces else ""
    return place is not None and any(hasattr(place, each) for each in candidates(owner, name))


def test_every_public_name_is_bound_or_listed():
    missing = [key for key in _kiv._public_names()
               if not is_reachable(key) and not any(re.fullmatch(pattern, key) for pattern in UNBOUND)]
    assert missing == []


def test_every_class_and_function_has_a_docstring():
    bare = [name for name, value in vars(kiv).items() if not name.startswith("_") and callable(value)
            and not (value.__doc__ or "").strip()]
    assert bare == []
