# Shared settings of every target. All of them are set per target or per directory, so that a project which
# embeds this one keeps its own.

add_library(flokluk_settings INTERFACE)
target_compile_features(flokluk_settings INTERFACE cxx_std_17)
# A fused multiply-add rounds once where two operations round twice: results would differ between machines.
target_compile_options(flokluk_settings INTERFACE -ffp-contract=off
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${FLOKLUK_WERROR}>:-Werror>)
target_compile_definitions(flokluk_settings INTERFACE
    QT_DISABLE_DEPRECATED_BEFORE=0x050B00 QT_NO_FOREACH)

# flokluk_library(NAME SOURCES ... LINK ...): a static library whose headers are included from the root.
function(flokluk_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE flokluk_settings)
    target_compile_features(${name} PUBLIC cxx_std_17)
    set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF)
endfunction()

# Programs can be loaded anywhere; without this only the compiler's own default would say so.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# flokluk_program(NAME SOURCES ... LINK ...): an executable beside the others in the build's bin folder.
function(flokluk_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} flokluk_settings)
    set_target_properties(${name} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON
        RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endfunction()
