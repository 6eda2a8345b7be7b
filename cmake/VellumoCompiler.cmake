# Compiler settings: language level, strict Qt, warnings, sanitizers, hardening, compiler cache, linker.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
# Meta-object code does not depend on built libraries, so that checks can generate it alone.
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # ccache needs this sloppiness for precompiled headers. Paths are relative to the clone, so that
    # clones share cached objects.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${CCACHE_PROGRAM})
endif()

# Linking takes a quarter of the time with lld, and each test is a program. Releases are linked as the
# distribution links.
find_program(LLD_PROGRAM ld.lld)
if(LLD_PROGRAM AND CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_link_options(-fuse-ld=lld)
endif()

add_library(vellumo_options INTERFACE)
target_include_directories(vellumo_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_definitions(vellumo_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_KEYWORDS
    QT_NO_FOREACH
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    $<$<NOT:$<CONFIG:Debug>>:QT_NO_DEBUG_OUTPUT>)
target_compile_options(vellumo_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    -Wconversion -Wno-sign-conversion -Wformat=2 -Wimplicit-fallthrough
    $<$<BOOL:${VELLUMO_WERROR}>:-Werror>
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)

if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # a source's anonymous namespace is in an included file there
    add_compile_options(-Wno-subobject-linkage)
endif()

if(VELLUMO_SANITIZE)
    add_compile_options(-fsanitize=${VELLUMO_SANITIZE} -fno-omit-frame-pointer
                        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VELLUMO_SANITIZE})
    if(VELLUMO_SANITIZE MATCHES "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # the sanitizer does not support the standard library's fences
        add_compile_options(-Wno-tsan)
    endif()
    if(VELLUMO_SANITIZE MATCHES "undefined" AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # RapidJSON adds to a null pointer in its empty stack
        add_compile_options(-fno-sanitize=pointer-overflow)
    endif()
else()
    add_compile_options(-fstack-protector-strong)
    add_link_options(-Wl,-z,relro,-z,now -Wl,--as-needed)
    # Hardening: memory errors end the program instead of being exploitable. `scripts/check binary`
    # verifies it.
    include(CheckCXXCompilerFlag)
    add_compile_options($<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>)
    add_compile_definitions($<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=3>
                            $<$<NOT:$<CONFIG:Debug>>:_GLIBCXX_ASSERTIONS>)
    foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection -ftrivial-auto-var-init=zero)
        string(MAKE_C_IDENTIFIER "HAS${flag}" has)
        check_cxx_compiler_flag(${flag} ${has})
        if(${has})
            add_compile_options($<$<NOT:$<CONFIG:Debug>>:${flag}>)
        endif()
    endforeach()
endif()
