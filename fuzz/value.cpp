// Values against streams of the classic locale, through random makings, assignments and reads.
#include "choices.h"
#include "require.h"
#include "valueReference.h"

namespace {

test::Pair anyPair(Choices& choices)
{
    switch (choices.below(3)) {
    case 0:
        return test::Pair(choices.ConsumeIntegral<int>());
    case 1:
        return test::Pair(choices.ConsumeFloatingPoint<double>());
    default:
        return test::Pair(choices.ConsumeRandomLengthString(24));
    }
}

template <class T>
void read(test::Pair& pair)
{
    if (pair.value.isType<T>()) {
        test::require(test::sameBits(pair.value.get<T>(), pair.reference.get<T>()), "reads");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Choices choices(data, size);
    auto pair = anyPair(choices);
    while (choices.left() && test::text(pair.value).size() < 1000) {
        if (choices.ConsumeBool()) {
            pair.assign(anyPair(choices));
        } else {
            read<int>(pair);
            read<double>(pair);
        }
        test::require(test::text(pair.value) == pair.reference.text(), "text");
    }
    return 0;
}
