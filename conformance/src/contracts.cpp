#include "kiv/conformance/conformance.h"

namespace Kiv_v4::conformance {

const std::vector<Contract>& contracts()
{
    static const std::vector<Contract> all = {
        {"create", "The run-time registers and shows its scene.",
         "Check the work of the registration before the first item is made."},
        {"paths.agree", "The item at a path has that path, and its path leads back to it.",
         "createItem must find the items that children and rootItems list, under the same paths."},
        {"paths.text", "The text of a path is read back as the same path.",
         "Register the separator that the segments are written with, and keep it out of names."},
        {"paths.unknown", "For a path that names nothing, createItem returns null or throws.",
         "Check each component in createItem: its run-time, its segment, its names."},
        {"names.fit",
         "Names are not empty, contain no separator or control character, and are unique among "
         "siblings.",
         "Make each name valid before it is used: in the data, of new items, of renamed ones."},
        {"hierarchy.children",
         "Children lie one component below their item, each once, and hasChildren and the filtered "
         "lists agree with them.",
         "Derive hasChildren and the filtered lists from the list of children."},
        {"hierarchy.rows", "The rows of children are the places in the list of children.",
         "nbChildren, child, row and childInfos must agree with children."},
        {"hierarchy.parents", "The parent of a child is the item that lists it.",
         "parent must return the item whose children list this one; null at the top."},
        {"hierarchy.order", "Two queries without an edit between them return the same.",
         "List children in the order of the data, not in that of a hash table or of addresses."},
        {"attributes.types", "Names, types, classes and definitions of attributes agree.",
         "type, attributeType, the class of the object and attributeDef must agree."},
        {"attributes.values",
         "A value that was set reads back, is announced, and undo restores the old one.",
         "set must store the value and then call Attributes::notify with path and name."},
        {"attributes.texts", "The text of an attribute shows its value.",
         "string must format the present result of get at each call."},
        {"transforms.matrices",
         "Matrices agree along the hierarchy: an item's segment matrix is its own times its "
         "parent's.",
         "segmentInclusiveMatrix must be matrix() times the parent's segmentInclusiveMatrix."},
        {"transforms.values", "A translation, rotation or scale that was set reads back.",
         "The getters must return the values that the commands set."},
        {"commands.making", "Making a command changes nothing and announces nothing.",
         "Move the change from the maker into execute."},
        {"commands.failing", "A command that throws leaves the scene as it was.",
         "Check everything before the first change."},
        {"commands.undo",
         "Undo restores the exact previous state, including order, and does not throw.",
         "Remember in execute everything that undo must restore: place, order, names, values."},
        {"commands.redo", "Redo does exactly what execute did, and does not throw.",
         "Repeat the decision of execute: the same name, the same place, all parts."},
        {"notifications.complete",
         "An observer that follows the notifications has the same scene as a new walk.",
         "Announce each change, in execute, undo and redo, as in the table of announcements."},
        {"notifications.time",
         "Notifications come after the change: the announced items can be queried.",
         "Announce after the data were changed, with an item that was made after the change."},
        {"notifications.paths",
         "Notifications have the paths that observers know and the new ones.",
         "Announce a rename or move with the item at its new path, and its previous path."},
        {"stale.paths", "An old path names nothing after a rename, move or deletion.",
         "Look the path up in the data at each call; keep no table of items that outlives an "
         "edit."},
        {"stale.items",
         "Items and interface objects that are out of date return null or nothing or throw, and "
         "never crash.",
         "Keep no pointer into the data in items and interface objects: look up at each call."},
        {"scene.none", "Edits and their undo work without a scene.",
         "Call Scene::hasInstance before Scene::instance."},
        {"observers.throwing", "Observers that throw do not stop an edit.",
         "Announce when the edit is complete, and through the library's subjects."},
        {"memory.failing",
         "If an allocation fails, the call throws or returns, nothing crashes, and the scene is as "
         "before the call or as after it.",
         "Allocate the memory for all changes before the first change, and let no destructor "
         "throw."},
        {"registration.ends",
         "After the run-time was unregistered, its name, handlers, separators and observers are "
         "gone; kept objects return or throw.",
         "Hold a RunTimeRegistration, remove observers, and share the data with all items and "
         "interface objects."},
        {"registration.again", "Registered again, the run-time shows the same scene.",
         "Leave nothing of the first registration in static objects."},
        {"plugin.unloads",
         "A plug-in can be loaded, used and unloaded repeatedly, and nothing keeps its code "
         "loaded.",
         "Take everything back in destroy, and build with kiv_add_plugin."},
    };
    return all;
}

} // namespace Kiv_v4::conformance
