# kiv_add_plugin(TARGET SOURCES...): a plug-in, TARGET.so, as kiv/plugin.h describes them. Exported is
# the entry point alone. Without -fno-gnu-unique, an object in which g++ instantiated certain templates
# is never unloaded.
function(kiv_add_plugin target)
    add_library(${target} MODULE ${ARGN})
    set_target_properties(${target} PROPERTIES
        PREFIX ""
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
    target_link_libraries(${target} PRIVATE kiv::kiv)
endfunction()
