#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <histedit.h>
#include <stdexcept>
#include <utility>

#include "shell/engine/lineReader.h"
#include "shell/engine/words.h"
#include "terminal/terminal.h"

namespace app::shell {

namespace fs = std::filesystem;

namespace {

constexpr int kHistorySize = 1000;

/// Where the lines of earlier sessions are kept; empty when there is no place for them.
fs::path historyFile()
{
    const auto folder = [](const char* variable) {
        const auto* value = std::getenv(variable);
        return fs::path(value ? value : "");
    };
    auto state = folder("XDG_STATE_HOME");
    if (state.empty() && !folder("HOME").empty()) {
        state = folder("HOME") / ".local" / "state";
    }
    return state.empty() ? state : state / "kiv" / "history";
}

/// The lines that were read, kept in the history file.
class Lines
{
public:
    Lines() : _history(::history_init())
    {
        if (!_history) {
            throw std::runtime_error("there is no memory for the line history");
        }
        set(H_SETSIZE, kHistorySize);
        set(H_SETUNIQUE, 1);
        if (!_file.empty()) {
            set(H_LOAD, _file.c_str());
        }
    }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;

    ~Lines()
    {
        std::error_code ignored; // what cannot be kept is not worth a complaint at the very end
        if (!_file.empty() && (fs::create_directories(_file.parent_path(), ignored) || !ignored)) {
            set(H_SAVE, _file.c_str());
        }
        ::history_end(_history);
    }

    void add(const char* line) { set(H_ENTER, line); }

    [[nodiscard]] History* get() const { return _history; }

private:
    template <class Argument>
    void set(int operation, Argument argument)
    {
        HistEvent event;
        ::history(_history, &event, operation, argument);
    }

    History* const _history;
    const fs::path _file = historyFile();
};

/// Whether the editor takes the text into its line: it refuses what is no UTF-8.
bool canBeTyped(const std::string& text)
{
    return printable(text) == text;
}

void list(const Completion& completion)
{
    std::fputc('\n', stdout);
    for (const auto& candidate : completion.candidates) {
        std::fputs((printable(candidate.word) + "\n").c_str(), stdout);
    }
    std::fflush(stdout);
}

} // namespace

struct LineReader::State
{
    explicit State(Completer lineCompleter)
        : completer(std::move(lineCompleter)), editor(::el_init("kiv", stdin, stdout, stderr))
    {
        if (!editor) {
            throw std::runtime_error("the terminal cannot be used");
        }
        ::el_set(editor, EL_CLIENTDATA, this);
        ::el_set(editor, EL_PROMPT, prompt);
        ::el_set(editor, EL_EDITOR, "emacs");
        ::el_set(editor, EL_SIGNAL, 1); // to be set up anew when it goes on or its window changes
        ::el_set(editor, EL_HIST, ::history, lines.get());
        ::el_set(editor, EL_ADDFN, "kiv-complete", "Complete the word", complete);
        ::el_set(editor, EL_BIND, "^I", "kiv-complete", nullptr);
        ::el_set(editor, EL_BIND, "^R", "em-inc-search-prev", nullptr);
        ::el_source(editor, nullptr); // what users have set for their terminal
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { ::el_end(editor); }

    static State& of(EditLine* editor)
    {
        void* state = nullptr;
        ::el_get(editor, EL_CLIENTDATA, &state);
        return *static_cast<State*>(state);
    }

    static char* prompt(EditLine* editor) { return of(editor).promptText.data(); }

    /// The tab key: adds what all candidates have in common, or lists them.
    static unsigned char complete(EditLine* editor, int)
    {
        const auto* line = ::el_line(editor);
        const std::string_view typed(line->buffer,
                                     static_cast<std::size_t>(line->cursor - line->buffer));
        auto completion = of(editor).completer(typed);
        std::erase_if(completion.candidates,
                      [](const auto& each) { return !canBeTyped(each.word); });
        if (completion.candidates.empty()) {
            return CC_REFRESH_BEEP;
        }
        const auto& first = completion.candidates.front();
        const auto isDone = completion.candidates.size() == 1;
        const auto common = completion.commonPart();
        if (!isDone && common == completion.word) {
            list(completion);
            return CC_REDISPLAY;
        }
        const auto text = escaped(common) + (isDone && first.isWhole ? " " : "");
        ::el_deletestr(editor, static_cast<int>(columns(typed.substr(completion.begin))));
        ::el_insertstr(editor, text.c_str());
        return CC_REFRESH;
    }

    const Completer completer;
    Lines lines;
    std::string promptText;
    EditLine* const editor;
};

LineReader::LineReader(Completer completer) : _state(std::make_unique<State>(std::move(completer)))
{}

LineReader::~LineReader() = default;

std::optional<std::string> LineReader::read(const std::string& prompt)
{
    _state->promptText = prompt;
    int size = 0;
    errno = 0;
    const auto* text = ::el_gets(_state->editor, &size);
    if (!text) {
        const auto interrupted = errno == EINTR;
        std::fputs(interrupted ? "\n" : "", stdout);
        return interrupted ? std::optional(std::string()) : std::nullopt;
    }
    std::string line(text, static_cast<std::size_t>(size));
    if (line.find_first_not_of(" \t\n") != std::string::npos) {
        _state->lines.add(line.c_str());
    }
    line.erase(std::min(line.find('\n'), line.size()));
    return line;
}

} // namespace app::shell
