# Fails unless each block of C++ in PAGE, and any other block with a source, shows lines of its source
# as they are but for their common indentation. The source is named in a comment above the block:
#
#     <!-- examples/firstProgram.cpp -->
#     ```cpp
#     ...
#     ```
#
# Output, a source that ends in .txt, is shown by whole paragraphs: a program prints an empty line after
# what a page shows, so that no page leaves out the lines that matter.

file(READ ${SOURCE_DIR}/${PAGE} rest)
set(fence "\n```")
set(checked 0)
string(FIND "${rest}" "${fence}" at)
while(NOT at EQUAL -1)
    string(SUBSTRING "${rest}" 0 ${at} before)
    string(SUBSTRING "${rest}" ${at} -1 rest)
    string(REGEX MATCH "^\n```([a-z]*)\n" opening "${rest}")
    set(language "${CMAKE_MATCH_1}")
    string(LENGTH "${opening}" length)
    math(EXPR length "${length} - 1") # the line break in front of the block stays
    string(SUBSTRING "${rest}" ${length} -1 rest)
    string(FIND "${rest}" "${fence}" at)
    string(SUBSTRING "${rest}" 0 ${at} block)
    math(EXPR at "${at} + 4")
    string(SUBSTRING "${rest}" ${at} -1 rest)

    if(before MATCHES "\n<!-- ([^ ]+) -->$")
        set(file ${CMAKE_MATCH_1})
        file(READ ${SOURCE_DIR}/${file} source)
        set(source "\n${source}")
        set(end "\n")
        if(file MATCHES "\\.txt$")
            set(source "\n${source}\n")
            set(block "\n${block}")
            set(end "\n\n")
        endif()
        set(found -1)
        foreach(indentation "" "    " "        ")
            string(REGEX REPLACE "\n([^\n])" "\n${indentation}\\1" lines "${block}")
            string(FIND "${source}" "${lines}${end}" position)
            if(position GREATER found)
                set(found ${position})
            endif()
        endforeach()
        if(found EQUAL -1)
            message(SEND_ERROR "${PAGE} shows what is not in ${file}:${block}")
        endif()
        math(EXPR checked "${checked} + 1")
    elseif(language STREQUAL "cpp")
        message(SEND_ERROR "${PAGE} does not say where this is from:${block}")
    endif()
    string(FIND "${rest}" "${fence}" at)
endwhile()
if(checked EQUAL 0)
    message(SEND_ERROR "${PAGE} shows no example")
endif()
