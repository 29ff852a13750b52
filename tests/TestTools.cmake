# How tests are registered, once for all of them.

# Where tests find the small files of tests/data.
set(testDefinitions TABULET_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data")

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
# does not start anew for each case; a last entry runs them all where "," is the decimal point.
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

# Each XTest.cpp of a room becomes one program and one test, without a display.
function(tabulet_qt_tests room library)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${room}/*Test.cpp)
    file(GLOB helpers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${room}/support/*.cpp)
    set(links ${library} Qt6::Test)
    if(helpers)
        set(support ${room}TestSupport)
        add_library(${support} STATIC ${helpers})
        set_target_properties(${support} PROPERTIES AUTOMOC ON)
        tabulet_moc_list(${support} ${helpers})
        tabulet_warnings(${support})
        target_link_libraries(${support} PUBLIC ${library} Qt6::Test)
        list(PREPEND links ${support})
    endif()
    foreach(source IN LISTS found)
        get_filename_component(name ${source} NAME_WE)
        add_executable(${name} ${source})
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        tabulet_warnings(${name})
        target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
        target_compile_definitions(${name} PRIVATE ${testDefinitions})
        target_link_libraries(${name} PRIVATE ${links})
        tabulet_test_environment(environment ${name})
        add_test(NAME ${room}.${name} COMMAND ${name})
        set_tests_properties(${room}.${name} PROPERTIES
            TIMEOUT 300
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
