# What every target of the tree shares: warnings, sanitizers, a compiler cache and the linker.

# Presets, and checkouts, that compile the same source with the same options share the result: the
# cache sees neither the folder of the build nor that of the sources. The sloppiness is what it
# needs to be told before it keeps anything that uses a precompiled header.
find_program(TABULET_CCACHE ccache)
if(TABULET_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${TABULET_CCACHE})
endif()

# By the name that the compiler knows it by, so that what comes out does not depend on what else is
# installed. The presets for daily work take lld: linking is a large part of an incremental build,
# and lld does it several times faster.
set(TABULET_LINKER bfd CACHE STRING "The linker, as in -fuse-ld=…; empty for the compiler's own")
if(TABULET_LINKER AND PROJECT_IS_TOP_LEVEL)
    add_link_options(-fuse-ld=${TABULET_LINKER})
endif()

include(cmake/Hardening.cmake)

if(TABULET_SANITIZE)
    add_compile_options(-fsanitize=${TABULET_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TABULET_SANITIZE})
endif()

if(TABULET_COVERAGE)
    add_compile_options(--coverage -O0)
    add_link_options(--coverage)
endif()

# Warnings for our own code, not for what other projects' headers bring in.
function(tabulet_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(TABULET_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(TABULET_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # What sanitizers add to the code makes gcc see uninitialized variants that are none; the
        # ordinary builds still warn of real ones.
        target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
endfunction()

# Reads the headers that most files of a target include once, and not again for each of them: that
# more than halves the time of a file that includes Qt's. A file still includes all that it uses.
function(tabulet_precompile target)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    tabulet_preprocess_less(${target})
endfunction()

# Takes the precompiled headers of another target, which has to have the same compiler options.
function(tabulet_precompile_as target other)
    target_precompile_headers(${target} REUSE_FROM ${other})
    tabulet_preprocess_less(${target})
endfunction()

# Lets the cache ask for the text of a file without that of the precompiled headers.
function(tabulet_preprocess_less target)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()

# Finds the .cpp files of a folder and of those inside it, so that a new file needs no edit of a
# build file. Further arguments are paths to leave out, from the folder on.
function(tabulet_sources result folder)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${folder}/*.cpp)
    foreach(name IN LISTS ARGN)
        list(REMOVE_ITEM found ${folder}/${name})
    endforeach()
    set(${result} ${found} PARENT_SCOPE)
endfunction()

# Makes moc look for new classes when files have come or gone. In an existing build it looks only
# when a file that it knows has changed, and the linker would then miss what moc did not write.
function(tabulet_moc_list target)
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}.sources)
    set(known)
    if(EXISTS ${list})
        file(READ ${list} known)
    endif()
    if(NOT known STREQUAL "${ARGN}")
        file(WRITE ${list} "${ARGN}")
        file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/timestamp)
    endif()
endfunction()
