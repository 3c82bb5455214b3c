#include "kiv/conformance/conformance.h"

namespace Kiv_v4::conformance {

const std::vector<Contract>& contracts()
{
    static const std::vector<Contract> all = {
        {"create", "The run-time registers and shows its scene.",
         "Look at what the registration does before the first item is asked for."},
        {"paths.agree", "The item of a path bears that path, and the path leads to the item.",
         "createItem has to find what children and rootItems list, under the same path."},
        {"paths.text", "The text of a path is read back as the same path.",
         "Register the separator that the segments are written with, and keep it out of names."},
        {"paths.unknown", "A path that names nothing gives null or an exception.",
         "Check each component in createItem: its run-time, its segment, its names."},
        {"names.fit",
         "Names are not empty, have no separator or control character, and differ "
         "among siblings.",
         "Make each name fit before it is used: of the data, of new items, of renamed ones."},
        {"hierarchy.children",
         "Children lie one component below their item, each once, and "
         "hasChildren and the filtered lists agree with them.",
         "Derive hasChildren and the filtered lists from what children lists."},
        {"hierarchy.rows", "The rows of children are the places in the list of children.",
         "nbChildren, child, row and childInfos have to answer as children does."},
        {"hierarchy.parents", "The parent of a child is the item that lists it.",
         "parent has to give the item whose children list this one; null at the top."},
        {"hierarchy.order", "Asked twice without an edit between, everything answers the same.",
         "List children in the order of the data, not in that of a hash table or of addresses."},
        {"attributes.types", "Names, types, classes and definitions of attributes agree.",
         "type, attributeType, the class of the object and attributeDef have to tell the same."},
        {"attributes.values",
         "A value that was set is read back, is announced, and leaves with "
         "undo.",
         "set has to store the value and then call Attributes::notify with path and name."},
        {"attributes.texts", "The text of an attribute tells its value.",
         "string has to format the value that get gives, every time anew."},
        {"transforms.matrices",
         "Matrices agree along the hierarchy: an item's own times its "
         "parent's is what the segment gives.",
         "segmentInclusiveMatrix is matrix() times the parent's segmentInclusiveMatrix."},
        {"transforms.values", "A translation, rotation or scale that was set is read back.",
         "The getters have to answer from what the commands set."},
        {"commands.making", "Making a command changes nothing and announces nothing.",
         "Move the change from the maker into execute."},
        {"commands.failing", "A command that throws leaves the scene as it was.",
         "Check everything before the first change."},
        {"commands.undo",
         "Undo brings back exactly what was there before, order included, and "
         "does not throw.",
         "Remember in execute whatever undo has to restore: place, order, names, values."},
        {"commands.redo", "Redo does exactly what execute did, and does not throw.",
         "Repeat the decision of execute: the same name, the same place, all parts."},
        {"news.told", "An observer that follows the news shows what a fresh walk shows.",
         "Announce each change, in execute, undo and redo, with what the table of announcements "
         "names."},
        {"news.time", "News come after the change: what they tell of can be asked for.",
         "Announce after the data were changed, with an item that was made after it."},
        {"news.paths", "News name the paths that observers know and the new ones.",
         "A rename or move tells the item at its new path, and the path where it was."},
        {"stale.paths", "An old path leads nowhere after a rename, move or deletion.",
         "Look the path up in the data at each call; keep no table of items that outlives an "
         "edit."},
        {"stale.items",
         "Items and interface objects that are out of date answer with null, "
         "nothing or an exception, and never crash.",
         "Keep no pointer into the data in items and interface objects: look up at each call."},
        {"scene.none", "Without a scene, edits work and are undone all the same.",
         "Ask Scene::hasInstance before Scene::instance."},
        {"observers.throwing", "Observers that throw stop no edit.",
         "Announce when the edit is complete, and through the library's subjects."},
        {"memory.failing",
         "When an allocation fails, the call throws or answers, nothing crashes, "
         "and the scene is as before the call or as after it.",
         "Allocate what a change takes before the first change, and let no destructor throw."},
        {"registration.ends",
         "When the run-time goes, its names, handlers, separators and "
         "observers go; what was kept of it answers or throws.",
         "Hold a RunTimeRegistration, remove observers, and share the data with what is handed "
         "out."},
        {"registration.again", "Registered again, the run-time shows the same scene.",
         "Keep nothing in statics that a first life leaves behind."},
        {"plugin.unloads",
         "A plug-in is loaded, used and unloaded again and again, and nothing "
         "holds on to its code.",
         "Take everything back in destroy, and build with kiv_add_plugin."},
    };
    return all;
}

} // namespace Kiv_v4::conformance
