#pragma once

#include "kiv/export.h"

// The importer leaks on some broken files; the C library leaks its copy of LOCPATH for each C++
// locale that is made by name.
extern "C" KIV_EXPORT const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libassimp\nleak:argz_add_sep";
}
