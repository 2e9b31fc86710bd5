# Helpers that the folders' own CMakeLists.txt use, so that each of them only lists files.

# Compile options of everything in this project.
add_library(nx_options INTERFACE)
target_compile_options(nx_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${VX7BASE_WERROR}>:-Werror>)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Sixteen bytes at a time in the text routines; callbacks from the system may come with a 4-byte aligned stack.
    target_compile_options(nx_options INTERFACE -msse2 -mfpmath=sse -mstackrealign)
endif()
if(NOT WIN32)
    target_compile_definitions(nx_options INTERFACE _FILE_OFFSET_BITS=64)
endif()

# nx_sources(FILE...): sources of the library, from a folder below general/.
function(nx_sources)
    target_sources(vx7base PRIVATE ${ARGN})
endfunction()

# nx_strings(TARGET SCRIPT.rc TEXTS.str): string resources, which only Windows takes from a resource script. The
# script is compiled anew when the texts change.
function(nx_strings target script texts)
    if(WIN32)
        target_sources(${target} PRIVATE ${script})
        set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${texts})
    endif()
endfunction()

# nx_tests(FILE... [LIBRARIES LIB...]): the tests of one folder become one executable, test_<folder>.
function(nx_tests)
    cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
    if(NOT ARG_UNPARSED_ARGUMENTS)
        return()
    endif()
    get_filename_component(folder ${CMAKE_CURRENT_SOURCE_DIR} NAME)
    add_executable(test_${folder} ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(test_${folder} PRIVATE nx_test_support ${ARG_LIBRARIES})
    set_target_properties(test_${folder} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
    nx_add_test(${folder} $<TARGET_FILE:test_${folder}>)
endfunction()

# nx_add_test(NAME COMMAND...): a test that runs under Wine where the target needs it.
function(nx_add_test name)
    add_test(NAME ${name} COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} ${ARGN})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
    if(WIN32)
        set_tests_properties(${name} PROPERTIES ENVIRONMENT
            "WINEPREFIX=${CMAKE_BINARY_DIR}/wine;WINEARCH=win32;WINEDEBUG=-all;WINEDLLOVERRIDES=winedbg.exe,mscoree,mshtml="
            FIXTURES_REQUIRED wine)
    else()
        # A zone that is not UTC and has summer time, so that file times which slip into local time show.
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "TZ=Europe/Berlin")
    endif()
endfunction()
