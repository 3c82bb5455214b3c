// Edits of an in-memory scene, undone and redone at will, against pictures of each state.
#include "choices.h"
#include "modelledHistory.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Choices choices(data, size);
    test::ModelledHistory both(choices);
    while (choices.left()) {
        both.step();
    }
    return 0;
}
