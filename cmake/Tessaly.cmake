# What every target of the project has in common.

add_library(tessaly_options INTERFACE)
target_compile_options(tessaly_options INTERFACE
  -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
  # Optimised code makes it see null pointers inside Qt's own headers.
  $<$<NOT:$<CONFIG:Release>>:-Wnull-dereference>
  $<$<BOOL:${TESSALY_WERROR}>:-Werror>)
target_compile_definitions(tessaly_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Lets ccache see through precompiled headers.
  target_compile_options(tessaly_options INTERFACE -fpch-preprocess)
endif()
include(cmake/Precompiled.cmake)

find_program(LLD ld.lld)
if(LLD)
  add_link_options(-fuse-ld=lld)
endif()

# Spares moc what Qt makes for a module: files that hold resources, and one that registers the plugin.
function(without_moc)
  get_property(targets DIRECTORY PROPERTY BUILDSYSTEM_TARGETS)
  list(FILTER targets INCLUDE REGEX "_resources_[0-9]+$|plugin_init$")
  foreach(target IN LISTS targets)
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  endforeach()
endfunction()

# tessaly_library(name SOURCES … LINK …): a static library; headers are included from the top of the tree.
function(tessaly_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  qt_add_library(${name} STATIC ${arg_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE tessaly_options)
  use_precompiled(${name} core)
  cmake_language(DEFER CALL without_moc)
endfunction()

# tessaly_qml_module(name URI … PRECOMPILED … SOURCES … QML … SINGLETONS … RESOURCES … DEPENDS … LINK …): a static library
# that is one QML module; DEPENDS names the modules whose types its C++ types mention. PRECOMPILED names its headers ("quick"
# if not given). Executables link <name> and <name>plugin.
function(tessaly_qml_module name)
  cmake_parse_arguments(arg "" "URI;PRECOMPILED" "SOURCES;QML;SINGLETONS;RESOURCES;DEPENDS;LINK" PRECOMPILED quick ${ARGN})
  set_source_files_properties(${arg_SINGLETONS} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
  qt_add_library(${name} STATIC)
  # Compiled QML is for speed; a debug build is quicker to make without.
  set(cache_option)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    set(cache_option NO_CACHEGEN)
  endif()
  qt_add_qml_module(${name}
    ${cache_option}
    URI ${arg_URI}
    VERSION 1.0
    RESOURCE_PREFIX /qt-project.org/imports
    IMPORT_PATH ${TESSALY_ENGINE_DIRECTORY}
    DEPENDENCIES ${arg_DEPENDS}
    SOURCES ${arg_SOURCES}
    QML_FILES ${arg_SINGLETONS} ${arg_QML}
    RESOURCES ${arg_RESOURCES})
  # What the QML compiler makes of each file is short and reads the same headers.
  set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
  set_source_files_properties(${arg_SOURCES} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE tessaly_options)
  use_precompiled(${name} ${arg_PRECOMPILED})
  cmake_language(DEFER CALL without_moc)
endfunction()

# tessaly_test_program(name SOURCES … LINK …): a program of the tests. It may use the store and its fakes, unless
# TESSALY_TEST_HEADERS is "test".
function(tessaly_test_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  set(headers store_test)
  if(TESSALY_TEST_HEADERS)
    set(headers ${TESSALY_TEST_HEADERS})
  else()
    list(APPEND arg_LINK tessaly_store_test_support)
  endif()
  qt_add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LINK} tessaly_test_support tessaly_options)
  # What a test itself does is short, and most of it happens once: optimising it takes longer than it saves.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O0>)
  use_precompiled(${name} ${headers})
  # A test includes what moc makes of it; this file is empty then, and the headers would take most of its time.
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp PROPERTIES
    SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# tessaly_test(name SOURCES … LINK …): one QtTest executable, run by CTest with the fixed environment of the tests
# and, if it is set, the label TESSALY_TEST_LABEL.
function(tessaly_test name)
  tessaly_test_program(${name} ${ARGN})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 LABELS "${TESSALY_TEST_LABEL}"
    ENVIRONMENT "TZ=Europe/Vienna;LC_ALL=C.UTF-8;QT_HASH_SEED=0;QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software;QML_IMPORT_PATH=${TESSALY_ENGINE_DIRECTORY};${TESSALY_TEST_ENVIRONMENT}")
endfunction()
