#include "childProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "kiv/conformance/conformance.h"

namespace Kiv_v4::conformance {

namespace {

// They occur neither in valid names nor in text for people.
constexpr char kEndOfText = '\x1f';
constexpr char kEndOfRecord = '\x1e';
constexpr std::size_t kProgressSize = 8192;

[[noreturn]] void fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// Memory that parent and child share.
class SharedText
{
public:
    SharedText()
        : _text(static_cast<char*>(mmap(nullptr, kProgressSize, PROT_READ | PROT_WRITE,
                                        MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
        if (_text == MAP_FAILED) {
            fail("mmap");
        }
    }
    SharedText(const SharedText&) = delete;
    SharedText& operator=(const SharedText&) = delete;
    ~SharedText() { munmap(_text, kProgressSize); }

    [[nodiscard]] char* get() const noexcept { return _text; }

private:
    char* const _text;
};

std::vector<std::string> split(const std::string& text, char end)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (auto at = text.find(end); at != std::string::npos; at = text.find(end, begin)) {
        parts.push_back(text.substr(begin, at - begin));
        begin = at + 1;
    }
    return parts;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (auto text : texts) {
        std::replace(text.begin(), text.end(), kEndOfText, '?');
        std::replace(text.begin(), text.end(), kEndOfRecord, '?');
        all += text + kEndOfText;
    }
    return all;
}

std::string readAll(int stream)
{
    std::string all;
    char buffer[4096];
    for (;;) {
        const auto count = read(stream, buffer, sizeof buffer);
        if (count > 0) {
            all.append(buffer, static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            return all;
        }
    }
}

std::string deathOf(int status, const Options& options)
{
    if (WIFSIGNALED(status)) {
        return WTERMSIG(status) == SIGALRM
                   ? "no end within " + std::to_string(options.timeLimit) + " s"
                   : std::string("the process died: ") + strsignal(WTERMSIG(status));
    }
    return WEXITSTATUS(status) == 0
               ? std::string()
               : "the process ended with code " + std::to_string(WEXITSTATUS(status));
}

[[noreturn]] void work(const Options& options, ToParent& parent,
                       const std::function<void(ToParent&)>& task)
{
    if (!options.showDiagnostics) {
        const auto nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
    }
    // The host's handlers are not for the candidate, and there would be many core files.
    for (const auto signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM, SIGINT, SIGTERM}) {
        std::signal(signal, SIG_DFL);
    }
    alarm(options.timeLimit);
    std::set_terminate([] { std::abort(); });
    try {
        task(parent);
    } catch (const std::exception& error) {
        parent.send({"escaped", error.what()});
    } catch (...) {
        parent.send({"escaped", "an exception that is not a std::exception"});
    }
    _exit(0); // skips the exit handlers of the caller's process
}

} // namespace

void ToParent::send(const Record& record)
{
    const auto text = joined(record) + kEndOfRecord;
    for (std::size_t sent = 0; sent < text.size();) {
        const auto count = write(_stream, text.data() + sent, text.size() - sent);
        if (count < 0 && errno != EINTR) {
            return; // the parent no longer exists
        }
        sent += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

void ToParent::note(const Progress& progress)
{
    auto* to = _progress;
    auto room = _progressSize - 4;
    for (const auto* text : {&progress.contract, &progress.doing, &progress.item}) {
        const auto size = std::min(text->size(), room / 2);
        std::memcpy(to, text->data(), size);
        to[size] = kEndOfText;
        to += size + 1;
        room -= size + 1;
    }
    *to = '\0';
}

Ending runInChild(const Options& options, const std::function<void(ToParent&)>& task)
{
    const SharedText progress;
    int stream[2];
    if (pipe(stream) != 0) {
        fail("pipe");
    }
    std::fflush(nullptr);
    const auto child = fork();
    if (child < 0) {
        close(stream[0]);
        close(stream[1]);
        fail("fork");
    }
    if (child == 0) {
        close(stream[0]);
        ToParent parent(stream[1], progress.get(), kProgressSize);
        work(options, parent, task);
    }
    close(stream[1]);
    Ending ending;
    for (const auto& record : split(readAll(stream[0]), kEndOfRecord)) {
        ending.records.push_back(split(record, kEndOfText));
    }
    close(stream[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    ending.death = deathOf(status, options);
    const auto last = split(progress.get(), kEndOfText);
    if (last.size() == 3) {
        ending.last = {last[0], last[1], last[2]};
    }
    return ending;
}

} // namespace Kiv_v4::conformance
