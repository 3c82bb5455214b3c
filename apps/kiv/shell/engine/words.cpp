#include "shell/engine/words.h"

#include <stdexcept>
#include <utility>

namespace app::shell {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

bool isBlank(char c)
{
    return kBlanks.find(c) != std::string_view::npos;
}

/// Takes a line apart, character by character.
class Splitter
{
public:
    explicit Splitter(std::string_view line) : _line(line)
    {
        while (_at < _line.size() && !_isComment) {
            step();
        }
    }

    [[nodiscard]] char openQuote() const { return _quote; }

    std::vector<Words> commands() &&
    {
        endCommand();
        return std::move(_commands);
    }

    Typing typing() &&
    {
        return {std::move(_words), std::move(_word), _inWord ? _wordBegin : _line.size()};
    }

private:
    void step()
    {
        const auto c = _line[_at++];
        if (_quote) {
            inQuotes(c);
        } else if (isBlank(c)) {
            endWord();
        } else if (c == ';') {
            endCommand();
        } else if (c == '#' && !_inWord) {
            _isComment = true;
        } else if (c == '\'' || c == '"') {
            beginWord();
            _quote = c;
        } else {
            beginWord();
            _word += c == '\\' ? kept() : c;
        }
    }

    void inQuotes(char c)
    {
        if (c == _quote) {
            _quote = 0;
        } else {
            _word += c == '\\' && _quote == '"' ? kept() : c;
        }
    }

    /// What follows a backslash; the backslash itself at the end of the line.
    char kept() { return _at < _line.size() ? _line[_at++] : '\\'; }

    void beginWord()
    {
        if (!_inWord) {
            _inWord = true;
            _wordBegin = _at - 1;
        }
    }

    void endWord()
    {
        if (std::exchange(_inWord, false)) {
            _words.push_back(std::exchange(_word, {}));
        }
    }

    void endCommand()
    {
        endWord();
        if (!_words.empty()) {
            _commands.push_back(std::exchange(_words, {}));
        }
    }

    const std::string_view _line;
    std::size_t _at = 0;
    std::size_t _wordBegin = 0;
    bool _inWord = false;
    bool _isComment = false;
    char _quote = 0;
    std::string _word;
    Words _words;
    std::vector<Words> _commands;
};

} // namespace

std::vector<Words> commandsOf(std::string_view line)
{
    Splitter splitter(line);
    if (const auto quote = splitter.openQuote()) {
        throw std::runtime_error(std::string("the quote ") + quote + " is not closed");
    }
    return std::move(splitter).commands();
}

Typing typingOf(std::string_view line)
{
    return Splitter(line).typing();
}

std::string escaped(const std::string& word)
{
    constexpr std::string_view special = "'\"\\;#";
    std::string text;
    for (const auto c : word) {
        const auto isSpecial = isBlank(c) || special.find(c) != std::string_view::npos;
        text += isSpecial ? std::string{'\\', c} : std::string{c};
    }
    return text;
}

} // namespace app::shell
