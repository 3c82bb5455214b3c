#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "kiv/attributeNotification.h"
#include "kiv/attributes.h"

#include "attributeKinds.h"
#include "edits.h"
#include "probes.h"
#include "snapshot.h"

namespace Kiv_v4::conformance {

namespace {

const char* const kTypes = "attributes.types";
const char* const kValues = "attributes.values";
const char* const kTexts = "attributes.texts";

/// Records the attributes of notifications.
class Received : public Observer
{
public:
    void operator()(const Notification& notification) override
    {
        if (const auto* changed = dynamic_cast<const AttributeChanged*>(&notification)) {
            _received.emplace(textOf(changed->path()), changed->name());
        }
    }

    bool take(const Path& path, const std::string& name)
    {
        const auto received = _received.count({textOf(path), name}) > 0;
        _received.clear();
        return received;
    }

private:
    std::set<std::pair<std::string, std::string>> _received;
};

void expectSame(Checking& checking, const std::string& what, const std::string& expected,
                const std::string& seen)
{
    if (expected != seen) {
        checking.found(what + " '" + expected + '\'', '\'' + seen + '\'');
    }
}

/// Sets one of the allowed strings.
template <class Kind>
void checkEnumeration(Checking& checking, const Kind& kind)
{
    if constexpr (requires { kind.enumValues(); }) {
        const auto values = kind.enumValues();
        if (kind.hasValue() && !values.empty() &&
            std::count(values.begin(), values.end(), kind.get()) == 0) {
            checking.found("a value among enumValues", '\'' + kind.get() + '\'');
        }
    }
}

void checkTypes(Checking& checking, const SceneItem::Ptr& item, Attributes& attributes,
                const std::string& name)
{
    checking.at(kTypes, "attribute '" + name + '\'', item->path());
    const auto attribute = attributes.attribute(name);
    if (!attribute || !attributes.hasAttribute(name)) {
        checking.found("an attribute for each name that is listed",
                       attribute ? "hasAttribute false" : "null");
        return;
    }
    expectSame(checking, "name", name, attribute->name());
    expectSame(checking, "attributeType", attribute->type(), attributes.attributeType(name));
    if (!attribute->sceneItem() || *attribute->sceneItem() != *item) {
        checking.found("the attribute's item to be the one it was asked of", "another");
    }
    const auto hasValues = visitAttributeClass(attribute->type(), [](auto) {});
    if (!visitKind(attribute, [&](const auto& kind) { checkEnumeration(checking, kind); }) &&
        hasValues) {
        checking.found("an object of the class that " + attribute->type() + " stands for",
                       "an object of another class");
    }
    const auto* more = dynamic_cast<const Attributes_v4_2*>(&attributes);
    if (const auto def = more ? more->attributeDef(name) : nullptr) {
        expectSame(checking, "the definition's name", name, def->name());
        expectSame(checking, "the definition's type", attribute->type(), def->type());
    }
}

std::vector<double> numbersIn(const std::string& text)
{
    std::vector<double> numbers;
    const auto* const end = text.data() + text.size();
    for (const auto* at = text.data(); at != end;) {
        double number = 0;
        const auto [next, error] = std::from_chars(at, end, number);
        if (error == std::errc()) {
            numbers.push_back(number);
        }
        at = std::max(next, at + 1);
    }
    return numbers;
}

/// Whether a text for people can be that of the value: texts as they are, numbers to five digits.
template <class T>
bool tells(const std::string& text, const T& value)
{
    if constexpr (std::is_same_v<T, std::string>) {
        return text == value;
    } else if constexpr (std::is_same_v<T, bool>) {
        return !text.empty(); // on and off have many names; they are compared with each other
    } else {
        const auto told = numbersIn(text);
        const auto numbers = numbersOf(value);
        return told.size() >= numbers.size() &&
               std::equal(numbers.begin(), numbers.end(), told.begin(), [](double a, double b) {
                   return std::abs(a - b) <= 1e-5 * std::max(1.0, std::abs(a)) || a != a;
               });
    }
}

void checkText(Checking& checking, const SceneItem::Ptr& item, const Attribute::Ptr& attribute)
{
    checking.at(kTexts, "string of attribute '" + attribute->name() + '\'', item->path());
    visitKind(attribute, [&](const auto& kind) {
        if (kind.hasValue() && !tells(kind.string(), kind.get())) {
            checking.found("a text that tells the value " + exactValue(attribute),
                           '\'' + kind.string() + '\'');
        }
    });
}

/// Sets two values in turn; both must read back, as values and as texts.
void checkSetting(Checking& checking, const SceneItem::Ptr& item, const Attribute::Ptr& attribute,
                  Received& received)
{
    const auto name = attribute->name();
    const auto doing = "setCmd of attribute '" + name + '\'';
    for (int round = 0; round < 3; ++round) {
        checking.at(kValues, doing, item->path());
        const auto before = exactValue(attribute);
        const auto textBefore = attribute->string();
        const auto had = attribute->hasValue();
        const auto command = randomSetCmd(checking, attribute);
        if (!command || !Checking::answers([&] { command->execute(); })) {
            return; // refused
        }
        const auto after = exactValue(attribute);
        if (after != before && !received.take(item->path(), name)) {
            checking.found("an AttributeChanged with its path and name", "none");
        }
        checkText(checking, item, attribute);
        checking.at(kTexts, doing, item->path());
        if (had && (after == before) != (attribute->string() == textBefore)) {
            checking.found("another text for another value, the same for the same",
                           '\'' + textBefore + "' for " + before + " and '" + attribute->string() +
                               "' for " + after);
        }
        checking.at(kValues, "undo of " + doing, item->path());
        command->undo();
        if (had) {
            expectSame(checking, "the value before,", before, exactValue(attribute));
        }
        command->redo();
        expectSame(checking, "the value that was set,", after, exactValue(attribute));
        static_cast<void>(received.take(item->path(), name));
    }
}

/// `get` must return the value given to `set`.
void checkGetting(Checking& checking, const SceneItem::Ptr& item, const Attribute::Ptr& attribute)
{
    checking.at(kValues, "set and get of attribute '" + attribute->name() + '\'', item->path());
    visitKind(attribute, [&](auto& kind) {
        const auto value = kind.get();
        using T = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<T, int>) {
            const auto other = value == 7 ? 8 : 7;
            const auto command = kind.setCmd(other);
            if (command && Checking::answers([&] { command->execute(); })) {
                expectSame(checking, "the value that was set,", std::to_string(other),
                           std::to_string(kind.get()));
                command->undo();
            }
        } else if constexpr (requires { kind.enumValues(); }) {
            if (Checking::answers([&] { kind.set("no such value"); }) &&
                kind.get() == "no such value") {
                checking.found("std::invalid_argument for a string that is not allowed",
                               "it was set");
            }
        }
    });
}

} // namespace

void checkAttributes(Checking& checking)
{
    const auto received = std::make_shared<Received>();
    Attributes::addObserver(received);
    bool any = false;
    for (const auto& item : walk(checking.running().roots, checking.options().maxItems)) {
        checking.at(kTypes, "attributes", item->path());
        const auto attributes = Attributes::attributes(item);
        if (!attributes) {
            continue;
        }
        const auto names = attributes->attributeNames();
        if (std::set<std::string>(names.begin(), names.end()).size() != names.size()) {
            checking.found("each name once", "a name twice");
        }
        const std::string none = "no such attribute";
        if (attributes->hasAttribute(none) || attributes->attribute(none) ||
            attributes->attributeType(none) != Attribute::kInvalid) {
            checking.found("false, null and kInvalid for a name that is not there", "an attribute");
        }
        for (const auto& name : names) {
            any = true;
            checkTypes(checking, item, *attributes, name);
            const auto attribute = attributes->attribute(name);
            if (attribute && attribute->hasValue()) {
                checkText(checking, item, attribute);
                checkGetting(checking, item, attribute);
                checkSetting(checking, item, attribute, *received);
            }
        }
    }
    if (!any) {
        for (const auto* contract : {kTypes, kValues, kTexts}) {
            checking.skip(contract, "no item has attributes");
        }
    }
}

} // namespace Kiv_v4::conformance
