#include "shell/engine/completion.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "kiv/attributeVariant.h"
#include "kiv/attributes.h"
#include "kiv/hierarchy.h"
#include "kiv/host/itemLookup.h"
#include "kiv/nodeDef.h"
#include "kiv/pathString.h"
#include "kiv/runTimeMgr.h"

#include "report/itemReport.h"
#include "shell/engine/commandTable.h"

namespace app::shell {

using namespace Kiv_v4;
namespace fs = std::filesystem;

namespace {

using Candidates = std::vector<Completion::Candidate>;

/// What the candidates are made for.
struct Place
{
    Session& session;
    const Typing& typing;

    /// The item named by the last complete word, or null.
    [[nodiscard]] SceneItem::Ptr itemBefore() const
    {
        return typing.words.size() < 2 ? nullptr : session.item(typing.words.back());
    }
};

Candidates commandNames(const Place&)
{
    Candidates names;
    for (const auto& kind : commandKinds()) {
        for (const auto& command : kind.commands) {
            names.push_back({std::string(command.name), true});
        }
    }
    return names;
}

Candidates optionNames(const Usage& usage)
{
    Candidates names;
    for (const auto& option : usage.options) {
        names.push_back(
            {std::string(option.name) + (option.hasValue ? "=" : ""), !option.hasValue});
    }
    return names;
}

/// The children of the item that the word names up to its last separator, written as the user
/// began it unless that would be another item.
Candidates childrenOf(const Session& session, const SceneItem::Ptr& parent,
                      const std::string& prefix)
{
    Candidates names;
    const auto hierarchy = Hierarchy::hierarchy(parent);
    for (const auto& child : hierarchy ? hierarchy->children() : SceneItemList()) {
        auto word = prefix + child->nodeName();
        const auto named = host::lookUp(session.scene().root(), session.current(), word);
        if (!named || named->path() != child->path()) {
            word = PathString::string(child->path());
        }
        const auto inside = Hierarchy::hierarchy(child);
        const auto isFolder = inside && inside->hasChildren();
        names.push_back({word + (isFolder ? "/" : ""), !isFolder});
    }
    return names;
}

Candidates selectionNames(const Session& session, const std::string& mark)
{
    Candidates names;
    for (const auto& name : session.selectionNames()) {
        names.push_back({mark + name, true});
    }
    return names;
}

Candidates items(const Place& place)
{
    const auto& word = place.typing.word;
    if (word.starts_with('@')) {
        return selectionNames(place.session, "@");
    }
    const auto last = std::find_if(word.rbegin(), word.rend(), host::isSeparator);
    const std::string prefix(word.begin(), last.base());
    if (prefix == "/") {
        return {{"/" + place.session.scene().root()->nodeName() + "/", false}};
    }
    const auto parent = prefix.empty() ? place.session.current() : place.session.item(prefix);
    return childrenOf(place.session, parent, prefix);
}

Candidates fileNames(const Place& place)
{
    const auto& word = place.typing.word;
    const auto prefix = word.substr(0, word.rfind('/') + 1);
    Candidates names;
    for (const auto& entry : fs::directory_iterator(prefix.empty() ? "." : prefix)) {
        const auto isFolder = entry.is_directory();
        names.push_back(
            {prefix + entry.path().filename().string() + (isFolder ? "/" : ""), !isFolder});
    }
    return names;
}

Candidates nodeTypes(const Place& place)
{
    Candidates names;
    const auto handler =
        RunTimeMgr::instance().nodeDefHandler(place.session.current()->runTimeId());
    for (const auto& definition :
         handler ? handler->definitions("") : std::vector<NodeDef::Ptr>()) {
        names.push_back({definition->type(), true});
    }
    return names;
}

Candidates attributeKinds(const Place&)
{
    Candidates names;
    for (const auto& kind : attributeTypes()) {
        names.push_back({kind, true});
    }
    return names;
}

Candidates attributeNames(const Place& place)
{
    Candidates names;
    const auto attributes = Attributes::attributes(place.itemBefore());
    for (const auto& name : attributes ? attributes->attributeNames() : Words()) {
        names.push_back({name, true});
    }
    return names;
}

Candidates properties(const Place& place)
{
    Candidates names;
    const auto item = place.itemBefore();
    for (const auto& section : {camera(item), light(item)}) {
        for (const auto& fact : section.facts) {
            names.push_back({fact.key, true});
        }
    }
    return names;
}

Candidates namedSelections(const Place& place)
{
    return selectionNames(place.session, "");
}

/// What the arguments of usages stand for.
struct Kind
{
    std::string_view name;
    Candidates (*candidates)(const Place& place);
};

constexpr Kind kKinds[] = {
    {"ITEM", items},           {"FILE", fileNames},
    {"COMMAND", commandNames}, {"TYPE", nodeTypes},
    {"KIND", attributeKinds},  {"ATTRIBUTE", attributeNames},
    {"PROPERTY", properties},  {"SELECTION", namedSelections},
};

/// Words that stand for themselves.
Candidates alternatives(std::string_view text)
{
    Candidates words;
    while (!text.empty()) {
        const auto word = text.substr(0, text.find('|'));
        words.push_back({std::string(word), true});
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
    return words;
}

Candidates argumentsAt(const Place& place, const Usage& usage)
{
    const auto& words = place.typing.words;
    if (usage.takesNextWord(words.back())) {
        return {};
    }
    const auto* argument = usage.argumentAt(usage.nbArguments(words) - 1);
    if (!argument) {
        return {};
    }
    const auto kind = std::ranges::find(kKinds, argument->name, &Kind::name);
    if (kind != std::end(kKinds)) {
        return kind->candidates(place);
    }
    const auto isLiteral =
        std::ranges::none_of(argument->name, [](char c) { return c < 'a' && c != '|'; });
    return isLiteral ? alternatives(argument->name) : Candidates();
}

Candidates candidatesAt(const Place& place)
{
    if (place.typing.words.empty()) {
        return commandNames(place);
    }
    const auto* command = commandNamed(place.typing.words.front());
    if (!command) {
        return {};
    }
    const Usage usage(command->usage);
    return place.typing.word.starts_with("--") ? optionNames(usage) : argumentsAt(place, usage);
}

} // namespace

std::string Completion::commonPart() const
{
    if (candidates.empty()) {
        return word;
    }
    auto common = candidates.front().word;
    for (const auto& candidate : candidates) {
        const auto [end, other] = std::ranges::mismatch(common, candidate.word);
        common.erase(end, common.end());
    }
    const auto isCut = [&, &whole = candidates.front().word] { // within a character
        return common.size() < whole.size() && (whole[common.size()] & 0xC0) == 0x80;
    };
    while (isCut()) {
        common.pop_back();
    }
    return common;
}

Completion completionOf(Session& session, std::string_view line)
{
    const auto typing = typingOf(line);
    Completion completion{typing.begin, typing.word, {}};
    try {
        completion.candidates = candidatesAt({session, typing});
    } catch (const std::exception&) { // of a run-time, or a word before that names nothing
    }
    std::erase_if(completion.candidates, [&](const Completion::Candidate& candidate) {
        return !candidate.word.starts_with(typing.word);
    });
    std::ranges::sort(completion.candidates, {}, &Completion::Candidate::word);
    return completion;
}

} // namespace app::shell
