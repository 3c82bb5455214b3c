#include "cli/completionScripts.h"

namespace app {

namespace {

std::string joined(const std::vector<std::string>& words, const std::string& separator)
{
    std::string text;
    for (const auto& word : words) {
        text += (text.empty() ? "" : separator) + word;
    }
    return text;
}

std::vector<std::string> namesOf(const std::vector<Parameter>& options)
{
    std::vector<std::string> names;
    for (const auto& option : options) {
        names.insert(names.end(), option.names.begin(), option.names.end());
    }
    return names;
}

std::vector<std::string> namesOf(const std::vector<CommandSyntax>& commands)
{
    std::vector<std::string> names;
    for (const auto& command : commands) {
        names.push_back(command.name);
    }
    return names;
}

/// `text` with a backslash before each of the characters.
std::string escaped(const std::string& text, std::string_view characters)
{
    std::string result;
    for (const char c : text) {
        result += characters.find(c) == std::string_view::npos ? "" : "\\";
        result += c;
    }
    return result;
}

/// `text` between quotes, for bash and zsh.
std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return result + "'";
}

/// The arms of a `case` over `COMMAND:OPTION`, for values in the word behind the option.
class BashValues
{
public:
    void add(const std::string& command, const std::vector<Parameter>& options)
    {
        for (const auto& option : options) {
            for (const auto& name : option.names) {
                if (takesNextWord(option)) {
                    addPattern(command + ":" + name, option);
                }
            }
        }
    }

    [[nodiscard]] std::string arms() const
    {
        return arm(_files, "return") + arm(_others, "compopt +o default 2>/dev/null; return") +
               _choices;
    }

private:
    void addPattern(const std::string& pattern, const Parameter& option)
    {
        if (const auto choices = choicesOf(option); !choices.empty()) {
            _choices += arm({pattern}, "words='" + joined(choices, " ") + "'");
        } else {
            (isFile(option) ? _files : _others).push_back(pattern);
        }
    }

    static std::string arm(const std::vector<std::string>& patterns, const std::string& action)
    {
        return "        " + joined(patterns, "|") + ") " + action + " ;;\n";
    }

    std::vector<std::string> _files;
    std::vector<std::string> _others;
    std::string _choices;
};

/// Arms of a `case` over `COMMAND:WORD`.
std::string bashWords(const CommandSyntax& program, const std::string& command,
                      const CommandSyntax& syntax)
{
    auto options = namesOf(syntax.options);
    if (!command.empty()) {
        const auto common = namesOf(program.options);
        options.insert(options.end(), common.begin(), common.end());
    }
    auto words = namesOf(syntax.commands);
    for (const auto& argument : syntax.arguments) {
        const auto choices = choicesOf(argument);
        words.insert(words.end(), choices.begin(), choices.end());
    }
    const auto indent = "            " + command;
    return indent + ":-*) words='" + joined(options, " ") + "' ;;\n" +
           (words.empty() ? "" : indent + ":*) words='" + joined(words, " ") + "' ;;\n");
}

/// What zsh's `_arguments` completes the value of an option or argument with.
std::string zshAction(const Parameter& parameter)
{
    const auto choices = choicesOf(parameter);
    return ":" + escaped(choices.empty() ? parameter.value : "value", ":") + ":" +
           (isFile(parameter) ? "_files"
            : choices.empty() ? " "
                              : "(" + joined(choices, " ") + ")");
}

std::string zshArguments(const std::vector<Parameter>& parameters)
{
    std::vector<std::string> texts;
    for (const auto& parameter : parameters) {
        const auto explanation = "[" + escaped(parameter.description, "[]:\\") + "]";
        for (const auto& name : parameter.names) {
            const auto takesNext = takesNextWord(parameter);
            const auto isLong = name.starts_with("--");
            texts.push_back(quoted((parameter.isRepeated ? "*" : "") + name +
                                   (takesNext && isLong ? "=" : "") + explanation +
                                   (takesNext ? zshAction(parameter) : "")));
        }
        if (parameter.names.empty()) {
            texts.push_back(quoted((parameter.isRepeated ? "*" : "") + zshAction(parameter)));
        }
    }
    return joined(texts, " \\\n                    ");
}

std::string fishOptions(const std::vector<Parameter>& options, const std::string& condition)
{
    std::string text;
    for (const auto& option : options) {
        text += "complete -c kiv" + condition;
        for (const auto& name : option.names) {
            text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
        }
        const auto choices = choicesOf(option);
        text += !takesNextWord(option) ? ""
                : isFile(option)       ? " -r -F"
                : choices.empty()      ? " -x"
                                       : " -x -a '" + joined(choices, " ") + "'";
        text += " -d '" + escaped(option.description, "'\\") + "'\n";
    }
    return text;
}

} // namespace

std::string bashCompletion(const CommandSyntax& program)
{
    std::vector<std::string> valued;
    for (const auto& option : program.options) {
        if (takesNextWord(option)) {
            valued.insert(valued.end(), option.names.begin(), option.names.end());
        }
    }
    BashValues values;
    values.add("*", program.options);
    auto words = bashWords(program, "", program);
    for (const auto& command : program.commands) {
        values.add(command.name, command.options);
        words += bashWords(program, command.name, command);
    }
    return R"(# Completion of kiv for bash.
_kiv()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= words= i
    [[ $word == = ]] && word=
    [[ $before == = ]] && before=${COMP_WORDS[COMP_CWORD-2]}
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            )" +
           joined(valued, "|") + R"() ((++i)) ;;
            )" +
           joined(namesOf(program.commands), "|") + R"() command=${COMP_WORDS[i]}; break ;;
        esac
    done
    COMPREPLY=()
    case $command:$before in
)" + values.arms() +
           R"(        *) case $command:$word in
)" + words +
           R"(        esac ;;
    esac
    [[ $words ]] && COMPREPLY=($(compgen -W "$words" -- "$word"))
}
complete -o default -F _kiv kiv
)";
}

std::string zshCompletion(const CommandSyntax& program)
{
    std::string commands;
    std::string arms;
    for (const auto& command : program.commands) {
        commands +=
            "                " + quoted(command.name + ":" + escaped(command.title, ":\\")) + "\n";
        auto parameters = command.options;
        parameters.insert(parameters.end(), command.arguments.begin(), command.arguments.end());
        arms += "                " + command.name + ") _arguments $common " +
                (parameters.empty() ? "" : "\\\n                    ") + zshArguments(parameters) +
                " ;;\n";
    }
    return R"(#compdef kiv
# Completion of kiv for zsh.
_kiv()
{
    local context state state_descr line
    typeset -A opt_args
    local -a common=(
                    )" +
           zshArguments(program.options) + R"(
    )
    _arguments -C $common '1: :->command' '*:: :->arguments'
    case $state in
        command)
            local -a commands=(
)" + commands +
           R"(            )
            _describe command commands ;;
        arguments)
            case $words[1] in
)" + arms +
           R"(            esac ;;
    esac
}
_kiv "$@"
)";
}

std::string fishCompletion(const CommandSyntax& program)
{
    auto text = "# Completion of kiv for fish.\n" + fishOptions(program.options, "");
    for (const auto& command : program.commands) {
        text += "complete -c kiv -n __fish_use_subcommand -f -a " + command.name + " -d '" +
                escaped(command.title, "'\\") + "'\n";
        const auto condition = " -n '__fish_seen_subcommand_from " + command.name + "'";
        text += fishOptions(command.options, condition);
        for (const auto& argument : command.arguments) {
            if (!isFile(argument)) {
                text += "complete -c kiv" + condition + " -x -a '" +
                        joined(choicesOf(argument), " ") + "'\n";
            }
        }
    }
    return text;
}

} // namespace app
