# The first program in the README is the one that is built here.
file(READ ${SOURCE_DIR}/README.md readme)
file(READ ${SOURCE_DIR}/examples/firstProgram.cpp program)
string(FIND "${readme}" "```cpp\n${program}```" at)
if(at EQUAL -1)
    message(FATAL_ERROR "README.md does not show examples/firstProgram.cpp as it is")
endif()
