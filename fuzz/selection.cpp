// Changes of a selection against the same changes of a vector.
#include "choices.h"
#include "selectionModel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Choices choices(data, size);
    test::ModelledSelection both(choices);
    const auto prefixesFrom = choices.below(64);
    for (std::size_t step = 0; choices.left(); ++step) {
        both.change();
        both.compareOne(step >= prefixesFrom);
    }
    both.compareAll();
    return 0;
}
