# vellumo_library(NAME SOURCES file... [LINK target...]): one folder, one static library.
# Every library shares one precompiled header.

function(_vellumo_setup target)
    target_link_libraries(${target} PUBLIC vellumo_options)
    target_precompile_headers(${target} REUSE_FROM vellumo_pch)
endfunction()

function(vellumo_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC Qt6::Core ${arg_LINK})
    _vellumo_setup(${name})
endfunction()

# vellumo_qml_library(NAME URI uri SOURCES file... QML_FILES file... [RESOURCES file...]
# [LINK target...]): a library with a QML module. Singletons are marked by the caller before the call.
# Sources are in the library's folder. The module is compiled in: no plugin is loaded, and an engine
# needs only the import path qrc:/qt/qml.
function(vellumo_qml_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "SOURCES;QML_FILES;RESOURCES;IMPORTS;LINK")
    qt_add_library(${name} STATIC)
    target_link_libraries(${name} PUBLIC Qt6::Core Qt6::Gui Qt6::Qml Qt6::Quick ${arg_LINK})
    _vellumo_setup(${name})
    string(REPLACE "." "/" folder ${arg_URI})
    qt_add_qml_module(${name}
        URI ${arg_URI}
        VERSION 1.0
        NO_PLUGIN
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/qml/${folder}
        IMPORT_PATH ${PROJECT_BINARY_DIR}/qml
        SOURCES ${arg_SOURCES}
        QML_FILES ${arg_QML_FILES}
        RESOURCES ${arg_RESOURCES}
        IMPORTS ${arg_IMPORTS})
    # Generated code does not follow our warnings, and sanitizers have nothing of ours to find in it. The
    # QML compiler's files are compiled as one: most of the time goes into Qt's headers, which each of
    # them includes.
    set(generated -w)
    if(VELLUMO_SANITIZE)
        list(APPEND generated -fno-sanitize=all -O0)
    endif()
    get_target_property(sources ${name} SOURCES)
    set(registrations ${sources})
    list(FILTER registrations INCLUDE REGEX "_qmltyperegistrations")
    set_source_files_properties(${registrations} PROPERTIES COMPILE_OPTIONS "${generated}")
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    set_source_files_properties(${sources} PROPERTIES HEADER_FILE_ONLY ON)
    list(TRANSFORM sources REPLACE "${CMAKE_CURRENT_BINARY_DIR}/(.+)" "#include \"\\1\"\n")
    string(JOIN "" includes ${sources})
    set(combined ${CMAKE_CURRENT_BINARY_DIR}/${name}_qmlcache.cpp)
    file(CONFIGURE OUTPUT ${combined} CONTENT "@includes@" @ONLY)
    set_source_files_properties(${combined} PROPERTIES COMPILE_OPTIONS "${generated}" SKIP_AUTOGEN ON)
    target_sources(${name} PRIVATE ${combined})
    # the generated type registration includes the headers by their bare names
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    # Nothing references the registration, so the linker would omit it.
    string(REPLACE "." "_" symbol "qml_register_types_${arg_URI}")
    string(LENGTH ${symbol} length)
    target_link_options(${name} INTERFACE "LINKER:-u,_Z${length}${symbol}v")
endfunction()
