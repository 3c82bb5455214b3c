#include "isolatedReading.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <fstream>
#include <new>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace Kiv_v4::document {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPace = std::chrono::milliseconds(50); // at which the host's progress is called

/// What the child sends: percents from 0 to 100, and in the end a failure with its message.
constexpr unsigned char kFailure = 255;
constexpr int kOutOfMemory = 3; // an exit code

[[noreturn]] void fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// A pipe, and the child that writes to it, which does not outlive this.
class Child
{
public:
    Child()
    {
        if (pipe2(_pipe.data(), O_CLOEXEC) != 0) {
            fail("pipe");
        }
        _id = fork();
        if (_id < 0) {
            close(_pipe[0]);
            close(_pipe[1]);
            fail("fork");
        }
        close(_pipe[isHere() ? 0 : 1]);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        close(_pipe[0]);
        if (!_isOver) {
            kill(_id, SIGKILL);
            end();
        }
    }

    /// Whether this process is the child.
    [[nodiscard]] bool isHere() const { return _id == 0; }

    /// Returns what came within the pace: no text if nothing did, an empty one at the end.
    [[nodiscard]] std::optional<std::string> receive() const
    {
        pollfd waiting{_pipe[0], POLLIN, 0};
        if (poll(&waiting, 1, static_cast<int>(kPace.count())) <= 0) {
            return {};
        }
        std::array<char, 256> piece{};
        const auto size = ::read(_pipe[0], piece.data(), piece.size());
        return std::string(piece.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    }

    /// Called in the child. A host that is gone is not missed.
    void send(std::string_view text) const
    {
        while (!text.empty()) {
            const auto size = write(_pipe[1], text.data(), text.size());
            if (size < 0 && errno != EINTR) {
                return;
            }
            text.remove_prefix(size > 0 ? static_cast<std::size_t>(size) : 0);
        }
    }

    /// Waits for its end and returns the status.
    int end()
    {
        int status = 0;
        while (waitpid(_id, &status, 0) < 0 && errno == EINTR) {
        }
        _isOver = true;
        return status;
    }

private:
    std::array<int, 2> _pipe{};
    pid_t _id = 0;
    bool _isOver = false;
};

std::size_t addressSpace()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void limit(decltype(RLIMIT_AS) what, std::size_t value)
{
    rlimit limits{};
    getrlimit(what, &limits);
    limits.rlim_cur = std::min<rlim_t>(limits.rlim_max, value);
    setrlimit(what, &limits);
}

/// The child is killed by what it does wrong, writes nothing, and leaves interrupts to the host.
void becomeHarmless(const Isolation& limits)
{
    for (const auto signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTERM, SIGXCPU}) {
        std::signal(signal, SIG_DFL);
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL); // no host, no child
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    const auto nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const auto stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nowhere, stream);
    }
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, static_cast<std::size_t>(limits.time.count()));
    limit(RLIMIT_AS, addressSpace() + limits.memory);
    std::set_terminate([] { std::abort(); });
    std::set_new_handler([] { _exit(kOutOfMemory); });
}

[[noreturn]] void work(const Child& child, const Isolation& limits,
                       const std::function<void(const SceneFileHandler::Progress& progress)>& read)
{
    const auto failed = [&child](const char* message) {
        child.send(std::string(1, static_cast<char>(kFailure)) + message);
    };
    try {
        becomeHarmless(limits);
        read([&child](float fraction) {
            child.send(std::string(1, static_cast<char>(std::clamp(fraction, 0.0F, 1.0F) * 100)));
            return true;
        });
    } catch (const std::exception& error) {
        failed(error.what());
    } catch (...) {
        failed("unknown error");
    }
    _exit(0); // skips the exit handlers of the host
}

std::string tooSlow(const Isolation& limits)
{
    return "reading takes more than " + std::to_string(limits.time.count()) + " s";
}

std::string deathOf(int status, const Isolation& limits)
{
    if (WIFSIGNALED(status)) {
        return WTERMSIG(status) == SIGXCPU
                   ? tooSlow(limits)
                   : std::string("reading crashes: ") + strsignal(WTERMSIG(status));
    }
    switch (WEXITSTATUS(status)) {
    case 0:
        return {};
    case kOutOfMemory:
        return "reading takes more than " + std::to_string(limits.memory >> 20U) + " MB of memory";
    default:
        return "reading ends the process with code " + std::to_string(WEXITSTATUS(status));
    }
}

} // namespace

void readInChild(const Isolation& limits,
                 const std::function<void(const SceneFileHandler::Progress& progress)>& read,
                 const SceneFileHandler::Progress& progress)
{
    const auto deadline = Clock::now() + limits.time;
    Child child;
    if (child.isHere()) {
        work(child, limits, read);
    }
    float fraction = 0;
    std::optional<std::string> failure;
    for (auto text = child.receive(); !text || !text->empty(); text = child.receive()) {
        for (const char c : text.value_or("")) {
            if (failure) {
                *failure += c;
            } else if (static_cast<unsigned char>(c) == kFailure) {
                failure.emplace();
            } else {
                fraction = static_cast<float>(c) / 100;
            }
        }
        if (!progress(fraction)) {
            throw std::runtime_error("cancelled");
        }
        if (Clock::now() > deadline) {
            throw std::runtime_error(tooSlow(limits));
        }
    }
    const auto death = deathOf(child.end(), limits);
    if (failure || !death.empty()) {
        throw std::runtime_error(failure ? *failure : death);
    }
}

} // namespace Kiv_v4::document
