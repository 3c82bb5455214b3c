#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#ifdef KIV_BENCH_BOOST
#include <boost/signals2/signal.hpp>
#endif
#ifdef KIV_BENCH_SIGC
#include <sigc++/sigc++.h>
#endif
#ifdef KIV_BENCH_QT
#include <QtCore/QObject>
#endif

#include "kiv/notification.h"
#include "kiv/observer.h"
#include "kiv/subject.h"

#include "rows.h"

#ifdef KIV_BENCH_QT
namespace kivBench {

class Sender : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void changed(const Kiv_v4::Notification& notification);
};

} // namespace kivBench
#endif

namespace {

using namespace kivBench;
using Kiv_v4::Notification;
using Kiv_v4::Observer;
using Kiv_v4::Subject;

constexpr Size kCounts[] = {{"1 hot", 1}, {"100 hot", 100}, {"1 k hot", 1'000}};

const Notification news;

/// The counter that every observer increments.
std::uint64_t received = 0;

/// Measures, per observer, how a `Connected` subject with that many observers notifies them.
template <class Connected>
void addNotify(const char* who)
{
    for (const auto& size : kCounts) {
        addRow("notify, per observer", size.name, who, [size](benchmark::State& state) {
            Connected connected(size.count);
            for (auto _ : state) {
                connected.notify();
                benchmark::DoNotOptimize(received);
            }
            state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(size.count));
        });
    }
}

class Counter : public Observer
{
public:
    void operator()(const Notification& /*notification*/) override { ++received; }
};

struct Kiv
{
    explicit Kiv(std::size_t count)
    {
        for (std::size_t i = 0; i != count; ++i) {
            observers.push_back(std::make_shared<Counter>());
            subject.addObserver(observers.back());
        }
    }

    void notify() { subject.notify(news); }

    std::vector<Observer::Ptr> observers;
    Subject subject;
};

/// The minimal work of a subject that does not own its observers.
struct Locking
{
    explicit Locking(std::size_t count)
    {
        for (std::size_t i = 0; i != count; ++i) {
            observers.push_back(std::make_shared<Counter>());
            entries.insert(observers.back());
        }
    }

    void notify()
    {
        for (const auto& entry : entries) {
            if (const auto observer = entry.lock()) {
                (*observer)(news);
            }
        }
    }

    std::vector<Observer::Ptr> observers;
    std::set<std::weak_ptr<Observer>, std::owner_less<std::weak_ptr<Observer>>> entries;
};

#ifdef KIV_BENCH_BOOST
struct Signals2
{
    using Signal = boost::signals2::signal<void(const Notification&)>;

    explicit Signals2(std::size_t count)
    {
        for (std::size_t i = 0; i != count; ++i) {
            observers.push_back(std::make_shared<Counter>());
            const auto call = [observer = observers.back().get()](const Notification& n) {
                (*observer)(n);
            };
            signal.connect(Signal::slot_type(call).track_foreign(observers.back()));
        }
    }

    void notify() { signal(news); }

    std::vector<Observer::Ptr> observers;
    Signal signal;
};
#endif

#ifdef KIV_BENCH_SIGC
struct Sigc
{
    struct Receiver : sigc::trackable
    {
        void receive(const Notification& /*notification*/) { ++received; }
    };

    explicit Sigc(std::size_t count) : receivers(count)
    {
        for (auto& receiver : receivers) {
            signal.connect(sigc::mem_fun(receiver, &Receiver::receive));
        }
    }

    void notify() { signal.emit(news); }

    std::vector<Receiver> receivers;
    sigc::signal<void(const Notification&)> signal;
};
#endif

#ifdef KIV_BENCH_QT
struct QtSignals
{
    explicit QtSignals(std::size_t count) : receivers(count)
    {
        for (auto& receiver : receivers) {
            QObject::connect(&sender, &Sender::changed, &receiver,
                             [](const Notification& /*notification*/) { ++received; });
        }
    }

    void notify() { Q_EMIT sender.changed(news); }

    Sender sender;
    std::vector<QObject> receivers;
};
#endif

[[maybe_unused]] const bool registered = [] {
    addNotify<Kiv>("kiv");
    addNotify<Locking>("lock and call alone");
#ifdef KIV_BENCH_BOOST
    addNotify<Signals2>("boost::signals2");
#endif
#ifdef KIV_BENCH_SIGC
    addNotify<Sigc>("sigc++");
#endif
#ifdef KIV_BENCH_QT
    addNotify<QtSignals>("Qt 6 signals");
#endif
    return true;
}();

} // namespace

#ifdef KIV_BENCH_QT
#include "notify_bench.moc"
#endif
