#pragma once

#include "kiv/export.h"

// The importer leaks on some broken files.
extern "C" KIV_EXPORT const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libassimp";
}
