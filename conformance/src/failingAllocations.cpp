#include "kiv/conformance/failingAllocations.h"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

std::size_t until = 0; // 0: none is to fail
bool hasFailed = false;

} // namespace

void* operator new(std::size_t size)
{
    if (until > 0 && --until == 0) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    for (;;) {
        if (auto* memory = std::malloc(size == 0 ? 1 : size)) {
            return memory;
        }
        const auto handler = std::get_new_handler();
        if (!handler) {
            throw std::bad_alloc();
        }
        handler();
    }
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

Kiv_v4::conformance::AllocationFaults Kiv_v4::conformance::failingAllocations()
{
    return {[](std::size_t nth) { until = nth; },
            [] {
                until = 0;
                return std::exchange(hasFailed, false);
            }};
}
