#include <charconv>
#include <stdexcept>
#include <string>

#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/connectionHandler.h"
#include "kiv/host/transaction.h"

#include "report/itemReport.h"
#include "shell/commands/editing.h"
#include "shell/commands/numbers.h"
#include "shell/engine/commandTable.h"
#include "terminal/diagnostics.h"
#include "terminal/terminal.h"

namespace app::shell {

using namespace Kiv_v4;

namespace {

Attributes::Ptr attributesOf(const SceneItem::Ptr& item)
{
    return required(Attributes::attributes(item), item, "has no attributes");
}

Attribute::Ptr attributeOf(const SceneItem::Ptr& item, const std::string& name)
{
    return required(attributesOf(item)->attribute(name), item, "has no attribute '" + name + "'");
}

UndoableCommand::Ptr setCmd(Attribute& attribute, const Words& words)
{
    const auto kind = initialValue(attribute.type());
    if (!kind || std::holds_alternative<std::monostate>(*kind)) {
        throw std::runtime_error("attribute '" + attribute.name() + "' is of type " +
                                 attribute.type() + ", which has no value to set");
    }
    return setValueCmd(attribute, valueLike(*kind, words));
}

void requireUnlocked(const SceneItem::Ptr& item, const Attribute& attribute)
{
    const auto locked = attribute.metadata(Attribute::kLocked);
    if (locked.isType<bool>() && locked.get<bool>()) {
        fail(item, "attribute '" + attribute.name() + "' is locked");
    }
}

void get(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    if (arguments.size() > 1) {
        return session.output().line(printable(attributeOf(item, arguments[1])->string()));
    }
    auto section = attributes(item);
    section.title.clear();
    writeText({section}, session.output());
}

void set(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto attribute = attributeOf(item, arguments[1]);
    requireUnlocked(item, *attribute);
    edit("set " + arguments[1], item, setCmd(*attribute, arguments.from(2)));
}

void requireKind(const std::string& name)
{
    if (!initialValue(name)) {
        throw std::runtime_error("unknown kind of attribute '" + name + "'" +
                                 alternatives(name, attributeTypes()));
    }
}

void add(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    host::Transaction edits("add " + arguments[2]);
    const auto command = attributesOf(item)->addAttributeCmd(arguments[1], arguments[2]);
    if (!command) {
        requireKind(arguments[1]);
    }
    run(edits, item, command);
    if (arguments.size() > 3) {
        run(edits, item, setCmd(*command->attribute(), arguments.from(3)));
    }
    edits.commit();
}

void drop(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto attribute = attributeOf(item, arguments[1]);
    edit("drop " + arguments[1], item, attributesOf(item)->removeAttributeCmd(attribute->name()));
}

/// A boolean or a number when the word reads as one; for what is a boolean, never anything else.
Value metadataOf(const std::string& key, const std::string& word)
{
    if (key == Attribute::kLocked) {
        return Value(valueOf<bool>(word));
    }
    if (word == "true" || word == "false") {
        return Value(word == "true");
    }
    const auto* end = word.data() + word.size();
    int whole = 0;
    if (std::from_chars(word.data(), end, whole) == std::from_chars_result{end, {}}) {
        return Value(whole);
    }
    double number = 0;
    if (std::from_chars(word.data(), end, number) == std::from_chars_result{end, {}}) {
        return Value(number);
    }
    return Value(word);
}

void metadata(Session& session, const Arguments& arguments)
{
    const auto item = session.item(arguments[0]);
    const auto attribute = attributeOf(item, arguments[1]);
    if (arguments.size() == 3) {
        return session.output().line(
            printable(app::textOf(json(attribute->metadata(arguments[2])))));
    }
    edit("metadata " + arguments[2], item,
         attribute->setMetadataCmd(arguments[2], metadataOf(arguments[2], arguments[3])));
}

/// The ends that the four arguments name, and the handler that connects them.
struct Ends
{
    Ends(const Session& session, const Arguments& arguments)
        : item(session.item(arguments[0])), source(attributeOf(item, arguments[1])),
          destination(attributeOf(session.item(arguments[2]), arguments[3])),
          handler(required(ConnectionHandler::connectionHandler(item->runTimeId()), item,
                           "its run-time does not connect attributes"))
    {}

    SceneItem::Ptr item;
    Attribute::Ptr source;
    Attribute::Ptr destination;
    ConnectionHandler::Ptr handler;
};

void connect(Session& session, const Arguments& arguments)
{
    const Ends ends(session, arguments);
    edit("connect " + arguments[1], ends.item,
         ends.handler->connectCmd(ends.source, ends.destination));
}

void disconnect(Session& session, const Arguments& arguments)
{
    const Ends ends(session, arguments);
    edit("disconnect " + arguments[1], ends.item,
         ends.handler->disconnectCmd(ends.source, ends.destination));
}

constexpr Command kAttributes[] = {
    {"get", "ITEM [ATTRIBUTE]", "Print the attributes of an item, or the value of one.",
     "get stage exposure", get},
    {"set", "ITEM ATTRIBUTE VALUE...", "Set the value of an attribute.", "set stage exposure 0.25",
     set},
    {"add", "ITEM KIND ATTRIBUTE [VALUE...]",
     "Add an attribute, of kind Float, String or the like.", "add stage Float aperture 2.8", add},
    {"drop", "ITEM ATTRIBUTE", "Remove an attribute.", "drop stage exposure", drop},
    {"metadata", "ITEM ATTRIBUTE KEY [VALUE]", "Print or set metadata, such as Locked.",
     "metadata stage exposure Locked true", metadata},
    {"connect", "ITEM ATTRIBUTE ITEM ATTRIBUTE", "Connect an attribute to another.",
     "connect stage exposure stage/key gain", connect},
    {"disconnect", "ITEM ATTRIBUTE ITEM ATTRIBUTE", "Break a connection.",
     "disconnect stage exposure stage/key gain", disconnect},
};

} // namespace

CommandKind attributeEditing()
{
    return {"Attributes", kAttributes};
}

} // namespace app::shell
