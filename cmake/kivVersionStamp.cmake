# Writes OUTPUT, a header with the commit, branch and date of the build, and leaves it alone when
# commit and branch have not changed, so that building again rebuilds nothing.
# Called with -DSOURCE_DIR=... -DOUTPUT=...

set(commit "0000000000000000000000000000000000000000")
set(branch "unknown")
find_program(git_program git)
# A tarball unpacked inside somebody else's checkout must not take that checkout's commit.
if(git_program AND EXISTS "${SOURCE_DIR}/.git")
    execute_process(COMMAND ${git_program} -C "${SOURCE_DIR}" rev-parse --verify HEAD
        OUTPUT_VARIABLE found RESULT_VARIABLE failed ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT failed)
        set(commit "${found}")
        execute_process(COMMAND ${git_program} -C "${SOURCE_DIR}" rev-parse --abbrev-ref HEAD
            OUTPUT_VARIABLE branch ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
    endif()
endif()

set(identity "// ${commit} ${branch}")
if(EXISTS "${OUTPUT}")
    file(STRINGS "${OUTPUT}" first_line LIMIT_COUNT 1)
    if(first_line STREQUAL identity)
        return()
    endif()
endif()
string(TIMESTAMP date "%a %m/%d/%Y, %Y%m%d%H%M")
file(WRITE "${OUTPUT}" "${identity}
#define KIV_BUILD_COMMIT \"${commit}\"
#define KIV_BUILD_BRANCH \"${branch}\"
#define KIV_BUILD_DATE \"${date}\"
")
