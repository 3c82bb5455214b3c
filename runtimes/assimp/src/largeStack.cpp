#include "largeStack.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <utility>

namespace Kiv_v4::assimp {

namespace {

// Address space: unused pages take no memory. A level of the scene takes about a kilobyte.
constexpr std::size_t kStackSize = std::size_t{1} << 29U;
constexpr std::size_t kSmallestStackSize = std::size_t{1} << 23U;

/// A thread with the largest possible stack; nothing if there can be none.
std::optional<pthread_t> startThread(void* (*run)(void*), void* argument)
{
    std::optional<pthread_t> started;
    pthread_attr_t attributes;
    if (pthread_attr_init(&attributes) != 0) {
        return started;
    }
    pthread_t thread{};
    for (auto size = kStackSize; size >= kSmallestStackSize && !started; size /= 4) {
        if (pthread_attr_setstacksize(&attributes, size) == 0 &&
            pthread_create(&thread, &attributes, run, argument) == 0) {
            started = thread;
        }
    }
    pthread_attr_destroy(&attributes);
    return started;
}

/// The work, and the messages between its thread and the waiting one.
class Errand
{
public:
    explicit Errand(const std::function<void(const Progress&)>& work) : _work(work) {}

    /// Runs on the thread with the large stack.
    static void* run(void* errand)
    {
        static_cast<Errand*>(errand)->work();
        return nullptr;
    }

    /// Runs on the calling thread: answers until the work is done.
    void serve(const Progress& answer)
    {
        std::unique_lock lock(_mutex);
        while (true) {
            _told.wait(lock, [this] { return _question || _done; });
            if (_done) {
                return;
            }
            _reply = replyOf(answer, *std::exchange(_question, std::nullopt));
            _told.notify_all();
        }
    }

    void rethrow() const
    {
        if (_thrown) {
            std::rethrow_exception(_thrown);
        }
    }

private:
    void work() noexcept
    {
        std::exception_ptr thrown;
        try {
            _work([this](float question) { return ask(question); });
        } catch (...) {
            thrown = std::current_exception();
        }
        const std::lock_guard lock(_mutex);
        _thrown = _thrown ? _thrown : thrown;
        _done = true;
        _told.notify_all();
    }

    bool ask(float question)
    {
        std::unique_lock lock(_mutex);
        _question = question;
        _told.notify_all();
        _told.wait(lock, [this] { return _reply.has_value(); });
        return *std::exchange(_reply, std::nullopt);
    }

    bool replyOf(const Progress& answer, float question)
    {
        try {
            return answer(question);
        } catch (...) {
            _thrown = std::current_exception();
            return false;
        }
    }

    const std::function<void(const Progress&)>& _work;
    std::mutex _mutex;
    std::condition_variable _told;
    std::optional<float> _question;
    std::optional<bool> _reply;
    std::exception_ptr _thrown;
    bool _done = false;
};

} // namespace

void runOnLargeStack(const std::function<void(const Progress& ask)>& work, const Progress& answer)
{
    Errand errand(work);
    const auto thread = startThread(&Errand::run, &errand);
    if (!thread) {
        work(answer);
        return;
    }
    errand.serve(answer);
    pthread_join(*thread, nullptr);
    errand.rethrow();
}

} // namespace Kiv_v4::assimp
