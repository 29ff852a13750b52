# What PlistCore needs, wherever it is built or used: finds utf8proc, or says in
# `plistCoreProblem` what is wrong.

set(plistCoreProblem)
if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(plistCoreProblem "PlistCore needs a 64-bit system.")
elseif(CMAKE_CXX_STANDARD MATCHES "^(98|11|14|17)$")
    set(plistCoreProblem "PlistCore needs C++20, but CMAKE_CXX_STANDARD is ${CMAKE_CXX_STANDARD}.")
else()
    find_package(PkgConfig QUIET)
    if(PKG_CONFIG_FOUND)
        pkg_check_modules(utf8proc QUIET IMPORTED_TARGET libutf8proc)
    endif()
    if(NOT TARGET PkgConfig::utf8proc)
        set(plistCoreProblem "PlistCore needs utf8proc, which pkg-config finds as libutf8proc.")
    endif()
endif()
