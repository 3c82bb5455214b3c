#include "windowProgram.h"

int main(int argc, char** argv)
{
    return window::runProgram(argc, argv);
}
