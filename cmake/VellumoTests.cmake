# vellumo_test(NAME SOURCES file... [LINK target...] [DESKTOP [WM name]] [OPTIONS desktop-option...]
#              [TIMEOUT seconds] [LABELS label...] [SERIAL] [QUICK] [WIDGETS])
# A Qt Test executable. Without DESKTOP it runs offscreen and needs no display; with it, it runs on
# a private headless desktop: X server, session bus, accessibility bus, window manager. SERIAL is for
# tests whose timing is disturbed by others, QUICK for tests that show Qt Quick windows, themselves or
# in a program that they start, WIDGETS for tests that link Qt Widgets. Tests of code with threads have
# the label `threads` and also run under the thread sanitizer.

# Qt's software renderer never deletes the textures of images, which is reported as a leak at exit.
set(vellumo_quick_environment ASAN_OPTIONS=detect_leaks=0)

# All tests with threads.
add_custom_target(vellumo_threads)

add_library(vellumo_test_options INTERFACE)
target_link_libraries(vellumo_test_options INTERFACE Qt6::Gui Qt6::Network Qt6::Test)
# These name the folder of each test, so that none could use the precompiled header of another.
target_compile_options(vellumo_test_options INTERFACE
    -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
    # its QTRY_ macros narrow integers in the code that uses them
    target_compile_options(vellumo_test_options INTERFACE -Wno-conversion)
endif()

# Half of the time that a test takes to compile goes into these headers.
add_library(vellumo_test_pch STATIC support/pch.cpp)
target_link_libraries(vellumo_test_pch PUBLIC vellumo_options vellumo_test_options)
target_precompile_headers(vellumo_test_pch PRIVATE
    <QFile> <QJsonDocument> <QJsonObject> <QSignalSpy> <QTemporaryDir> <QTest>
    <functional> <memory> <optional> <utility> <variant>)
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.5)
    # Qt no longer requires programs to be compiled as libraries are, and the header must be as they are.
    set_target_properties(vellumo_test_pch PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(vellumo_test_pch PRIVATE -fPIE)
endif()

function(vellumo_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DESKTOP;SERIAL;QUICK;WIDGETS" "WM;TIMEOUT" "SOURCES;LINK;OPTIONS;LABELS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE vellumo_options vellumo_test_options ${arg_LINK})
    # Qt's test headers read otherwise with widgets.
    if(NOT arg_WIDGETS)
        target_precompile_headers(${name} REUSE_FROM vellumo_test_pch)
    endif()
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/tools)
    if(VELLUMO_SANITIZE MATCHES "address")
        target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/EarlyLeakCheck.cpp)
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    if(arg_DESKTOP)
        if(NOT arg_WM)
            set(arg_WM openbox)
        endif()
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tools/driver/desktop.sh run
            --wm ${arg_WM} ${arg_OPTIONS} -- $<TARGET_FILE:${name}>)
        list(APPEND arg_LABELS desktop)
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_property(TEST ${name} PROPERTY ENVIRONMENT QT_QPA_PLATFORM=offscreen)
        list(APPEND arg_LABELS logic)
    endif()
    if(arg_QUICK)
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT ${vellumo_quick_environment})
    endif()
    if("threads" IN_LIST arg_LABELS)
        add_dependencies(vellumo_threads ${name})
        set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
            "TSAN_OPTIONS=halt_on_error=1:die_after_fork=0:suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp")
    endif()
    # end at once after a crash: dumping the stack may deadlock on the heap's lock
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT QTEST_DISABLE_STACK_DUMP=1)
    set_tests_properties(${name} PROPERTIES SKIP_RETURN_CODE 77 TIMEOUT ${arg_TIMEOUT} LABELS "${arg_LABELS}"
        RUN_SERIAL "${arg_SERIAL}")
endfunction()
