# How tests are registered, once for all of them.

# Where tests find the small files of tests/data.
set(testDefinitions TABULET_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data")

# What all targets of the tests share. Optimizing them hardly at all takes a third off the time of
# their build, and they wait for what they test.
function(tabulet_test_target target)
    tabulet_warnings(${target})
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # At this level GCC 12 sees wrong bounds in its own std::string.
        target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:-Wno-array-bounds;-Wno-stringop-overflow>")
    endif()
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${target} PRIVATE ${testDefinitions})
endfunction()

# Leaves only the tests that TABULET_TEST_CLASSES names in a list of sources, and what supports them.
function(tabulet_chosen_tests sources)
    if(TABULET_TEST_CLASSES)
        set(chosen ${${sources}})
        list(JOIN TABULET_TEST_CLASSES "|" classes)
        list(FILTER chosen INCLUDE REGEX "/(${classes})\\.cpp$")
        set(others ${${sources}})
        list(FILTER others EXCLUDE REGEX "Test\\.cpp$")
        set(${sources} ${others} ${chosen} PARENT_SCOPE)
    endif()
endfunction()

# Every test has a home of its own, so that none reads or changes the user's settings and no two
# tests that run at the same time meet.
function(tabulet_test_environment result name)
    set(home ${PROJECT_BINARY_DIR}/tests/home/${name})
    file(MAKE_DIRECTORY ${home} ${home}/run)
    file(CHMOD ${home}/run PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set(${result}
        HOME=${home}
        XDG_CONFIG_HOME=${home}/config
        XDG_DATA_HOME=${home}/data
        XDG_STATE_HOME=${home}/state
        XDG_CACHE_HOME=${home}/cache
        XDG_RUNTIME_DIR=${home}/run
        # A test that needs a bus starts one of its own.
        DBUS_SESSION_BUS_ADDRESS=disabled:
        # Running out of memory is tested: sanitizers are to report it as the system does.
        ASAN_OPTIONS=allocator_may_return_null=1
        "TSAN_OPTIONS=allocator_may_return_null=1:suppressions=\"${CMAKE_CURRENT_SOURCE_DIR}/thread-suppressions.txt\""
        PARENT_SCOPE)
endfunction()

# One entry runs one share of the cases, so that the shares run beside each other and the program
# is not started again for each case; a last entry runs them all where "," is the decimal point.
function(tabulet_google_test target)
    cmake_parse_arguments(arg "" "SHARDS" "" ${ARGN})
    tabulet_test_environment(environment ${target})
    math(EXPR last "${arg_SHARDS} - 1")
    foreach(index RANGE ${last})
        math(EXPR number "${index} + 1")
        set(name ${target}.${number})
        add_test(NAME ${name} COMMAND ${target} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT
            "${environment};LC_ALL=C.UTF-8;GTEST_TOTAL_SHARDS=${arg_SHARDS};GTEST_SHARD_INDEX=${index}")
    endforeach()

    add_test(NAME ${target}.commaLocale
             COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/system/withCommaLocale.sh
                     ${PROJECT_BINARY_DIR}/tests/locales
                     $<TARGET_FILE:${target}> --gtest_brief=1)
    set_tests_properties(${target}.commaLocale PROPERTIES
        TIMEOUT 900 SKIP_RETURN_CODE 77 ENVIRONMENT "${environment}")
endfunction()

# The XTest.cpp files of a room become one program, and each of them a test of its own in a process
# of its own, without a display. The list is made from the names of the files, so that a new test
# needs no edit here.
function(tabulet_qt_tests room program library)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${room}/*Test.cpp)
    tabulet_chosen_tests(found)
    file(GLOB helpers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${room}/support/*.cpp)
    get_target_property(precompiled ${library} PRECOMPILE_HEADERS)

    set(support ${room}TestSupport)
    add_library(${support} STATIC ${helpers})
    set_target_properties(${support} PROPERTIES AUTOMOC ON)
    tabulet_moc_list(${support} ${helpers})
    tabulet_test_target(${support})
    target_link_libraries(${support} PUBLIC ${library} Qt6::Test)
    tabulet_precompile(${support} ${precompiled} <QSignalSpy> <QTemporaryDir> <QTest>)

    add_executable(${program} ${found})
    set_target_properties(${program} PROPERTIES AUTOMOC ON)
    tabulet_moc_list(${program} ${found})
    tabulet_test_target(${program})
    target_link_libraries(${program} PRIVATE ${support} testProgram)
    tabulet_precompile_as(${program} ${support})
    foreach(source IN LISTS found)
        get_filename_component(name ${source} NAME_WE)
        tabulet_test_environment(environment ${name})
        add_test(NAME ${room}.${name} COMMAND ${program} ${name})
        # A warning that the test does not expect makes it fail: Qt warns of mistakes. Those about
        # what a display of this kind cannot do ("This plugin …") are none.
        set_tests_properties(${room}.${name} PROPERTIES
            TIMEOUT 300
            FAIL_REGULAR_EXPRESSION "(QWARN|QCRITICAL|QSYSTEM) *: [^(]*\\([^)]*\\) ([^T]|T[^h])"
            ENVIRONMENT "${environment};QT_QPA_PLATFORM=offscreen;LANG=C.UTF-8;LC_ALL=C.UTF-8;TZ=UTC")
    endforeach()
endfunction()

# A script of tests/system with its arguments; exit code 77 says that it could not run here.
function(tabulet_script name)
    tabulet_test_environment(environment ${name})
    add_test(NAME system.${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/system/${name}.sh ${ARGN})
    set_tests_properties(system.${name} PROPERTIES
        TIMEOUT 600 SKIP_RETURN_CODE 77 LABELS system ENVIRONMENT "${environment};LC_ALL=C.UTF-8")
endfunction()
