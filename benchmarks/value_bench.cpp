// A loosely typed value made from a number, and read back, beside other ways of holding one.

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <string>
#include <variant>

#include "kiv/value.h"

#include "rows.h"

#ifdef KIV_BENCH_BOOST
#include <boost/lexical_cast.hpp>
#endif
#ifdef KIV_BENCH_QT
#include <QString>
#include <QVariant>
#endif

namespace {

using namespace kivBench;

// Each peer is a pair: the type that holds the number, and the functions that make and read it.

struct Ours
{
    template <class T>
    static auto make(T v)
    {
        return Kiv_v4::Value(v);
    }
    template <class T>
    static T read(const Kiv_v4::Value& value)
    {
        return value.get<T>();
    }
};

struct Variant // the limit: nothing is kept as text
{
    using Held = std::variant<std::monostate, bool, int, float, double, std::string>;

    template <class T>
    static auto make(T v)
    {
        return Held(v);
    }
    template <class T>
    static T read(const Held& value)
    {
        return std::get<T>(value);
    }
};

#ifdef KIV_BENCH_BOOST
struct LexicalCast
{
    template <class T>
    static auto make(T v)
    {
        return boost::lexical_cast<std::string>(v);
    }
    template <class T>
    static T read(const std::string& text)
    {
        return boost::lexical_cast<T>(text);
    }
};
#endif

#ifdef KIV_BENCH_QT
struct QtNative
{
    template <class T>
    static auto make(T v)
    {
        return QVariant(v);
    }
    template <class T>
    static T read(const QVariant& value)
    {
        return value.value<T>();
    }
};

struct QtText
{
    template <class T>
    static auto make(T v)
    {
        return QVariant(QString::number(v));
    }
    template <class T>
    static T read(const QVariant& value)
    {
        return value.value<T>();
    }
};
#endif

template <class T>
std::array<T, 64> numbers()
{
    std::array<T, 64> result;
    for (std::size_t i = 0; i < result.size(); ++i) {
        const auto n = static_cast<double>(i);
        result[i] = static_cast<T>(n * n * n * 37.21 - 1e6 / (n + 1));
    }
    return result;
}

template <class Peer, class T>
void make(benchmark::State& state)
{
    const auto samples = numbers<T>();
    std::size_t i = 0;
    for (auto _ : state) {
        auto value = Peer::make(samples[i++ % samples.size()]);
        benchmark::DoNotOptimize(value);
    }
}

template <class Peer, class T>
void makeAndRead(benchmark::State& state)
{
    const auto samples = numbers<T>();
    std::size_t i = 0;
    for (auto _ : state) {
        auto value = Peer::make(samples[i++ % samples.size()]);
        benchmark::DoNotOptimize(value);
        benchmark::DoNotOptimize(Peer::template read<T>(value));
    }
}

template <class Peer>
void addRows(const char* who)
{
    const auto size = "hot";
    addRow("value from an int", size, who, make<Peer, int>);
    addRow("value from an int, and back", size, who, makeAndRead<Peer, int>);
    addRow("value from a double", size, who, make<Peer, double>);
    addRow("value from a double, and back", size, who, makeAndRead<Peer, double>);
}

[[maybe_unused]] const bool registered = [] {
    addRows<Ours>("kiv");
    addRows<Variant>("std::variant");
#ifdef KIV_BENCH_BOOST
    addRows<LexicalCast>("lexical_cast");
#endif
#ifdef KIV_BENCH_QT
    addRows<QtNative>("QVariant");
    addRows<QtText>("QVariant of a text");
#endif
    return true;
}();

} // namespace
