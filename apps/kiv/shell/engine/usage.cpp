#include "shell/engine/usage.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "kiv/host/itemLookup.h"

namespace app::shell {

namespace {

/// Takes `suffix` off the end of the text; false when it does not end so.
bool dropEnd(std::string_view& text, std::string_view suffix)
{
    const auto found = text.ends_with(suffix);
    if (found) {
        text.remove_suffix(suffix.size());
    }
    return found;
}

Usage::Argument argumentOf(std::string_view text)
{
    Usage::Argument argument;
    argument.isOptional = text.starts_with('[');
    if (argument.isOptional) {
        text = text.substr(1, text.size() - 2);
    }
    argument.isRepeated = dropEnd(text, "...");
    argument.name = text;
    return argument;
}

Usage::Option optionOf(std::string_view text)
{
    text = text.substr(1, text.size() - 2);
    const auto equals = text.find('=');
    return {text.substr(0, equals), equals != std::string_view::npos};
}

} // namespace

Usage::Usage(std::string_view text)
{
    while (!text.empty()) {
        const auto word = text.substr(0, text.find(' '));
        if (word.starts_with("[-")) {
            options.push_back(optionOf(word));
        } else {
            arguments.push_back(argumentOf(word));
        }
        text.remove_prefix(std::min(word.size() + 1, text.size()));
    }
}

const Usage::Argument* Usage::argumentAt(std::size_t index) const
{
    if (index < arguments.size()) {
        return &arguments[index];
    }
    const auto repeated = std::ranges::find(arguments, true, &Argument::isRepeated);
    return repeated == arguments.end() ? nullptr : &*repeated;
}

const Usage::Option* Usage::option(std::string_view name) const
{
    const auto found = std::ranges::find(options, name, &Option::name);
    return found == options.end() ? nullptr : &*found;
}

bool Usage::takesNextWord(std::string_view word) const
{
    const auto* named = option(word);
    return named && named->hasValue;
}

bool Usage::isOption(std::string_view word) const
{
    return word.starts_with("--") || option(word) != nullptr; // -1 is a number
}

std::size_t Usage::nbArguments(const Words& words) const
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!isOption(words[i])) {
            ++count;
        } else if (takesNextWord(words[i])) {
            ++i;
        }
    }
    return count;
}

Arguments::Arguments(const Usage& usage, const Words& words)
{
    auto mayBeOption = true;
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (mayBeOption && *word == "--") {
            mayBeOption = false;
        } else if (mayBeOption && usage.isOption(*word)) {
            const auto wantsNext = usage.takesNextWord(*word) && std::next(word) != words.end();
            addOption(usage, wantsNext ? *word + "=" + *std::next(word) : *word);
            word += wantsNext ? 1 : 0;
        } else {
            _words.push_back(*word);
        }
    }
    requireFit(usage);
}

Words Arguments::from(std::size_t index) const
{
    return {_words.begin() + static_cast<std::ptrdiff_t>(index), _words.end()};
}

const std::string* Arguments::value(std::string_view option) const
{
    const auto found = _options.find(option);
    return found == _options.end() ? nullptr : &found->second.back();
}

Words Arguments::values(std::string_view option) const
{
    const auto found = _options.find(option);
    return found == _options.end() ? Words() : found->second;
}

void Arguments::addOption(const Usage& usage, const std::string& word)
{
    const auto equals = word.find('=');
    const auto name = word.substr(0, equals);
    const auto* option = usage.option(name);
    if (!option) {
        std::vector<std::string> names;
        for (const auto& known : usage.options) {
            names.emplace_back(known.name);
        }
        throw std::runtime_error("unknown option '" + name + "'" +
                                 Kiv_v4::host::suggestion(name, names));
    }
    if (option->hasValue != (equals != std::string::npos)) {
        throw std::runtime_error(
            name + (option->hasValue ? " wants a value: " + name + " VALUE" : " takes no value"));
    }
    _options[name].push_back(option->hasValue ? word.substr(equals + 1) : std::string());
}

void Arguments::requireFit(const Usage& usage) const
{
    const auto& all = usage.arguments;
    const auto required =
        static_cast<std::size_t>(std::ranges::count(all, false, &Usage::Argument::isOptional));
    const auto isOpen = std::ranges::any_of(all, &Usage::Argument::isRepeated);
    if (size() < required) {
        throw std::runtime_error("too few arguments");
    }
    if (size() > all.size() && !isOpen) {
        throw std::runtime_error("too many arguments");
    }
}

} // namespace app::shell
