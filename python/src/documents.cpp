#include "bound.h"

NB_MODULE(_documents, module)
{
    module.attr("__name__") = "kiv._documents";
}
