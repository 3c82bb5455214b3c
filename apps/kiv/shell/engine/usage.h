#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "shell/engine/words.h"

namespace app::shell {

/// What a command's usage text says: `ITEM` is an argument, `[ITEM]` one that may be left out,
/// `ITEM...` one or more, `[ITEM...]` any number; `[--name]` and `[-n]` are options, `[--name=N]`
/// one with a value. Words in lower case stand for themselves, `on|off` for one of several.
struct Usage
{
    struct Argument
    {
        std::string_view name;
        bool isOptional = false;
        bool isRepeated = false;
    };

    struct Option
    {
        std::string_view name; ///< With `--`.
        bool hasValue = false;
    };

    explicit Usage(std::string_view text);

    /// The argument that the word at `index` is. Words beyond those are the repeated argument's;
    /// null when there is none.
    [[nodiscard]] const Argument* argumentAt(std::size_t index) const;

    [[nodiscard]] const Option* option(std::string_view name) const;

    /// Whether the word is an option without the value that it must have: `--name VALUE` is the
    /// same as `--name=VALUE`.
    [[nodiscard]] bool takesNextWord(std::string_view word) const;

    /// Whether the word is meant as an option, whether there is one of that name or not.
    [[nodiscard]] bool isOption(std::string_view word) const;

    /// The number of arguments among the words.
    [[nodiscard]] std::size_t nbArguments(const Words& words) const;

    std::vector<Argument> arguments;
    std::vector<Option> options;
};

/// What the user typed behind a command's name.
class Arguments
{
public:
    /// Throws `std::runtime_error` for options that the usage does not have and for too few or too
    /// many words. Behind a lone `--` there are no options.
    Arguments(const Usage& usage, const Words& words);

    [[nodiscard]] std::size_t size() const { return _words.size(); }
    [[nodiscard]] const Words& words() const { return _words; }
    [[nodiscard]] const std::string& operator[](std::size_t index) const { return _words[index]; }

    /// Words from `index` on.
    [[nodiscard]] Words from(std::size_t index) const;

    [[nodiscard]] bool has(std::string_view option) const { return _options.contains(option); }

    /// The values of an option that was given any number of times.
    [[nodiscard]] Words values(std::string_view option) const;

    /// The last value of the option, or null.
    [[nodiscard]] const std::string* value(std::string_view option) const;

private:
    void addOption(const Usage& usage, const std::string& word);
    void requireFit(const Usage& usage) const;

    Words _words;
    std::map<std::string, Words, std::less<>> _options;
};

} // namespace app::shell
