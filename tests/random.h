#pragma once

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <random>

namespace test {

/// Random numbers for tests against a model. Each run takes another seed and prints it; the
/// environment variable `KIV_TEST_SEED` repeats one.
class Random
{
public:
    Random()
    {
        const auto* wanted = std::getenv("KIV_TEST_SEED");
        const auto seed = wanted ? std::strtoul(wanted, nullptr, 10) : std::random_device()();
        std::cout << "KIV_TEST_SEED=" << seed << std::endl;
        _engine.seed(seed);
    }

    /// A number from 0 up to, but not including, `bound`.
    std::size_t below(std::size_t bound)
    {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(_engine);
    }

    template <class Container>
    auto& of(Container& container)
    {
        return container[below(container.size())];
    }

private:
    std::mt19937_64 _engine;
};

} // namespace test
